#include "host/geometry/mesh/edit/joinEdges.h"

#include "host/geometry/mesh/edit/BorderWalker.h"
#include "host/geometry/mesh/edit/clusterVertices.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// The vertices of an edge in the direction of the corner that leaves along it.
struct Walk {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
};

Walk walkOf(const MeshTopology& topology, std::uint32_t corner)
{
    const MeshEdge ends = topology.edges[edgeOf(topology.corners[corner])];
    return topology.corners[corner] >= 0 ? Walk{ends.start, ends.end} : Walk{ends.end, ends.start};
}

void joinAt(VertexJoin& join, const MeshData& mesh, std::uint32_t first, std::uint32_t second,
            EdgeMerging merging)
{
    const Vec3f a = (*mesh.points)[first];
    const Vec3f b = (*mesh.points)[second];
    const std::uint32_t kept = std::min(first, second);
    join.target[std::max(first, second)] = kept;
    join.points[kept] = merging == EdgeMerging::AtFirst ? a
                        : merging == EdgeMerging::AtSecond
                            ? b
                            : toFloat((toDouble(a) + toDouble(b)) * 0.5);
}

/// A border edge between clusters of vertices, the lower one first.
struct SewnEdge {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    bool isUpwards = false; ///< its face walks from low to high
    Walk walk;
};

/// Ends of edges that lie on each other and are walked in opposite ways, in pairs of one of each.
void joinOpposite(std::vector<SewnEdge>& sewn, DisjointSets& sets)
{
    std::stable_sort(sewn.begin(), sewn.end(), [](const SewnEdge& a, const SewnEdge& b) {
        return a.low != b.low     ? a.low < b.low
               : a.high != b.high ? a.high < b.high
                                  : a.isUpwards && !b.isUpwards;
    });
    for (std::size_t first = 0; first < sewn.size();) {
        std::size_t turn = first;
        std::size_t end = first;
        while (end < sewn.size() && sewn[end].low == sewn[first].low &&
               sewn[end].high == sewn[first].high) {
            turn += sewn[end].isUpwards ? 1 : 0;
            ++end;
        }
        for (std::size_t up = first, down = turn; up < turn && down < end; ++up, ++down) {
            sets.join(sewn[up].walk.from, sewn[down].walk.to);
            sets.join(sewn[up].walk.to, sewn[down].walk.from);
        }
        first = end;
    }
}

} // namespace

std::shared_ptr<const MeshData> mergeEdges(const MeshData& mesh, std::uint32_t first,
                                           std::uint32_t second, EdgeMerging merging)
{
    const std::size_t count = mesh.topology->edges.size();
    if (first >= count || second >= count || first == second) {
        return nullptr;
    }
    const BorderWalker walker(*mesh.topology);
    const std::uint32_t firstCorner = walker.cornerOf(first);
    const std::uint32_t secondCorner = walker.cornerOf(second);
    if (firstCorner == kNone || secondCorner == kNone) {
        return nullptr;
    }
    const Walk a = walkOf(*mesh.topology, firstCorner);
    const Walk b = walkOf(*mesh.topology, secondCorner);
    if (a.from == b.from || a.to == b.to) {
        return nullptr; // both leave the same vertex: the faces look to different sides
    }
    VertexJoin join = unjoined(mesh);
    if (a.from != b.to) {
        joinAt(join, mesh, a.from, b.to, merging);
    }
    if (a.to != b.from) {
        joinAt(join, mesh, a.to, b.from, merging);
    }
    return joinVertices(mesh, join);
}

std::shared_ptr<const MeshData> sewEdges(const MeshData& mesh, std::span<const std::uint32_t> edges,
                                         std::span<const Vec3d> places, double distance)
{
    const BorderWalker walker(*mesh.topology);
    std::vector<std::uint32_t> ends;
    std::vector<SewnEdge> sewn;
    for (const std::uint32_t edge : edges) {
        const std::uint32_t corner =
            edge < mesh.topology->edges.size() ? walker.cornerOf(edge) : kNone;
        if (corner != kNone) {
            sewn.push_back({0, 0, false, walkOf(*mesh.topology, corner)});
            ends.push_back(sewn.back().walk.from);
            ends.push_back(sewn.back().walk.to);
        }
    }
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    const VertexJoin near = joinWithin(mesh, ends, places, distance);
    for (SewnEdge& edge : sewn) {
        const std::uint32_t from = near.target[edge.walk.from];
        const std::uint32_t to = near.target[edge.walk.to];
        edge.low = std::min(from, to);
        edge.high = std::max(from, to);
        edge.isUpwards = from < to;
    }
    sewn.erase(std::remove_if(sewn.begin(), sewn.end(),
                              [](const SewnEdge& edge) { return edge.low == edge.high; }),
               sewn.end());
    DisjointSets sets(mesh.topology->vertexCount);
    joinOpposite(sewn, sets);
    return joinVertices(mesh, joinSets(mesh, sets));
}

std::shared_ptr<const MeshData> collapseEdges(const MeshData& mesh,
                                              std::span<const std::uint32_t> edges)
{
    DisjointSets sets(mesh.topology->vertexCount);
    for (const std::uint32_t edge : edges) {
        if (edge < mesh.topology->edges.size()) {
            sets.join(mesh.topology->edges[edge].start, mesh.topology->edges[edge].end);
        }
    }
    return joinVertices(mesh, joinSets(mesh, sets));
}

std::shared_ptr<const MeshData> collapseFaces(const MeshData& mesh,
                                              std::span<const std::uint32_t> faces)
{
    const MeshTopology& topology = *mesh.topology;
    DisjointSets sets(topology.vertexCount);
    for (const std::uint32_t face : faces) {
        if (face < topology.faceCount()) {
            const std::uint32_t first = topology.firstCorner(face);
            for (std::uint32_t corner = first; corner < topology.endCorner(face); ++corner) {
                sets.join(topology.cornerVertex(first), topology.cornerVertex(corner));
            }
        }
    }
    return joinVertices(mesh, joinSets(mesh, sets));
}

} // namespace host::geometry
