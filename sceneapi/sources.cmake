# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    CaptureStore.cpp
    CaptureTarget.cpp
    FileTarget.cpp
    LightFileFactory.cpp
    NullApi.cpp
    TextTarget.cpp
    numberText.cpp
    orvScene_api_file.cpp
    orvSceneapi_oo.cpp
    valueText.cpp
)
