list(APPEND SOURCES
    curve/CurveEvaluatorTest.cpp
)
