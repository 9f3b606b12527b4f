list(APPEND SOURCES
    mesh/texture/UvEditor.cpp
    mesh/texture/cutUvs.cpp
    mesh/texture/moveUvs.cpp
    mesh/texture/projectUvs.cpp
    mesh/texture/setCreases.cpp
    mesh/texture/uvSets.cpp
)
