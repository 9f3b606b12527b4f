list(APPEND SOURCES
    arithmetic/allArithmeticNodes.cpp
    arithmetic/componentNodes.cpp
    arithmetic/matrixNodes.cpp
    arithmetic/plusMinusAverage.cpp
    arithmetic/rampNodes.cpp
    arithmetic/scalarNodes.cpp
    arithmetic/vectorNodes.cpp
)
