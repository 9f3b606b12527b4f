list(APPEND SOURCES
    nurbs/historyTest.cpp
    nurbs/makersTest.cpp
    nurbs/queriesTest.cpp
    nurbs/shapesTest.cpp
)
