set(SOURCES
    OptionsTest.cpp
    SceneStreamTest.cpp
    outputPathTest.cpp
)
