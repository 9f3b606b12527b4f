list(APPEND SOURCES
    nurbs/SurfaceEvaluatorTest.cpp
)
