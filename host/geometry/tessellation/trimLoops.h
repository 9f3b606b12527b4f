// The boundaries of a trim region as polygons in the parameter plane.
#pragma once

#include "host/geometry/tessellation/GridLines.h"
#include "host/geometry/tessellation/TessellationNotes.h"
#include "host/geometry/tessellation/triangulatePlane.h"

namespace host::geometry {

/// A closed polygon of parameters (x is u, y is v): outer ones counter-clockwise, holes clockwise.
struct BoundaryLoop {
    std::vector<PlanePosition> points;
    bool isHole = false;
};

/// Points of the boundaries of one surface, beyond what their curves' control points ask for.
inline constexpr std::size_t kMaxTrimPoints = std::size_t{1} << 19;
/// Halvings of one piece of a trim curve between two breaks.
inline constexpr int kMaxTrimHalvings = 12;
/// Gap between two edges that is closed by a straight line, in diagonals of the domain.
inline constexpr double kMaxTrimGap = 0.02;

/// Samples the boundaries of a region so densely that the lines between the samples, laid on the
/// surface, keep the tolerances. Points are on the parameter curves; a curve and its reversal give
/// the same points. Pieces that run along a line of the grid's directions take their points from
/// the grid.
///
/// `pointsLeft` is what is left of kMaxTrimPoints; lines are coarser when it is used up.
///
/// A region without an outer boundary, or whose outer boundary cannot be used, has the border of
/// the domain as its outer one.
std::vector<BoundaryLoop> sampleTrimRegion(const TrimRegion& region, const SurfaceSheet& sheet,
                                           const GridLines& lines,
                                           const TessellationSettings& settings,
                                           std::size_t& pointsLeft, TessellationNotes& notes);

} // namespace host::geometry
