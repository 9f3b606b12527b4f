list(APPEND SOURCES
    animation/curveTablesTest.cpp
)
