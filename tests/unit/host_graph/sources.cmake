# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    GraphConnectionsTest.cpp
    GraphDagTest.cpp
    GraphNamesTest.cpp
    GraphPlugsTest.cpp
    GraphValuesTest.cpp
    IdTableTest.cpp
)
