// Flat surfaces bounded by closed curves.
#pragma once

#include "host/geometry/nurbs/SurfaceData.h"
#include "host/math/Vec.h"

#include <span>

namespace host::geometry {

struct PlanarTrimOptions {
    std::int32_t degree = 3;   ///< of the plane, 1 or 3
    bool keepsOutside = false; ///< what lies outside the curves instead of what lies inside
    double tolerance = 0.01;   ///< centimetres between ends of curves that belong together
};

/// The plane through closed planar curves, trimmed to them. Open curves whose ends meet make
/// boundaries together. Of boundaries inside one another every second is a hole and those inside it
/// are regions of their own; one region per outer boundary, outer boundaries counter-clockwise in
/// (u, v), holes clockwise. The normal is that about which the curve around the greatest area runs
/// counter-clockwise. Empty when no boundary closes.
/// Of boundaries that run alike one is taken. `isCrossed` is set where some cross, or are too many
/// to say: they are sorted as if they did not.
SurfaceData planarTrimSurface(std::span<const CurveData> curves, const PlanarTrimOptions& options,
                              bool* isCrossed = nullptr);

/// One closed boundary in the parameter plane: its edges and its corners as a polygon.
struct TrimLoop {
    std::vector<TrimEdge> edges;
    std::vector<Vec3d> outline; ///< (u, v, 0), not repeated
};

/// Regions of loops that do not cross: see planarTrimSurface. Loops are turned round as their
/// place demands.
std::vector<std::shared_ptr<const TrimRegion>> regionsOf(std::vector<TrimLoop> loops);

/// More curves than this are not taken.
inline constexpr std::size_t kMaxTrimCurves = 512;

} // namespace host::geometry
