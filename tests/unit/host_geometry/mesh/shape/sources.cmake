list(APPEND SOURCES
    mesh/shape/circularizeTest.cpp
    mesh/shape/movedPointsTest.cpp
    mesh/shape/normalOperationsTest.cpp
    mesh/shape/smoothMeshTest.cpp
)
