list(APPEND SOURCES
    tessellation/triangulatePlaneTest.cpp
)
