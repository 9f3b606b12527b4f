list(APPEND SOURCES
    mesh/primitives/boxesTest.cpp
    mesh/primitives/discTest.cpp
    mesh/primitives/platonicSolidsTest.cpp
    mesh/primitives/roundSolidsTest.cpp
    mesh/primitives/surfaceMeshTest.cpp
)
