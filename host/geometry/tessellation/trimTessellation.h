// The triangles of one trim region.
#pragma once

#include "host/geometry/tessellation/SurfaceMeshBuilder.h"
#include "host/geometry/tessellation/trimLoops.h"

namespace host::geometry {

/// Adds the triangles between the loops. False when the loops cross too often; then nothing is
/// added.
bool addTrimRegion(std::span<const BoundaryLoop> loops, const SurfaceSheet& sheet,
                   const GridLines& lines, const TessellationSettings& settings,
                   SurfaceMeshBuilder& builder);

} // namespace host::geometry
