set(SOURCES
)
