#include "host/geometry/mesh/edit/MeshLinks.h"

namespace host::geometry {

CornerLinks::CornerLinks(const MeshTopology& topology)
    : m_face(topology.corners.size())
    , m_next(topology.corners.size())
    , m_previous(topology.corners.size())
{
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
             ++loop) {
            const std::uint32_t first = topology.loopStart[loop];
            const std::uint32_t end = topology.loopStart[loop + 1];
            for (std::uint32_t corner = first; corner < end; ++corner) {
                m_face[corner] = face;
                m_next[corner] = corner + 1 < end ? corner + 1 : first;
                m_previous[corner] = corner > first ? corner - 1 : end - 1;
            }
        }
    }
}

NumberLists::NumberLists(std::span<const std::uint32_t> owners, std::uint32_t ownerCount)
    : m_start(std::size_t{ownerCount} + 1)
{
    for (const std::uint32_t owner : owners) {
        if (owner < ownerCount) {
            ++m_start[owner + 1];
        }
    }
    for (std::uint32_t owner = 0; owner < ownerCount; ++owner) {
        m_start[owner + 1] += m_start[owner];
    }
    m_numbers.resize(m_start[ownerCount]);
    std::vector<std::uint32_t> fill(m_start.begin(), m_start.end() - 1);
    for (std::size_t number = 0; number < owners.size(); ++number) {
        if (owners[number] < ownerCount) {
            m_numbers[fill[owners[number]]++] = static_cast<std::uint32_t>(number);
        }
    }
}

NumberLists cornersOfEdges(const MeshTopology& topology)
{
    std::vector<std::uint32_t> owners;
    owners.reserve(topology.corners.size());
    for (const std::int32_t reference : topology.corners) {
        owners.push_back(edgeOf(reference));
    }
    return {owners, static_cast<std::uint32_t>(topology.edges.size())};
}

NumberLists cornersOfVertices(const MeshTopology& topology)
{
    std::vector<std::uint32_t> owners(topology.corners.size());
    for (std::size_t corner = 0; corner < owners.size(); ++corner) {
        owners[corner] = topology.cornerVertex(static_cast<std::uint32_t>(corner));
    }
    return {owners, topology.vertexCount};
}

NumberLists edgesOfVertices(const MeshTopology& topology)
{
    // An edge owns two places, one for each of its ends.
    std::vector<std::uint32_t> owners;
    owners.reserve(topology.edges.size() * 2);
    for (const MeshEdge& edge : topology.edges) {
        owners.push_back(edge.start);
        owners.push_back(edge.end);
    }
    NumberLists places(owners, topology.vertexCount);
    places.halve();
    return places;
}

} // namespace host::geometry
