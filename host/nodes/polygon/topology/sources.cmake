list(APPEND SOURCES
    polygon/topology/allPolygonTopologyNodes.cpp
    polygon/topology/deleteComponent.cpp
    polygon/topology/polyCut.cpp
    polygon/topology/polyDelete.cpp
    polygon/topology/polyExtrudeFace.cpp
    polygon/topology/polyMergeVert.cpp
    polygon/topology/polyMirror.cpp
    polygon/topology/polySeparate.cpp
    polygon/topology/polySplit.cpp
    polygon/topology/polySplitRing.cpp
    polygon/topology/polySubdFace.cpp
    polygon/topology/polyTriangulate.cpp
    polygon/topology/polyUnite.cpp
)
