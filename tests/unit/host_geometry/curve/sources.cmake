list(APPEND SOURCES
    curve/CurveEvaluatorTest.cpp
    curve/arcLengthTest.cpp
    curve/arcsTest.cpp
    curve/interpolationTest.cpp
    curve/knotAlgebraTest.cpp
    curve/rebuildTest.cpp
)
