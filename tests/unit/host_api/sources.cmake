# Sources of this test program, one a line, sorted.
set(SOURCES
    MStatusTest.cpp
    MStringTest.cpp
    MTimeTest.cpp
    arraysTest.cpp
    vectorsTest.cpp
)
