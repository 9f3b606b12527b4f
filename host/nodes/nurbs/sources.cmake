list(APPEND SOURCES
    nurbs/allNurbsNodes.cpp
    nurbs/controlPointTweaks.cpp
    nurbs/makeFlatPrimitives.cpp
    nurbs/makeNurbCircle.cpp
    nurbs/makeRoundPrimitives.cpp
    nurbs/nurbsCurve.cpp
    nurbs/nurbsSurface.cpp
    nurbs/transformGeometry.cpp
)
