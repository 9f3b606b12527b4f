list(APPEND SOURCES
    hair/MeshSurfaceTest.cpp
    hair/RampTest.cpp
    hair/strandsTest.cpp
)
