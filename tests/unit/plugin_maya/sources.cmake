set(SOURCES
    GroupStackTest.cpp
    ProgressCounterTest.cpp
    driverTest.cpp
    materialsTest.cpp
    mayautilTest.cpp
    meshesTest.cpp
)
