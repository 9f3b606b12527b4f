set(SOURCES
    buildTopologyTest.cpp
    listsTest.cpp
    normalsTest.cpp
)
