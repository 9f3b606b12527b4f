list(APPEND SOURCES
    polygon/shapeTest.cpp
)
