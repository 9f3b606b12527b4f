list(APPEND SOURCES
    mesh/boolean/booleanOfTest.cpp
    mesh/boolean/solidTest.cpp
)
