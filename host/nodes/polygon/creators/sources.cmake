list(APPEND SOURCES
    polygon/creators/allPolygonCreatorNodes.cpp
    polygon/creators/polyCube.cpp
    polygon/creators/polyCylinder.cpp
    polygon/creators/polyPlane.cpp
    polygon/creators/polySphere.cpp
)
