set(SOURCES
    buildTopologyTest.cpp
    listsTest.cpp
    normalsTest.cpp
    renderMeshTest.cpp
    renderStreamsTest.cpp
    triangulateTest.cpp
)
foreach(folder animation curve deform hair mesh/boolean mesh/edit mesh/primitives mesh/shape mesh/texture nurbs tessellation)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
