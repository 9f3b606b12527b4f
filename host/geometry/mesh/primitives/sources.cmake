list(APPEND SOURCES
    mesh/primitives/SolidBuilder.cpp
    mesh/primitives/lathe.cpp
    mesh/primitives/makeCube.cpp
    mesh/primitives/makeCylinder.cpp
    mesh/primitives/makePlane.cpp
    mesh/primitives/makeSphere.cpp
    mesh/primitives/orientation.cpp
)
