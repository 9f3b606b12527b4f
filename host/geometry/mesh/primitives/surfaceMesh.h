// Meshes out of NURBS surfaces.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"
#include "host/geometry/mesh/renderMesh.h"
#include "host/geometry/nurbs/SurfaceData.h"

#include <memory>

namespace host::geometry {

/// The triangles of a tessellation as a mesh: points at the same place are one, triangles that lose
/// their area by that are left out. With `joinsCells` two triangles that are the halves of one cell
/// of the grid become a quad. All edges inside are smooth. Null when nothing is left.
std::shared_ptr<const MeshData> meshOfTessellation(const RenderMesh& triangles, bool joinsCells,
                                                   std::string_view uvSetName);

/// The control points of a surface as a mesh: a point for each, v running fastest, those of closed
/// directions once; a quad between each four. Null when the surface has too few.
std::shared_ptr<const MeshData> meshOfControlPoints(const SurfaceData& surface,
                                                    std::string_view uvSetName);

} // namespace host::geometry
