list(APPEND SOURCES
    polygon/topology/allPolygonTopologyNodes.cpp
)
