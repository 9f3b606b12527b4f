list(APPEND SOURCES
    nurbs/SurfaceEvaluatorTest.cpp
    nurbs/planarTrimTest.cpp
    nurbs/primitivesTest.cpp
    nurbs/skinTest.cpp
    nurbs/surfaceAlgebraTest.cpp
)
