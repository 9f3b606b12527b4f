list(APPEND SOURCES
    animation/animationNodesTest.cpp
)
