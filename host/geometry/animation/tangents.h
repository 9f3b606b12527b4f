// The tangent vectors of keys that give a rule instead of a vector.
#pragma once

#include "host/geometry/animation/CurveKeys.h"

#include <cstddef>
#include <span>

namespace host::geometry {

struct KeyTangents {
    TangentVector in;
    TangentVector out;
};

/// The vectors of both sides of the key at `position` among keys of ascending times. A rule gives
/// the slope; the vector of that slope is as long as the distance in time to the neighbour on its
/// side (to the other one where there is none, 1 for a lone key). Slopes, with l and r those of the
/// spans on the left and on the right and m that of the line through both neighbours:
///
/// - linear: l on the left, r on the right; 0 at an end without neighbour;
/// - spline: m; at an end the slope of the only span. Slow and fast are taken as splines;
/// - clamped: the same, but 0 where a neighbour's value differs by less than `levelDifference`;
/// - auto: 0 at both ends and at extremes (l * r <= 0), else m, but no steeper than 3 l and 3 r, so
///   that the curve stays between its keys. Plateau is taken as auto: the public description, no
///   overshoot and level extremes, leads to the same limits;
/// - auto mix: auto with l (1 - f) + r f for m, where f is the key's place in time between its
///   neighbours; auto ease: with 0.5 + (f - 0.5) (1.5 - 2 (f - 0.5)^2) for f.
KeyTangents tangentsOf(std::span<const CurveKey> keys, std::size_t position,
                       double levelDifference);

} // namespace host::geometry
