// Parts of surfaces, their curves, and their reversal.
#pragma once

#include "host/geometry/nurbs/surfaceRows.h"

#include <span>

namespace host::geometry {

enum class Reversal : std::uint8_t { U, V, Both, Swap };

/// A surface run through backwards in one or both directions, or with u and v exchanged. Trim
/// regions follow: their parameter curves move with the surface and keep their orientation (outer
/// boundaries counter-clockwise).
SurfaceData reversed(const SurfaceData& surface, Reversal reversal);

/// The curve at a fixed parameter: with direction U the one at u = `parameter`, running along v.
CurveData isoparametricCurve(const SurfaceData& surface, SurfaceDirection direction,
                             double parameter);

/// The rows of one direction changed by `change`; trim regions are dropped.
template<class Change>
SurfaceData changed(const SurfaceData& surface, SurfaceDirection direction, Change change)
{
    SplineRows rows = rowsOf(surface, direction);
    if (rows.points.empty()) {
        return {};
    }
    change(rows);
    return rows.points.empty() ? SurfaceData() : surfaceOf(rows, surface, direction);
}

/// The surface's parameters nearest to a point: the best of evenly spread samples, made exact by
/// Newton's steps.
struct SurfaceParameters {
    double u = 0, v = 0;
};
SurfaceParameters nearestParameters(const SurfaceData& surface, const Vec3d& target);

/// A surface at a distance along its normals: the Greville points of the surface, moved, and the
/// surface of the same knots through them. Exact for planes; near for others.
SurfaceData offset(const SurfaceData& surface, double distance);

} // namespace host::geometry
