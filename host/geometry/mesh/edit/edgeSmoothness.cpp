#include "host/geometry/mesh/edit/edgeSmoothness.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/faceFrame.h"

#include "host/math/angle.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Equal angles computed two ways differ by less.
constexpr double kAngleTolerance = 1e-5;

bool isFlatEnough(std::span<const Vec3d> normals, const CornerLinks& links,
                  std::span<const std::uint32_t> corners, double angle)
{
    if (corners.size() != 2) {
        return false;
    }
    const Vec3d& first = normals[links.face(corners[0])];
    const Vec3d& second = normals[links.face(corners[1])];
    const double between = angleOf(length(cross(first, second)), dot(first, second));
    return between <= angle + kAngleTolerance;
}

std::vector<Vec3d> faceNormals(const MeshData& mesh)
{
    const std::vector<Vec3d> points = pointsInSpace(mesh, Matrix4{});
    std::vector<Vec3d> normals(mesh.topology->faceCount());
    for (std::uint32_t face = 0; face < normals.size(); ++face) {
        normals[face] = faceNormal(*mesh.topology, points, face);
    }
    return normals;
}

} // namespace

std::shared_ptr<const MeshData> withSmoothEdges(std::shared_ptr<const MeshData> mesh, double angle)
{
    const auto isMarked = [](std::uint8_t flag) { return flag == kSmoothByAngle; };
    if (mesh == nullptr || mesh->edgeSmooth == nullptr ||
        std::none_of(mesh->edgeSmooth->begin(), mesh->edgeSmooth->end(), isMarked)) {
        return mesh;
    }
    const std::vector<Vec3d> normals = faceNormals(*mesh);
    const CornerLinks links(*mesh->topology);
    const NumberLists corners = cornersOfEdges(*mesh->topology);
    EdgeFlags flags = *mesh->edgeSmooth;
    for (std::uint32_t edge = 0; edge < flags.size(); ++edge) {
        if (isMarked(flags[edge])) {
            flags[edge] = isFlatEnough(normals, links, corners.of(edge), angle) ? 1 : 0;
        }
    }
    auto result = std::make_shared<MeshData>(*mesh);
    result->edgeSmooth = shareEdgeFlags(std::move(flags));
    return result;
}

} // namespace host::geometry
