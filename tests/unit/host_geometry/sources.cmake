set(SOURCES
    buildTopologyTest.cpp
    listsTest.cpp
    normalsTest.cpp
    renderMeshTest.cpp
    triangulateTest.cpp
)
