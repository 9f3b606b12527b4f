list(APPEND SOURCES
    tessellation/DelaunayMesh.cpp
    tessellation/insertionOrder.cpp
    tessellation/keptEdges.cpp
    tessellation/triangulatePlane.cpp
)
