list(APPEND SOURCES
    polygon/texture/allPolygonTextureNodes.cpp
    polygon/texture/colorNodes.cpp
    polygon/texture/polyTweakUV.cpp
    polygon/texture/uvProjections.cpp
)
