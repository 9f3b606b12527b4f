list(APPEND SOURCES
    nurbs/SurfaceEvaluator.cpp
    nurbs/planarTrim.cpp
    nurbs/primitives.cpp
    nurbs/productSurface.cpp
    nurbs/repeatOverlap.cpp
    nurbs/skin.cpp
    nurbs/surfaceAlgebra.cpp
    nurbs/surfaceRows.cpp
    nurbs/transformSpline.cpp
)
