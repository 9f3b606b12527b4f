# Sources of this test program, one a line, sorted.
set(SOURCES
    CommandPrinterTest.cpp
    binaryTypeCodesTest.cpp
    codesetTest.cpp
    facesTest.cpp
    numbersTest.cpp
    payloadsTest.cpp
    setAttributeTest.cpp
    statementsTest.cpp
)
