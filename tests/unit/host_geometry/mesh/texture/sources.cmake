list(APPEND SOURCES
    mesh/texture/joinUvsTest.cpp
    mesh/texture/layOutUvsTest.cpp
    mesh/texture/moveUvsTest.cpp
    mesh/texture/projectFromPlanesTest.cpp
    mesh/texture/projectUvsTest.cpp
    mesh/texture/uvBordersTest.cpp
)
