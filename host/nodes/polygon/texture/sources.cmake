list(APPEND SOURCES
    polygon/texture/allPolygonTextureNodes.cpp
)
