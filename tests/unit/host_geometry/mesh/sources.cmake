list(APPEND SOURCES
    mesh/meshLinksTest.cpp
    mesh/meshRewriterTest.cpp
)
