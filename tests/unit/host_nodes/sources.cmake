set(SOURCES
    meshTest.cpp
    smallNodesTest.cpp
    transformTest.cpp
)
