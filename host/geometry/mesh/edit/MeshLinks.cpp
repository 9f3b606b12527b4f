#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>

namespace host::geometry {

CornerLinks::CornerLinks(const MeshTopology& topology)
    : m_loop(topology.corners.size()), m_loopStart(topology.loopStart)
{
    for (std::uint32_t loop = 0; loop < topology.loopCount(); ++loop) {
        std::fill(m_loop.begin() + m_loopStart[loop], m_loop.begin() + m_loopStart[loop + 1], loop);
    }
    if (topology.faceLoop.empty()) {
        return;
    }
    m_faceOfLoop.resize(topology.loopCount());
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        std::fill(m_faceOfLoop.begin() + topology.firstLoop(face),
                  m_faceOfLoop.begin() + topology.firstLoop(face + 1), face);
    }
}

NumberLists cornersOfEdges(const MeshTopology& topology)
{
    return {static_cast<std::uint32_t>(topology.corners.size()),
            static_cast<std::uint32_t>(topology.edges.size()),
            [corners = topology.corners.data()](std::uint32_t corner) {
                return edgeOf(corners[corner]);
            }};
}

NumberLists cornersOfVertices(const MeshTopology& topology)
{
    return {static_cast<std::uint32_t>(topology.corners.size()), topology.vertexCount,
            [&topology](std::uint32_t corner) { return topology.cornerVertex(corner); }};
}

NumberLists edgesOfVertices(const MeshTopology& topology)
{
    // An edge owns two places, one for each of its ends.
    NumberLists places(static_cast<std::uint32_t>(2 * topology.edges.size()), topology.vertexCount,
                       [edges = topology.edges.data()](std::uint32_t place) {
                           const MeshEdge& edge = edges[place / 2];
                           return place % 2 == 0 ? edge.start : edge.end;
                       });
    places.halve();
    return places;
}

} // namespace host::geometry
