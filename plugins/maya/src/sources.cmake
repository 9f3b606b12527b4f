# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    BetaExtractor.cpp
    GeometryBuffers.cpp
    GeometryManager.cpp
    GroupStack.cpp
    HWMeshExtractor.cpp
    MaterialManager.cpp
    MeshManager.cpp
    ProgressCounter.cpp
    maya2vistrel.cpp
    maya2vistrelCameras.cpp
    maya2vistrelGeometry.cpp
    mayautil.cpp
    shaderConversion.cpp
)
