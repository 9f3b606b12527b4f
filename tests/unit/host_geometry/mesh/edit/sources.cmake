list(APPEND SOURCES
    mesh/edit/anyMeshTest.cpp
    mesh/edit/bevelTest.cpp
    mesh/edit/bordersTest.cpp
    mesh/edit/cutMirrorTest.cpp
    mesh/edit/deletePartsTest.cpp
    mesh/edit/duplicateEdgeLoopsTest.cpp
    mesh/edit/extrudeTest.cpp
    mesh/edit/faceUsesTest.cpp
    mesh/edit/joinVerticesTest.cpp
    mesh/edit/meshLinksTest.cpp
    mesh/edit/meshRewriterTest.cpp
    mesh/edit/reduceTest.cpp
    mesh/edit/spinWedgeTest.cpp
    mesh/edit/splitTest.cpp
    mesh/edit/triangulateFacesTest.cpp
    mesh/edit/uniteSplitTest.cpp
)
