set(SOURCES
    EvaluatorTest.cpp
    InstanceTableTest.cpp
)
