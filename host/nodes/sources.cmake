# Sources of this room, one a line, sorted.
set(SOURCES
    allNodeTypes.cpp
    dagNode.cpp
    groupId.cpp
    groupParts.cpp
    joint.cpp
    mesh.cpp
    pointOffsets.cpp
    textureColor.cpp
    transform.cpp
    transformParts.cpp
    unitConversion.cpp
)
foreach(room animation arithmetic deform hair nurbs polygon)
    include(${CMAKE_CURRENT_LIST_DIR}/${room}/sources.cmake)
endforeach()
