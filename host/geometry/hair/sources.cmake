list(APPEND SOURCES
    hair/MeshSurface.cpp
    hair/guidePoints.cpp
)
