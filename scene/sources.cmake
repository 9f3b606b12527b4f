# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    BezierCurves.cpp
    DefaultRTModule.cpp
    Diffuse.cpp
    FBXAnimation.cpp
    LightCamera.cpp
    LightGeometry.cpp
    LightModule.cpp
    Material.cpp
    NurbsCurve.cpp
    NurbsSurface.cpp
    OldSCeneapiLightMultiMaterial.cpp
    OrvGroup.cpp
    TriangleObject.cpp
    extendKnots.cpp
)
