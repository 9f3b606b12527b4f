list(APPEND SOURCES
    polygon/creatorsTest.cpp
    polygon/shapeTest.cpp
    polygon/textureTest.cpp
)
