# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    Graph.cpp
    GraphAttributes.cpp
    GraphConnections.cpp
    GraphDag.cpp
    GraphPaths.cpp
    GraphPlugs.cpp
    GraphValues.cpp
    IdTable.cpp
)
