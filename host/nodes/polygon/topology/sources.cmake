list(APPEND SOURCES
    polygon/topology/allPolygonTopologyNodes.cpp
    polygon/topology/deleteComponent.cpp
    polygon/topology/polyDelete.cpp
    polygon/topology/polyExtrudeFace.cpp
    polygon/topology/polyMergeVert.cpp
    polygon/topology/polySeparate.cpp
    polygon/topology/polySplitRing.cpp
    polygon/topology/polySubdFace.cpp
    polygon/topology/polyTriangulate.cpp
    polygon/topology/polyUnite.cpp
)
