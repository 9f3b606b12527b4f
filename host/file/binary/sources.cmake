list(APPEND SOURCES
    binary/Chunk.cpp
    binary/Coverage.cpp
    binary/Cursor.cpp
    binary/Reader.cpp
    binary/Tag.cpp
    binary/attributeDefinitions.cpp
    binary/bigEndian.cpp
    binary/connections.cpp
    binary/header.cpp
    binary/nodes.cpp
    binary/readBinary.cpp
    binary/references.cpp
    binary/typeCodes.cpp
)
include(${CMAKE_CURRENT_LIST_DIR}/values/sources.cmake)
