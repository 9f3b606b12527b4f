list(APPEND SOURCES
    binary/values/arrays.cpp
    binary/values/components.cpp
    binary/values/lattice.cpp
    binary/values/matrix.cpp
    binary/values/mesh.cpp
    binary/values/meshWords.cpp
    binary/values/numberLayout.cpp
    binary/values/numbers.cpp
    binary/values/nurbs.cpp
    binary/values/readValue.cpp
    binary/values/sparse.cpp
    binary/values/texts.cpp
    binary/values/valueTable.cpp
)
