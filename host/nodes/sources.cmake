# Sources of this room, one a line, sorted.
set(SOURCES
    allNodeTypes.cpp
    dagNode.cpp
    groupId.cpp
    groupParts.cpp
    joint.cpp
    mesh.cpp
    textureColor.cpp
    transform.cpp
    transformParts.cpp
    unitConversion.cpp
)
foreach(folder animation arithmetic hair nurbs)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
