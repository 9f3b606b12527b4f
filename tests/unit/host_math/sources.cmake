set(SOURCES
    Matrix4Test.cpp
    angleTest.cpp
    rotationTest.cpp
    transformTest.cpp
    unitsTest.cpp
)
