#include "host/geometry/mesh/edit/connectParts.h"

#include "host/geometry/mesh/edit/MeshCutter.h"

#include <vector>

namespace host::geometry {
namespace {

bool hasHoles(const MeshTopology& topology, std::uint32_t face)
{
    return topology.firstLoop(face + 1) - topology.firstLoop(face) != 1;
}

class Connector {
public:
    explicit Connector(const MeshData& mesh) : m_topology(*mesh.topology), m_cutter(mesh) {}

    Connected connectVertices(std::span<const std::uint32_t> vertices)
    {
        std::vector<bool> isNamed(m_topology.vertexCount);
        for (const std::uint32_t vertex : vertices) {
            isNamed[vertex] = true;
        }
        for (std::uint32_t face = 0; face < m_topology.faceCount() && !isFull(); ++face) {
            m_stops.clear();
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 !hasHoles(m_topology, face) && corner < m_topology.endCorner(face); ++corner) {
                const std::uint32_t vertex = m_topology.cornerVertex(corner);
                if (isNamed[vertex]) {
                    m_stops.push_back(vertex);
                }
            }
            cutAlong(face);
        }
        return finish();
    }

    Connected connectEdges(std::span<const std::uint32_t> edges)
    {
        std::vector<bool> isNamed(m_topology.edges.size());
        for (const std::uint32_t edge : edges) {
            isNamed[edge] = true;
        }
        m_middles.assign(m_topology.edges.size(), kNone);
        for (std::uint32_t face = 0; face < m_topology.faceCount() && !isFull(); ++face) {
            m_stops.clear();
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 corner < m_topology.endCorner(face) && !isFull(); ++corner) {
                const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
                if (isNamed[edge]) {
                    m_stops.push_back(middleOf(edge));
                }
            }
            if (!hasHoles(m_topology, face)) {
                cutAlong(face);
            }
        }
        return finish();
    }

private:
    bool isFull() { return m_cutter.rewriter().isFull(); }

    std::uint32_t middleOf(std::uint32_t edge)
    {
        if (m_middles[edge] == kNone) {
            m_middles[edge] = m_cutter.splitEdge(edge, .5);
        }
        return m_middles[edge];
    }

    /// From stop to stop; with more than two also from the last to the first. What lies beyond the
    /// first stop keeps the number of the face, and with it all stops that are left.
    void cutAlong(std::uint32_t face)
    {
        const std::size_t count = m_stops.size();
        if (count < 2) {
            return;
        }
        m_isExact = m_isExact && count == 2;
        for (std::size_t i = 0; i + (count == 2 ? 1 : 0) < count && !isFull(); ++i) {
            m_cutter.cutFace(face, m_stops[i], m_stops[(i + 1) % count]);
        }
    }

    Connected finish() { return {m_cutter.finish(0), m_isExact}; }

    const MeshTopology& m_topology;
    MeshCutter m_cutter;
    std::vector<std::uint32_t> m_middles; ///< by edge
    std::vector<std::uint32_t> m_stops;   ///< vertices of a face in its order
    bool m_isExact = true;
};

} // namespace

Connected connectVertices(const MeshData& mesh, std::span<const std::uint32_t> vertices)
{
    return Connector(mesh).connectVertices(vertices);
}

Connected connectEdges(const MeshData& mesh, std::span<const std::uint32_t> edges)
{
    return Connector(mesh).connectEdges(edges);
}

} // namespace host::geometry
