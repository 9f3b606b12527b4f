list(APPEND SOURCES
    polygon/shape/allPolygonShapeNodes.cpp
)
