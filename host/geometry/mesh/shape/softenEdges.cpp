#include "host/geometry/mesh/shape/softenEdges.h"

#include "host/geometry/mesh/edit/FaceUses.h"
#include "host/geometry/mesh/shape/cornerNormals.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/math/angle.h"

#include <algorithm>
#include <utility>

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
    const FaceUses faces = facesOfEdges(*mesh.topology, edges);
    LazyPlanes planes(mesh, space);
    std::vector<FlagChange> changes;
    for (std::uint32_t place = 0; place < edges.size(); ++place) {
        if (faces.count(place) < 2) {
            continue;
        }
        const bool isSoft =
            angle > 0 && largestAngle(faces, place, planes) <= angle + kAngleTolerance;
        if (mesh.isSmooth(edges[place]) != isSoft) {
            changes.push_back({edges[place], static_cast<std::uint8_t>(isSoft ? 1 : 0)});
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    if (changes.empty()) {
        return result;
    }
    EdgeFlags flags = mesh.edgeFlags();
    for (const FlagChange& change : changes) {
        flags[change.edge] = change.flag;
    }
    result->edgeSmooth = shareEdgeFlags(std::move(flags));
    result->lockedNormals = lockedNormalsById(*result, lockedNormalsOfCorners(mesh));
    return result;
}

} // namespace host::geometry
