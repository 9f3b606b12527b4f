list(APPEND SOURCES
    nurbs/SurfaceEvaluator.cpp
)
