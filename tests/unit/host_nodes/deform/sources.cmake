list(APPEND SOURCES
    deform/deformersTest.cpp
    deform/pointGroupsTest.cpp
)
