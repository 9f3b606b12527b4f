list(APPEND SOURCES
    mesh/edit/MeshLinks.cpp
    mesh/edit/MeshRewriter.cpp
)
