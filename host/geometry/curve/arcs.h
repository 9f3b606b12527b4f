// Circular arcs about the origin as splines: near ones without weights, as modelling programs make
// them, and exact ones with weights.
#pragma once

#include "host/geometry/curve/SplineRows.h"

namespace host::geometry {

/// A sweep that comes this close to a full turn, in radians, is one.
inline constexpr double kFullTurnTolerance = 1e-6;
/// More sections than this are not made.
inline constexpr std::int32_t kMaxSections = 4096;

/// An arc of radius 1 in the xy plane from angle `start` to `end` (radians, either direction, at
/// most a turn), z = 0, with `sections` spans of length 1 and no weights; degree 1, else 3.
/// Its points at whole parameters lie on the circle. A full turn is periodic: the control points
/// stand at radius 3 / (2 + cos(2 pi / sections)), at least 3 sections. An open cubic arc has
/// tangents as long as the chord of one section at its ends.
SplineRows nearArc(double start, double end, std::int32_t sections, std::int32_t degree);

/// The same arc exactly: rational quadratic pieces of at most a quarter turn each, one unit of
/// parameter long; closed when it is a full turn.
SplineRows exactArc(double start, double end);

/// How many sections keep `nearArc` of a radius and sweep within `tolerance` of the circle: the
/// first of 4, 8, 16, .. 256 that does, else 256.
std::int32_t sectionsWithin(double tolerance, double radius, double sweep);

/// Orthogonal unit vectors: `axis`, `x` and `y` = axis x x, those of the world turned so that +y
/// comes to lie along `axis` by the shortest way and +x, turned with it, becomes `x`. An axis of no
/// length counts as +y.
struct Frame {
    Vec3d x{1, 0, 0}, axis{0, 1, 0}, y{0, 0, -1};
};
Frame frameOf(const Vec3d& axis);

/// `arc` in a plane: center + (x vx + y vy) * radius for each control point (x, y).
SplineRows placed(const SplineRows& arc, const Vec3d& center, const Vec3d& vx, const Vec3d& vy);

} // namespace host::geometry
