// Places on the surface that follicles stand on.
#pragma once

#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <memory>
#include <optional>
#include <string>

namespace host::geometry {
struct MeshData;
struct SurfaceData;
} // namespace host::geometry

namespace host::nodes {

/// The place of a mesh at texture coordinates of a set (see MeshSurface), in its object space.
/// Follicles of one mesh ask one after the other, so what is made of it is kept for the next one.
std::optional<geometry::SurfacePoint>
placeOnMesh(const std::shared_ptr<const geometry::MeshData>& mesh, const std::string& uvSet,
            double u, double v);

/// The place of a surface at parameters that run from 0 to 1 across it; kept in the same way.
std::optional<geometry::SurfacePoint>
placeOnSurface(const std::shared_ptr<const geometry::SurfaceData>& surface, double u, double v);

} // namespace host::nodes
