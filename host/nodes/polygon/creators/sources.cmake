list(APPEND SOURCES
    polygon/creators/allPolygonCreatorNodes.cpp
)
