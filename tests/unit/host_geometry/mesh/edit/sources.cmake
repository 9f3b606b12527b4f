list(APPEND SOURCES
    mesh/edit/meshLinksTest.cpp
    mesh/edit/meshRewriterTest.cpp
)
