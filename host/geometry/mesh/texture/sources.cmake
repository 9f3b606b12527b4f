list(APPEND SOURCES
    mesh/texture/UvEditor.cpp
    mesh/texture/addCornerUvs.cpp
    mesh/texture/cutUvs.cpp
    mesh/texture/joinUvs.cpp
    mesh/texture/layOutUvs.cpp
    mesh/texture/moveUvs.cpp
    mesh/texture/projectFromPlanes.cpp
    mesh/texture/projectUvs.cpp
    mesh/texture/projectionPlanes.cpp
    mesh/texture/setCreases.cpp
    mesh/texture/transferUvs.cpp
    mesh/texture/uvPieces.cpp
    mesh/texture/uvSets.cpp
)
