list(APPEND SOURCES
    arithmetic/arithmeticNodesTest.cpp
)
