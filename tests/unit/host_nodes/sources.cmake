set(SOURCES
    meshTest.cpp
    smallNodesTest.cpp
    transformTest.cpp
)
foreach(folder animation arithmetic hair nurbs polygon)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
