list(APPEND SOURCES
    deform/Deformation.cpp
    deform/allDeformNodes.cpp
    deform/blendShape.cpp
    deform/cluster.cpp
    deform/ffd.cpp
    deform/geometryPoints.cpp
    deform/lattice.cpp
    deform/nonLinear.cpp
    deform/nonLinearHandles.cpp
    deform/shapeTargetInputs.cpp
    deform/skinCluster.cpp
    deform/skinInputs.cpp
    deform/softMod.cpp
    deform/transferAttributes.cpp
)
