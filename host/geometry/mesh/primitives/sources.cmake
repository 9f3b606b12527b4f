list(APPEND SOURCES
    mesh/primitives/SolidBuilder.cpp
    mesh/primitives/closedRings.cpp
    mesh/primitives/divideFaces.cpp
    mesh/primitives/lathe.cpp
    mesh/primitives/makeCone.cpp
    mesh/primitives/makeCube.cpp
    mesh/primitives/makeCylinder.cpp
    mesh/primitives/makeDisc.cpp
    mesh/primitives/makePipe.cpp
    mesh/primitives/makePlane.cpp
    mesh/primitives/makeSphere.cpp
    mesh/primitives/makeTorus.cpp
    mesh/primitives/orientation.cpp
)
