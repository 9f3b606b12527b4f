# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    mesh/EdgeLists.cpp
    mesh/MeshData.cpp
    mesh/PlanarRing.cpp
    mesh/PlainRenderMesh.cpp
    mesh/PlainVertices.cpp
    mesh/PolygonCutter.cpp
    mesh/ReflexGrid.cpp
    mesh/RenderStreams.cpp
    mesh/buildTopology.cpp
    mesh/componentList.cpp
    mesh/normalIds.cpp
    mesh/normals.cpp
    mesh/plainNormals.cpp
    mesh/polygon.cpp
    mesh/renderMesh.cpp
    mesh/triangulate.cpp
    mesh/tweak.cpp
)
foreach(folder animation curve deform hair mesh/boolean mesh/edit mesh/primitives mesh/shape mesh/texture nurbs tessellation)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
# Square roots that report no errors in errno can be taken several at once; their values are the same.
if(NOT MSVC)
    foreach(source normals plainNormals triangulate)
        set_source_files_properties(${PROJECT_SOURCE_DIR}/host/geometry/mesh/${source}.cpp PROPERTIES
            COMPILE_OPTIONS "-fno-math-errno;-fno-trapping-math" SKIP_PRECOMPILE_HEADERS ON)
    endforeach()
endif()
