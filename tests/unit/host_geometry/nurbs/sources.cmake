list(APPEND SOURCES
    nurbs/SurfaceEvaluatorTest.cpp
    nurbs/primitivesTest.cpp
)
