#include "host/geometry/mesh/shape/softenEdges.h"

#include "host/geometry/mesh/edit/FaceUses.h"
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

/// The largest angle between neighbours among the faces of the edge at a place of the list; faces
/// without an area have none.
double largestAngle(const FaceUses& faces, std::uint32_t place, LazyPlanes& planes)
{
    double largest = 0;
    Vec3d last = planes.of(faces.face(place, 0)).normal;
    for (std::size_t use = 1; use < faces.count(place); ++use) {
        const Vec3d next = planes.of(faces.face(place, use)).normal;
        largest = std::max(largest, angleBetween(last, next));
        last = next;
    }
    return largest;
}

/// The flags of edges that change.
struct FlagChange {
    std::uint32_t edge = 0;
    std::uint8_t flag = 0;
};

} // namespace

std::shared_ptr<const MeshData> softenEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges, double angle,
                                            const Matrix4& space)
{
    const MeshTopology& before = *mesh.topology;
    const FaceUses faces = facesOfEdges(before, edges);
    LazyPlanes planes(mesh, space);
    std::vector<FlagChange> changes;
    for (std::uint32_t place = 0; place < edges.size(); ++place) {
        if (faces.count(place) < 2) {
            continue;
        }
        const bool isSoft =
            angle > 0 && largestAngle(faces, place, planes) <= angle + kAngleTolerance;
        const std::uint8_t flag = isSoft ? 1 : 0;
        if (before.edgeSmooth[edges[place]] != flag) {
            changes.push_back({edges[place], flag});
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    if (changes.empty()) {
        return result;
    }
    auto topology = std::make_shared<MeshTopology>(before);
    for (const FlagChange& change : changes) {
        topology->edgeSmooth[change.edge] = change.flag;
    }
    result->lockedNormals = lockedNormalsById(*topology, lockedNormalsOfCorners(mesh));
    result->topology = std::move(topology);
    return result;
}

} // namespace host::geometry
