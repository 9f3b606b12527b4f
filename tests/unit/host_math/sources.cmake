set(SOURCES
    Matrix4Test.cpp
    angleTest.cpp
    quaternionTest.cpp
    rotationTest.cpp
    transformTest.cpp
    unitsTest.cpp
)
