list(APPEND SOURCES
    curve/BandSystem.cpp
    curve/CurveEvaluator.cpp
    curve/KnotVector.cpp
    curve/SplineRows.cpp
    curve/arcLength.cpp
    curve/arcs.cpp
    curve/interpolation.cpp
    curve/knotAlgebra.cpp
    curve/rebuild.cpp
)
