list(APPEND SOURCES
    polygon/booleanTest.cpp
    polygon/buildingTest.cpp
    polygon/creatorLimitsTest.cpp
    polygon/creatorsTest.cpp
    polygon/detachingTest.cpp
    polygon/edgeLoopNodesTest.cpp
    polygon/joiningTest.cpp
    polygon/shapeTest.cpp
    polygon/takenUvsTest.cpp
    polygon/textureTest.cpp
    polygon/workSpaceTest.cpp
)
