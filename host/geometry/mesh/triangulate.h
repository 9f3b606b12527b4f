// Faces cut into triangles.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <array>
#include <span>
#include <vector>

namespace host::geometry {

struct Triangulation {
    /// Three global corner numbers per triangle, in the winding of the face.
    std::vector<std::uint32_t> corners;
    /// First triangle of each face, and the number of triangles as last entry.
    std::vector<std::uint32_t> faceFirstTriangle;
};

/// The corner, 0 or 1, at which the better diagonal of a quad starts.
///
/// A concave quad is cut at its reflex corner. Otherwise the diagonal wins that leaves the larger
/// smallest angle in its two triangles; where these are within 1e-4 radians of each other (as in
/// rectangles) it is that of corner 1. Found by comparison with cuts that Maya itself made.
std::uint32_t bestDiagonal(const std::array<Vec3d, 4>& quad);

/// The triangles of all faces.
///
/// Input    vertices: see `cornerVertices`; skippedFaces: ascending, they get no triangles.
/// Shape    a face of n corners gives n - 2 triangles, each hole of k corners k + 2 more. A quad
/// with
///          the diagonal 1-3 gives (0 1 3) (1 2 3), with 0-2 (0 1 2) (0 2 3). Faces of more corners
///          and faces with holes are cut in the plane of their normal (see PolygonCutter.h).
/// Limits   holes outside their face or without area are left out.
Triangulation triangulate(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
                          std::span<const Vec3f> points, QuadSplit split = QuadSplit::BestShape,
                          std::span<const std::uint32_t> skippedFaces = {});

} // namespace host::geometry
