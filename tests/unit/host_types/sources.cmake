# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    NodeTypeTest.cpp
    NumericArrayTest.cpp
    PlugPathTest.cpp
)
