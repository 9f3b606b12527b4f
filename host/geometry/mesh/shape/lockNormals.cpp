#include "host/geometry/mesh/shape/lockNormals.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/shape/cornerNormals.h"

#include <cmath>
#include <utility>
#include <vector>

namespace host::geometry {
namespace {

std::vector<Vec3f> normalsOfCorners(const MeshData& mesh)
{
    const MeshTopology& topology = *mesh.topology;
    const NormalIds ids = computeNormalIds(mesh);
    const std::vector<std::uint32_t> vertices = cornerVertices(topology);
    const std::vector<Vec3f> normals = computeNormals(
        topology, vertices, pointsOf(mesh), mesh.normalWeighting, ids, lockedNormalsOf(mesh));
    std::vector<Vec3f> ofCorners;
    ofCorners.reserve(topology.corners.size());
    for (const std::uint32_t id : ids.ofCorner) {
        ofCorners.push_back(normals[id]);
    }
    return ofCorners;
}

/// Calls `change` with every corner that a given normal is for.
template<class Change>
void forGivenCorners(const MeshTopology& topology, std::span<const GivenNormal> given,
                     const Change& change)
{
    const NumberLists cornersOf = cornersOfVertices(topology);
    const CornerLinks links(topology);
    for (const GivenNormal& one : given) {
        if (one.vertex >= topology.vertexCount) {
            continue;
        }
        for (const std::uint32_t corner : cornersOf.of(one.vertex)) {
            if (one.face == kAllFaces || links.face(corner) == one.face) {
                change(corner, one.normal);
            }
        }
    }
}

bool areSame(const Vec3f& a, const Vec3f& b)
{
    constexpr float kTolerance = 1e-6F;
    if (!isLockedNormal(a) || !isLockedNormal(b)) {
        return isLockedNormal(a) == isLockedNormal(b);
    }
    return std::fabs(a.x - b.x) < kTolerance && std::fabs(a.y - b.y) < kTolerance &&
           std::fabs(a.z - b.z) < kTolerance;
}

/// The two corners of an edge's neighbouring faces at its start and at its end.
struct EdgeCorners {
    std::uint32_t start[2];
    std::uint32_t end[2];
};

EdgeCorners cornersAt(const MeshTopology& topology, const CornerLinks& links, std::uint32_t first,
                      std::uint32_t second)
{
    EdgeCorners at{};
    const std::uint32_t both[2] = {first, second};
    for (std::size_t side = 0; side < 2; ++side) {
        const std::uint32_t corner = both[side];
        const bool isForward = topology.corners[corner] >= 0;
        at.start[side] = isForward ? corner : links.next(corner);
        at.end[side] = isForward ? links.next(corner) : corner;
    }
    return at;
}

/// The flags of edges, those hard across which locked normals differ.
std::shared_ptr<const EdgeFlags> hardened(const MeshData& mesh, std::span<const Vec3f> locked)
{
    const MeshTopology& before = *mesh.topology;
    EdgeFlags flags = mesh.edgeFlags();
    const NumberLists cornersOf = cornersOfEdges(before);
    const CornerLinks links(before);
    for (std::uint32_t edge = 0; edge < before.edges.size(); ++edge) {
        const auto corners = cornersOf.of(edge);
        for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
            const EdgeCorners at = cornersAt(before, links, corners[i], corners[i + 1]);
            if (!areSame(locked[at.start[0]], locked[at.start[1]]) ||
                !areSame(locked[at.end[0]], locked[at.end[1]])) {
                flags[edge] = 0;
            }
        }
    }
    return shareEdgeFlags(std::move(flags));
}

/// Corners that shared a computed normal and do so no more have it locked.
void keepComputed(const MeshData& mesh, const MeshData& after, std::vector<Vec3f>& locked)
{
    const NormalIds before = computeNormalIds(mesh);
    const NormalIds ids = computeNormalIds(after);
    std::vector<std::uint32_t> newId(before.count, kNone);
    std::vector<bool> isSplit(before.count);
    bool isAnySplit = false;
    for (std::size_t corner = 0; corner < locked.size(); ++corner) {
        const std::uint32_t id = before.ofCorner[corner];
        newId[id] = newId[id] == kNone ? ids.ofCorner[corner] : newId[id];
        if (newId[id] != ids.ofCorner[corner]) {
            isSplit[id] = true;
            isAnySplit = true;
        }
    }
    if (!isAnySplit) {
        return;
    }
    const std::vector<Vec3f> computed = normalsOfCorners(mesh);
    for (std::size_t corner = 0; corner < locked.size(); ++corner) {
        if (isSplit[before.ofCorner[corner]] && !isLockedNormal(locked[corner])) {
            locked[corner] = computed[corner];
        }
    }
}

std::shared_ptr<const MeshData> withLocked(const MeshData& mesh, std::vector<Vec3f> ofCorners)
{
    auto result = std::make_shared<MeshData>(mesh);
    result->edgeSmooth = hardened(mesh, ofCorners);
    keepComputed(mesh, *result, ofCorners);
    result->lockedNormals = lockedNormalsById(*result, ofCorners);
    return result;
}

} // namespace

std::shared_ptr<const MeshData> lockNormals(const MeshData& mesh,
                                            std::span<const GivenNormal> given)
{
    std::vector<Vec3f> locked = lockedNormalsOfCorners(mesh);
    locked.resize(mesh.topology->corners.size(), kNotLocked);
    forGivenCorners(*mesh.topology, given, [&locked](std::uint32_t corner, const Vec3f& normal) {
        locked[corner] = isLockedNormal(normal) ? normal : kNotLocked;
    });
    return withLocked(mesh, std::move(locked));
}

std::shared_ptr<const MeshData> addNormals(const MeshData& mesh, std::span<const GivenNormal> given)
{
    std::vector<Vec3f> locked = lockedNormalsOfCorners(mesh);
    locked.resize(mesh.topology->corners.size(), kNotLocked);
    const std::vector<Vec3f> before = normalsOfCorners(mesh);
    forGivenCorners(*mesh.topology, given, [&](std::uint32_t corner, const Vec3f& normal) {
        if (isLockedNormal(normal)) {
            const Vec3d sum = toDouble(before[corner]) + toDouble(normal);
            locked[corner] = toFloat(normalized(sum));
        }
    });
    return withLocked(mesh, std::move(locked));
}

} // namespace host::geometry
