list(APPEND SOURCES
    polygon/texture/allPolygonTextureNodes.cpp
    polygon/texture/colorNodes.cpp
    polygon/texture/keptUvs.cpp
    polygon/texture/polyAutoProj.cpp
    polygon/texture/polyCrease.cpp
    polygon/texture/polyLayoutUV.cpp
    polygon/texture/polyPinUV.cpp
    polygon/texture/polyTweakUV.cpp
    polygon/texture/unfoldedUvs.cpp
    polygon/texture/uvBorders.cpp
    polygon/texture/uvMotions.cpp
    polygon/texture/uvProjections.cpp
    polygon/texture/uvSetNodes.cpp
)
