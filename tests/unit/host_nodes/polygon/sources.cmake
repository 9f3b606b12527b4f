list(APPEND SOURCES
    polygon/creatorsTest.cpp
    polygon/joiningTest.cpp
    polygon/shapeTest.cpp
    polygon/textureTest.cpp
)
