list(APPEND SOURCES
    hair/allHairNodes.cpp
    hair/follicle.cpp
    hair/hairSystem.cpp
    hair/surfacePlace.cpp
)
