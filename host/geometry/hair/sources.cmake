list(APPEND SOURCES
    hair/HairSpine.cpp
    hair/MeshSurface.cpp
    hair/guidePoints.cpp
    hair/hairColor.cpp
    hair/strands.cpp
)
