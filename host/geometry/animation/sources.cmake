list(APPEND SOURCES
    animation/AnimationCurve.cpp
    animation/RotationCurves.cpp
    animation/WeightedSpan.cpp
    animation/tangents.cpp
)
