list(APPEND SOURCES
    polygon/shape/allPolygonShapeNodes.cpp
    polygon/shape/polyAverageVertex.cpp
    polygon/shape/polyCircularize.cpp
    polygon/shape/polyMoveComponents.cpp
    polygon/shape/polyNormal.cpp
    polygon/shape/polyNormalPerVertex.cpp
    polygon/shape/polySmoothFace.cpp
    polygon/shape/polySoftEdge.cpp
    polygon/shape/polyTweak.cpp
)
