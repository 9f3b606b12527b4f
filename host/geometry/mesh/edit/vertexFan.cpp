#include "host/geometry/mesh/edit/vertexFan.h"

#include <algorithm>

namespace host::geometry {
namespace {

constexpr std::uint32_t kSeveral = kNone - 1;

std::size_t placeOf(std::int32_t reference)
{
    return 2 * std::size_t{edgeOf(reference)} + (reference < 0 ? 1 : 0);
}

} // namespace

VertexFans::VertexFans(const MeshTopology& topology, const CornerLinks& links)
    : m_topology(topology), m_links(links), m_cornerAlong(2 * topology.edges.size(), kNone)
{
    for (std::uint32_t corner = 0; corner < topology.corners.size(); ++corner) {
        std::uint32_t& known = m_cornerAlong[placeOf(topology.corners[corner])];
        known = known == kNone ? corner : kSeveral;
    }
}

/// True when no two faces walk the same edge the same way.
bool VertexFans::areSingle(std::uint32_t vertex, std::span<const std::uint32_t> corners) const
{
    return std::all_of(corners.begin(), corners.end(), [&](std::uint32_t corner) {
        const std::uint32_t previous = m_links.previous(corner);
        const MeshEdge& ends = m_topology.edges[edgeOf(m_topology.corners[corner])];
        return m_cornerAlong[placeOf(m_topology.corners[corner])] == corner &&
               m_cornerAlong[placeOf(m_topology.corners[previous])] == previous &&
               (ends.start != vertex || ends.end != vertex);
    });
}

std::uint32_t VertexFans::firstEdge(std::span<const std::uint32_t> corners) const
{
    std::uint32_t first = kNone;
    std::uint32_t highest = 0;
    for (const std::uint32_t corner : corners) {
        const std::int32_t out = m_topology.corners[corner];
        const std::uint32_t in = edgeOf(m_topology.corners[m_links.previous(corner)]);
        highest = std::max({highest, edgeOf(out), in});
        if (m_cornerAlong[placeOf(reversed(out))] == kNone) { // no face arrives along it
            first = edgeOf(out);
        }
    }
    return first != kNone ? first : highest;
}

bool VertexFans::find(std::uint32_t vertex, std::span<const std::uint32_t> corners,
                      VertexFan& fan) const
{
    fan.edges.clear();
    fan.corners.clear();
    if (corners.empty() || !areSingle(vertex, corners)) {
        return false;
    }
    // Counter-clockwise a face leads from the edge that leaves the vertex to the one that arrives.
    const std::uint32_t first = firstEdge(corners);
    std::uint32_t edge = first;
    do {
        fan.edges.push_back(edge);
        const bool isBackwards = m_topology.edges[edge].start != vertex;
        const std::uint32_t corner = m_cornerAlong[placeOf(referenceTo(edge, isBackwards))];
        if (corner >= kSeveral) {
            break;
        }
        fan.corners.push_back(corner);
        edge = edgeOf(m_topology.corners[m_links.previous(corner)]);
    } while (edge != first && fan.corners.size() <= corners.size());
    return fan.corners.size() == corners.size();
}

} // namespace host::geometry
