# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    ConversionReport.cpp
    Options.cpp
    OutputTarget.cpp
    ProgressBar.cpp
    SceneStream.cpp
    conversion.cpp
    outputPath.cpp
    sceneFile.cpp
)
