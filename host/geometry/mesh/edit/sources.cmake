list(APPEND SOURCES
    mesh/edit/MeshLinks.cpp
    mesh/edit/MeshRewriter.cpp
    mesh/edit/clusterVertices.cpp
    mesh/edit/deleteFaces.cpp
    mesh/edit/dissolveEdges.cpp
    mesh/edit/dissolveVertices.cpp
    mesh/edit/joinVertices.cpp
    mesh/edit/triangulateFaces.cpp
    mesh/edit/uniteMeshes.cpp
)
