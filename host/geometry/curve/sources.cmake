list(APPEND SOURCES
    curve/CurveEvaluator.cpp
    curve/KnotVector.cpp
)
