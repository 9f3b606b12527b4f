# Sources of this room, one a line, sorted.
set(SOURCES
    ComputeTable.cpp
    Evaluator.cpp
    EvaluatorContext.cpp
    InstanceTable.cpp
    convertValue.cpp
    outputNames.cpp
    plugSource.cpp
)
