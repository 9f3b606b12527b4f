list(APPEND SOURCES
    mesh/texture/UvEditor.cpp
    mesh/texture/moveUvs.cpp
    mesh/texture/projectUvs.cpp
)
