list(APPEND SOURCES
    hair/RampTest.cpp
)
