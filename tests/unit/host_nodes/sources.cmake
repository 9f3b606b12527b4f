set(SOURCES
    meshTest.cpp
    smallNodesTest.cpp
    transformTest.cpp
)
foreach(folder animation arithmetic deform hair nurbs polygon)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
