list(APPEND SOURCES
    animation/AnimationCurveTest.cpp
    animation/RotationCurvesTest.cpp
    animation/curveTablesTest.cpp
    animation/tangentsTest.cpp
)
