# Sources of this room, one a line, sorted.
set(SOURCES
    Diagnostics.cpp
)
