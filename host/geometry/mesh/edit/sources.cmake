list(APPEND SOURCES
    mesh/edit/ComponentMotion.cpp
    mesh/edit/MeshLinks.cpp
    mesh/edit/MeshRewriter.cpp
    mesh/edit/clusterVertices.cpp
    mesh/edit/deleteFaces.cpp
    mesh/edit/dissolveEdges.cpp
    mesh/edit/dissolveVertices.cpp
    mesh/edit/edgeSmoothness.cpp
    mesh/edit/extrudeFaces.cpp
    mesh/edit/faceFrame.cpp
    mesh/edit/insetLoop.cpp
    mesh/edit/joinVertices.cpp
    mesh/edit/splitMesh.cpp
    mesh/edit/triangulateFaces.cpp
    mesh/edit/uniteMeshes.cpp
)
