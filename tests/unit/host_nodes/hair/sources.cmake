list(APPEND SOURCES
    hair/follicleTest.cpp
)
