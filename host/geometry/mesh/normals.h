// Which corners of a mesh share a normal, and the normals.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cmath>
#include <span>
#include <vector>

namespace host::geometry {

/// Normal ids. The corners of a vertex fall into fans: two of them are in one fan when their faces
/// share a smooth edge at that vertex, directly or through others. Ids number the fans in the order
/// in which a walk over faces, loops and corners first meets them.
struct NormalIds {
    std::vector<std::uint32_t> ofCorner; ///< one per corner of the topology
    std::uint32_t count = 0;
};

/// Near-linear in the corners. An edge with more than two faces joins them all.
NormalIds computeNormalIds(const MeshData& mesh);

/// One unit normal per id.
///
/// Rule     sum over the corners of the fan of weight * polygon normal, normalised; the weight is
/// 1,
///          the interior angle of the polygon at the corner, the area of the polygon, or both
///          multiplied. A locked normal replaces it, normalised.
/// Input    vertices: see `cornerVertices`; locked: by id, a component of 1e19 or more (files write
///          1e20), none at all or a zero vector: not locked; may be shorter than ids.count.
/// Limits   a fan whose sum vanishes (faces back to back) has the normal of its first face with an
///          area; a fan without such a face has (0 0 1). Never NaN.
std::vector<Vec3f> computeNormals(const MeshTopology& topology,
                                  std::span<const std::uint32_t> vertices,
                                  std::span<const Vec3f> points, NormalWeighting weighting,
                                  const NormalIds& ids, std::span<const Vec3f> locked);

/// Whether a sum of weighted normals has a direction: not if it is so much shorter than its terms
/// together that it is what rounding left of opposite ones, and not if it is infinite or no number.
inline bool hasDirection(double sumLength, double termsLength)
{
    constexpr double kVanishing = 1e-10;
    return sumLength > kVanishing * termsLength && std::isfinite(sumLength);
}

/// The points of a mesh, empty where it has none; likewise its locked normals.
std::span<const Vec3f> pointsOf(const MeshData& mesh);
std::span<const Vec3f> lockedNormalsOf(const MeshData& mesh);

} // namespace host::geometry
