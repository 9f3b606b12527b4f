#include "host/geometry/mesh/edit/vertexFan.h"

#include <algorithm>
#include <unordered_map>

namespace host::geometry {

std::optional<VertexFan> fanOf(const MeshTopology& topology, const CornerLinks& links,
                               std::span<const std::uint32_t> corners)
{
    // Counter-clockwise a face leads from the edge that leaves the vertex to the one that arrives.
    std::unordered_map<std::uint32_t, std::uint32_t> leaving;
    std::unordered_map<std::uint32_t, std::uint32_t> arriving;
    std::uint32_t highest = 0;
    for (const std::uint32_t corner : corners) {
        const std::uint32_t out = edgeOf(topology.corners[corner]);
        const std::uint32_t in = edgeOf(topology.corners[links.previous(corner)]);
        if (!leaving.emplace(out, corner).second || !arriving.emplace(in, corner).second) {
            return std::nullopt;
        }
        highest = std::max({highest, out, in});
    }
    if (corners.empty()) {
        return std::nullopt;
    }
    std::uint32_t first = highest;
    for (const auto& [edge, corner] : leaving) {
        first = arriving.count(edge) == 0 ? edge : first;
    }
    VertexFan fan;
    std::uint32_t edge = first;
    do {
        fan.edges.push_back(edge);
        const auto found = leaving.find(edge);
        if (found == leaving.end()) {
            break;
        }
        fan.corners.push_back(found->second);
        edge = edgeOf(topology.corners[links.previous(found->second)]);
    } while (edge != first && fan.corners.size() <= corners.size());
    return fan.corners.size() == corners.size() ? std::optional(std::move(fan)) : std::nullopt;
}

} // namespace host::geometry
