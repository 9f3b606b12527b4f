list(APPEND SOURCES
    hair/MeshSurfaceTest.cpp
    hair/RampTest.cpp
)
