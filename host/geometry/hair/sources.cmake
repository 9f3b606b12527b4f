list(APPEND SOURCES
    hair/MeshSurface.cpp
)
