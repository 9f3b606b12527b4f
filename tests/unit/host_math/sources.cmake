set(SOURCES
    Matrix4Test.cpp
    rotationTest.cpp
    transformTest.cpp
    unitsTest.cpp
)
