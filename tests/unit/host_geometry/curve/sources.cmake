list(APPEND SOURCES
    curve/CurveEvaluatorTest.cpp
    curve/arcsTest.cpp
    curve/interpolationTest.cpp
    curve/knotAlgebraTest.cpp
)
