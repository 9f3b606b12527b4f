#include "host/geometry/mesh/edit/BorderWalker.h"

namespace host::geometry {

BorderWalker::BorderWalker(const MeshTopology& topology)
    : m_topology(topology), m_links(topology), m_corners(cornersOfEdges(topology))
{
}

std::uint32_t BorderWalker::cornerOf(std::uint32_t edge) const
{
    const auto corners = m_corners.of(edge);
    return corners.size() == 1 ? corners.front() : kNone;
}

/// Turns about the vertex from face to face. Crossing edges of two faces that walk them in opposite
/// ways is reversible, so that this ends before it meets the edge from which it came.
std::uint32_t BorderWalker::after(std::uint32_t corner) const
{
    std::uint32_t next = m_links.next(corner);
    for (;;) {
        const auto sides = m_corners.of(edgeOf(m_topology.corners[next]));
        if (sides.size() == 1) {
            return next;
        }
        if (sides.size() != 2 ||
            (m_topology.corners[sides[0]] < 0) == (m_topology.corners[sides[1]] < 0)) {
            return kNone;
        }
        next = m_links.next(sides[0] == next ? sides[1] : sides[0]);
    }
}

/// Each corner has one that follows and follows one: a border that meets a marked corner other than
/// its first is no closed one.
std::vector<std::uint32_t> BorderWalker::borderFrom(std::uint32_t corner,
                                                    std::vector<bool>& isFollowed) const
{
    std::vector<std::uint32_t> border;
    std::uint32_t next = corner;
    while (next != kNone && !isFollowed[next]) {
        isFollowed[next] = true;
        border.push_back(next);
        next = after(next);
    }
    return next == corner ? border : std::vector<std::uint32_t>();
}

} // namespace host::geometry
