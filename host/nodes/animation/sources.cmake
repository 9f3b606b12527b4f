list(APPEND SOURCES
    animation/allAnimationNodes.cpp
)
