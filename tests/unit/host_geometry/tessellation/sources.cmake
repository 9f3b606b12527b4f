list(APPEND SOURCES
    tessellation/tessellateTest.cpp
    tessellation/triangulatePlaneTest.cpp
    tessellation/trimTest.cpp
)
