list(APPEND SOURCES
    mesh/primitives/boxesTest.cpp
    mesh/primitives/discTest.cpp
    mesh/primitives/roundSolidsTest.cpp
)
