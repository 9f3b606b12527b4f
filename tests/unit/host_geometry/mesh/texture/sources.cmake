list(APPEND SOURCES
    mesh/texture/moveUvsTest.cpp
    mesh/texture/projectUvsTest.cpp
    mesh/texture/uvBordersTest.cpp
)
