# Sources of this room, one a line, sorted (main files of programs are not listed).
set(SOURCES
    AtomicFile.cpp
    ChildProcessPosix.cpp
    ChildProcessWindows.cpp
    MappedFile.cpp
    OwnedHandle.cpp
    clock.cpp
    descriptors.cpp
    dllFolder.cpp
    files.cpp
    registry.cpp
    systemError.cpp
    temporaryFolder.cpp
    wideText.cpp
    windowsCommandLine.cpp
)
