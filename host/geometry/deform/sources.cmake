list(APPEND SOURCES
    deform/componentOrder.cpp
    deform/moveByLattice.cpp
    deform/nonLinearShapes.cpp
    deform/shapeTargets.cpp
    deform/skinPoints.cpp
)
