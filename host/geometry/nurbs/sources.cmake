list(APPEND SOURCES
    nurbs/SurfaceEvaluator.cpp
    nurbs/primitives.cpp
    nurbs/productSurface.cpp
    nurbs/surfaceRows.cpp
    nurbs/transformSpline.cpp
)
