list(APPEND SOURCES
    animation/allAnimationNodes.cpp
    animation/animBlendNodes.cpp
    animation/animCurve.cpp
    animation/animLayer.cpp
    animation/blendWeighted.cpp
    animation/choice.cpp
    animation/keptCurve.cpp
    animation/mute.cpp
    animation/pairBlend.cpp
    animation/timeConversions.cpp
)
