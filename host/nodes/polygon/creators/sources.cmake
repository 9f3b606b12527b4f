list(APPEND SOURCES
    polygon/creators/allPolygonCreatorNodes.cpp
    polygon/creators/nurbsTessellate.cpp
    polygon/creators/polyCone.cpp
    polygon/creators/polyCreateFace.cpp
    polygon/creators/polyCube.cpp
    polygon/creators/polyCylinder.cpp
    polygon/creators/polyDisc.cpp
    polygon/creators/polyHelix.cpp
    polygon/creators/polyPipe.cpp
    polygon/creators/polyPlane.cpp
    polygon/creators/polyPlatonic.cpp
    polygon/creators/polyPrism.cpp
    polygon/creators/polySphere.cpp
    polygon/creators/polyTorus.cpp
)
