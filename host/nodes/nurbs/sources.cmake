list(APPEND SOURCES
    nurbs/allNurbsNodes.cpp
)
