#include "host/geometry/mesh/edit/dissolveVertices.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>

namespace host::geometry {
namespace {

constexpr std::uint32_t kLeastCorners = 3;

class VertexDissolver {
public:
    explicit VertexDissolver(const MeshData& mesh);

    void remove(std::uint32_t vertex);
    std::shared_ptr<const MeshData> write(const MeshRewriter::Cleaning& cleaning);

private:
    bool canLoopsShrink(std::uint32_t vertex) const;
    void writeCorner(std::uint32_t corner);

    const MeshTopology& m_topology;
    NumberLists m_cornersOfVertices;
    NumberLists m_edgesOfVertices;
    std::vector<bool> m_isUsed;            ///< edges that faces have
    std::vector<std::uint32_t> m_loop;     ///< of each corner
    std::vector<std::uint32_t> m_loopSize; ///< corners that are left
    std::vector<bool> m_isGone;            ///< vertices
    DisjointSets m_edgeNumbers;            ///< of edges that became one
    std::vector<MeshEdge> m_edges;
    MeshRewriter m_rewriter;
};

VertexDissolver::VertexDissolver(const MeshData& mesh)
    : m_topology(*mesh.topology)
    , m_cornersOfVertices(cornersOfVertices(m_topology))
    , m_edgesOfVertices(edgesOfVertices(m_topology))
    , m_isUsed(m_topology.edges.size())
    , m_loop(m_topology.corners.size())
    , m_loopSize(m_topology.loopCount())
    , m_isGone(m_topology.vertexCount)
    , m_edgeNumbers(m_topology.edges.size())
    , m_edges(m_topology.edges)
    , m_rewriter(mesh)
{
    for (const std::int32_t reference : m_topology.corners) {
        m_isUsed[edgeOf(reference)] = true;
    }
    for (std::uint32_t loop = 0; loop < m_loopSize.size(); ++loop) {
        m_loopSize[loop] = m_topology.loopStart[loop + 1] - m_topology.loopStart[loop];
        std::fill_n(m_loop.begin() + m_topology.loopStart[loop], m_loopSize[loop], loop);
    }
}

bool VertexDissolver::canLoopsShrink(std::uint32_t vertex) const
{
    const std::span<const std::uint32_t> corners = m_cornersOfVertices.of(vertex);
    return std::all_of(corners.begin(), corners.end(), [this](std::uint32_t corner) {
        return m_loopSize[m_loop[corner]] > kLeastCorners;
    });
}

void VertexDissolver::remove(std::uint32_t vertex)
{
    if (vertex >= m_isGone.size() || m_isGone[vertex]) {
        return;
    }
    std::uint32_t ends[2] = {kNone, kNone};
    std::size_t found = 0;
    for (const std::uint32_t edge : m_edgesOfVertices.of(vertex)) {
        if (m_isUsed[edge]) {
            if (found < 2) {
                ends[found] = m_edgeNumbers.lowest(edge);
            }
            ++found;
        }
    }
    if (found != 2 || ends[0] == ends[1] || !canLoopsShrink(vertex)) {
        return;
    }
    const std::uint32_t kept = std::min(ends[0], ends[1]);
    const MeshEdge other = m_edges[std::max(ends[0], ends[1])];
    const std::uint32_t far = other.start == vertex ? other.end : other.start;
    (m_edges[kept].start == vertex ? m_edges[kept].start : m_edges[kept].end) = far;
    m_edgeNumbers.join(ends[0], ends[1]);
    m_isGone[vertex] = true;
    for (const std::uint32_t corner : m_cornersOfVertices.of(vertex)) {
        --m_loopSize[m_loop[corner]];
    }
}

void VertexDissolver::writeCorner(std::uint32_t corner)
{
    const std::uint32_t vertex = m_topology.cornerVertex(corner);
    if (m_isGone[vertex]) {
        return;
    }
    const std::uint32_t edge = m_edgeNumbers.lowest(edgeOf(m_topology.corners[corner]));
    m_rewriter.addCorner(referenceTo(edge, m_edges[edge].start != vertex), corner);
}

std::shared_ptr<const MeshData> VertexDissolver::write(const MeshRewriter::Cleaning& cleaning)
{
    m_rewriter.edges() = m_edges;
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                writeCorner(corner);
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }
    return m_rewriter.finish(cleaning);
}

} // namespace

std::shared_ptr<const MeshData> dissolveVertices(const MeshData& mesh,
                                                 std::span<const std::uint32_t> vertices,
                                                 MeshRewriter::Cleaning cleaning)
{
    VertexDissolver dissolver(mesh);
    for (const std::uint32_t vertex : vertices) {
        dissolver.remove(vertex);
    }
    cleaning.edges = true;
    return dissolver.write(cleaning);
}

} // namespace host::geometry
