# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    Matrix4.cpp
    decompose.cpp
    quaternion.cpp
    rotation.cpp
    transform.cpp
    units.cpp
)
