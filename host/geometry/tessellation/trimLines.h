// More lines where trim boundaries run across a grid.
#pragma once

#include "host/geometry/tessellation/GridLines.h"

#include <memory>
#include <span>

namespace host::geometry {

/// Adds lines along the stretches that boundaries cross slantwise, so that the cells there are no
/// longer in space than they are wide in a bent direction. Between the cells and a boundary lies a
/// band of triangles that follows the surface only as well as the cells round it are small: beside
/// a cell as long as a pipe it would cut through the pipe. Nothing is added where that would be
/// more than `maxTriangles`, or on what is flat.
GridLines squaredNearTrims(const SurfaceSheet& sheet, GridLines lines,
                           std::span<const std::shared_ptr<const TrimRegion>> regions,
                           std::size_t maxTriangles);

} // namespace host::geometry
