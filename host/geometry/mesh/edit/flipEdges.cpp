#include "host/geometry/mesh/edit/flipEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <array>

namespace host::geometry {
namespace {

constexpr std::uint32_t kTriangle = 3;

/// A corner of a turned triangle: the edge that leaves, and the corner whose texture it has.
struct TurnedCorner {
    std::int32_t reference = 0;
    std::uint32_t source = 0;
};
using TurnedTriangle = std::array<TurnedCorner, kTriangle>;

} // namespace

std::shared_ptr<const MeshData> flipEdges(const MeshData& mesh,
                                          std::span<const std::uint32_t> edges)
{
    const MeshTopology& topology = *mesh.topology;
    const CornerLinks links(topology);
    const NumberLists sides = cornersOfEdges(topology);
    MeshRewriter rewriter(mesh);
    std::vector<std::uint32_t> turnedOf(topology.faceCount(), kNone);
    std::vector<TurnedTriangle> turned;
    const auto isFree = [&](std::uint32_t face) {
        return turnedOf[face] == kNone &&
               topology.endCorner(face) - topology.firstCorner(face) == kTriangle;
    };
    for (const std::uint32_t edge : edges) {
        if (edge >= topology.edges.size() || sides.of(edge).size() != 2) {
            return nullptr;
        }
        const bool isFirstForward = topology.corners[sides.of(edge)[0]] >= 0;
        const std::uint32_t ab = sides.of(edge)[isFirstForward ? 0 : 1]; // at a
        const std::uint32_t ba = sides.of(edge)[isFirstForward ? 1 : 0]; // at b
        if (topology.corners[ba] >= 0 || topology.corners[ab] < 0 || !isFree(links.face(ab)) ||
            !isFree(links.face(ba)) || links.face(ab) == links.face(ba)) {
            return nullptr;
        }
        const std::uint32_t c = links.previous(ab);
        const std::uint32_t d = links.previous(ba);
        const std::uint32_t bc = links.next(ab);
        const std::uint32_t ad = links.next(ba);
        rewriter.edges()[edge] = {topology.cornerVertex(d), topology.cornerVertex(c)};
        const std::int32_t dc = referenceTo(edge, false);
        turnedOf[links.face(ab)] = static_cast<std::uint32_t>(turned.size());
        turned.push_back({{{dc, d}, {topology.corners[c], c}, {topology.corners[ad], ab}}});
        turnedOf[links.face(ba)] = static_cast<std::uint32_t>(turned.size());
        turned.push_back(
            {{{reversed(dc), c}, {topology.corners[d], d}, {topology.corners[bc], ba}}});
    }
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        if (turnedOf[face] == kNone) {
            rewriter.copyFace(face);
            continue;
        }
        rewriter.beginFace(face);
        for (const TurnedCorner& corner : turned[turnedOf[face]]) {
            rewriter.addCorner(corner.reference, corner.source);
        }
        rewriter.endFace();
    }
    return rewriter.finish();
}

} // namespace host::geometry
