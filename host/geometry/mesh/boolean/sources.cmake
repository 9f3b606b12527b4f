list(APPEND SOURCES
    mesh/boolean/HalfEdges.cpp
    mesh/boolean/PieceCorners.cpp
    mesh/boolean/PieceOutlines.cpp
    mesh/boolean/Solid.cpp
    mesh/boolean/booleanOf.cpp
    mesh/boolean/joinPieces.cpp
    mesh/boolean/solidsOf.cpp
)
# The library is included by one file; cmake/booleans.cmake says how.
if(ORV_BOOLEANS)
    list(APPEND SOURCES mesh/boolean/cutSolids.cpp)
    set_source_files_properties(${PROJECT_SOURCE_DIR}/host/geometry/mesh/boolean/cutSolids.cpp PROPERTIES
        COMPILE_OPTIONS "${ORV_BOOLEAN_OPTIONS}" SKIP_PRECOMPILE_HEADERS ON)
else()
    list(APPEND SOURCES mesh/boolean/cutSolidsNowhere.cpp)
endif()
