list(APPEND SOURCES
    animation/AnimationCurve.cpp
    animation/WeightedSpan.cpp
    animation/tangents.cpp
)
