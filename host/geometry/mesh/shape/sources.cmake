list(APPEND SOURCES
    mesh/shape/averageVertices.cpp
    mesh/shape/catmullClark.cpp
    mesh/shape/circularize.cpp
    mesh/shape/cornerNormals.cpp
    mesh/shape/creaseLevels.cpp
    mesh/shape/facePlanes.cpp
    mesh/shape/lockNormals.cpp
    mesh/shape/moveComponents.cpp
    mesh/shape/smoothFaces.cpp
    mesh/shape/smoothMesh.cpp
    mesh/shape/softenEdges.cpp
    mesh/shape/transformMesh.cpp
    mesh/shape/turnFaces.cpp
)
