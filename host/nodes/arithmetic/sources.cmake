list(APPEND SOURCES
    arithmetic/allArithmeticNodes.cpp
)
