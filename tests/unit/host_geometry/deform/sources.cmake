list(APPEND SOURCES
    deform/moveByLatticeTest.cpp
    deform/nonLinearShapesTest.cpp
    deform/shapeTargetsTest.cpp
    deform/skinPointsTest.cpp
)
