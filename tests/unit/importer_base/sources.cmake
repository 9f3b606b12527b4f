set(SOURCES
    ImportArgsTest.cpp
    LogTest.cpp
    TraceCheckTest.cpp
    base64Test.cpp
)
