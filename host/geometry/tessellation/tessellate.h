// The triangles of a surface, with its trims.
#pragma once

#include "host/geometry/mesh/renderMesh.h"
#include "host/geometry/nurbs/SurfaceData.h"
#include "host/geometry/tessellation/TessellationNotes.h"
#include "host/geometry/tessellation/TessellationSettings.h"

namespace host::geometry {

struct Tessellation {
    RenderMesh mesh; ///< one face; no triangles when there is nothing to show
    TessellationNotes notes;
};

/// Cuts a surface into triangles.
///
/// Untrimmed, a grid over the spans of the surface. Trimmed, per region the cells of that grid that
/// lie inside and away from its boundaries, and a constrained triangulation between them and the
/// boundaries, whose points lie on the boundary curves. Regions share no vertices. Triangles turn
/// as the normals, du x dv, show; `isOpposite` and a region's flipNormal turn both over. Texture
/// coordinates are the parameters, 0..1 over the domain.
///
/// Positions on both sides of a seam and at a pole are the same to the last digit; the texture
/// coordinates there are their own.
Tessellation tessellate(const SurfaceData& surface, const TessellationSettings& settings);

} // namespace host::geometry
