list(APPEND SOURCES
    hair/allHairNodes.cpp
)
