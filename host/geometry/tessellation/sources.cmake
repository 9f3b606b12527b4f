list(APPEND SOURCES
    tessellation/DelaunayMesh.cpp
    tessellation/GridLines.cpp
    tessellation/SurfaceMeshBuilder.cpp
    tessellation/SurfaceSheet.cpp
    tessellation/TrimGrid.cpp
    tessellation/creases.cpp
    tessellation/insertionOrder.cpp
    tessellation/keptEdges.cpp
    tessellation/tessellate.cpp
    tessellation/triangulatePlane.cpp
    tessellation/trimLines.cpp
    tessellation/trimLoops.cpp
    tessellation/trimTessellation.cpp
)
