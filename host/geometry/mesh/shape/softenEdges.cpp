#include "host/geometry/mesh/shape/softenEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/cornerNormals.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/math/angle.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Between faces that differ by exactly the angle asked for an edge is soft, whatever the points'
/// single precision makes of it.
constexpr double kAngleTolerance = 1e-5;

double angleBetween(const Vec3d& a, const Vec3d& b)
{
    return angleOf(length(cross(a, b)), dot(a, b));
}

/// The largest angle between neighbours among the faces of an edge; faces without an area have
/// none.
double edgeAngle(std::span<const std::uint32_t> corners, const CornerLinks& links,
                 std::span<const PolygonPlane> planes)
{
    double largest = 0;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        const Vec3d& a = planes[links.face(corners[i])].normal;
        const Vec3d& b = planes[links.face(corners[i + 1])].normal;
        largest = std::max(largest, angleBetween(a, b));
    }
    return largest;
}

} // namespace

std::shared_ptr<const MeshData> softenEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges, double angle,
                                            const Matrix4& space)
{
    std::vector<Vec3d> points = doublePoints(mesh);
    for (Vec3d& point : points) {
        point = transformPoint(point, space);
    }
    const MeshTopology& before = *mesh.topology;
    const std::vector<PolygonPlane> planes = facePlanes(before, points);
    const NumberLists cornersOf = cornersOfEdges(before);
    const CornerLinks links(before);
    auto topology = std::make_shared<MeshTopology>(before);
    for (const std::uint32_t edge : edges) {
        const auto corners = cornersOf.of(edge);
        if (corners.size() > 1) {
            const bool isSoft =
                angle > 0 && edgeAngle(corners, links, planes) <= angle + kAngleTolerance;
            topology->edgeSmooth[edge] = isSoft ? 1 : 0;
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    result->lockedNormals = lockedNormalsById(*topology, lockedNormalsOfCorners(mesh));
    result->topology = std::move(topology);
    return result;
}

} // namespace host::geometry
