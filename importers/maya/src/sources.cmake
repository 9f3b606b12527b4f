# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    ImportArgs.cpp
    Log.cpp
    TraceCheck.cpp
    base64.cpp
)
