set(SOURCES
    ImportArgsTest.cpp
    LogTest.cpp
    base64Test.cpp
)
