#include "host/geometry/mesh/edit/joinVertices.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/deleteFaces.h"

#include <algorithm>
#include <numeric>

namespace host::geometry {
namespace {

constexpr std::size_t kLeastCorners = 3;

struct KeptCorner {
    std::int32_t reference = 0;
    std::uint32_t source = 0;
};

class VertexJoiner {
public:
    VertexJoiner(const MeshData& mesh, const VertexJoin& join);

    std::shared_ptr<const MeshData> run();

private:
    struct Pair {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::uint32_t edge = 0;
    };

    void moveEdges();
    void joinEdges();
    void writeFace(std::uint32_t face);
    void takeLoop(std::uint32_t loop);
    void removeWaysBack();

    const MeshTopology& m_topology;
    const VertexJoin& m_join;
    std::vector<bool> m_isJoined;      ///< vertices that others become
    std::vector<std::uint32_t> m_edge; ///< what each edge becomes; kNone: it goes
    MeshRewriter m_rewriter;
    std::vector<KeptCorner> m_loop;
};

VertexJoiner::VertexJoiner(const MeshData& mesh, const VertexJoin& join)
    : m_topology(*mesh.topology)
    , m_join(join)
    , m_isJoined(m_topology.vertexCount)
    , m_edge(m_topology.edges.size())
    , m_rewriter(mesh)
{
    m_rewriter.points() = join.points;
    for (std::uint32_t vertex = 0; vertex < m_isJoined.size(); ++vertex) {
        if (join.target[vertex] != vertex) {
            m_isJoined[join.target[vertex]] = true;
        }
    }
    std::iota(m_edge.begin(), m_edge.end(), 0U);
    moveEdges();
    joinEdges();
}

void VertexJoiner::moveEdges()
{
    for (std::uint32_t edge = 0; edge < m_edge.size(); ++edge) {
        const MeshEdge& before = m_topology.edges[edge];
        const MeshEdge moved{m_join.target[before.start], m_join.target[before.end]};
        m_rewriter.edges()[edge] = moved;
        if (moved.start == moved.end && before.start != before.end) {
            m_edge[edge] = kNone;
        }
    }
}

void VertexJoiner::joinEdges()
{
    std::vector<Pair> pairs;
    const std::vector<MeshEdge>& edges = m_rewriter.edges();
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        const auto [start, end] = edges[edge];
        if (m_edge[edge] != kNone && (m_isJoined[start] || m_isJoined[end])) {
            pairs.push_back({std::min(start, end), std::max(start, end), edge});
        }
    }
    std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
        return a.low != b.low     ? a.low < b.low
               : a.high != b.high ? a.high < b.high
                                  : a.edge < b.edge;
    });
    for (std::size_t i = 1; i < pairs.size(); ++i) {
        if (pairs[i].low == pairs[i - 1].low && pairs[i].high == pairs[i - 1].high) {
            m_edge[pairs[i].edge] = m_edge[pairs[i - 1].edge];
        }
    }
}

/// The corners of a loop that stay, along the edges that theirs become.
void VertexJoiner::takeLoop(std::uint32_t loop)
{
    m_loop.clear();
    for (std::uint32_t corner = m_topology.loopStart[loop]; corner < m_topology.loopStart[loop + 1];
         ++corner) {
        const std::int32_t reference = m_topology.corners[corner];
        const std::uint32_t edge = m_edge[edgeOf(reference)];
        if (edge == kNone) {
            continue;
        }
        const std::uint32_t start = m_join.target[m_topology.cornerVertex(corner)];
        const MeshEdge& moved = m_rewriter.edges()[edge];
        const bool isBackwards = moved.start == moved.end ? reference < 0 : moved.start != start;
        m_loop.push_back({referenceTo(edge, isBackwards), corner});
    }
    removeWaysBack();
}

/// Takes out each corner pair that walks an edge and then the same edge back, the last and the
/// first corner included.
void VertexJoiner::removeWaysBack()
{
    std::size_t kept = 0;
    for (const KeptCorner& corner : m_loop) {
        if (kept > 0 && m_loop[kept - 1].reference == reversed(corner.reference)) {
            --kept;
        } else {
            m_loop[kept++] = corner;
        }
    }
    std::size_t first = 0;
    while (kept - first >= 2 && m_loop[first].reference == reversed(m_loop[kept - 1].reference)) {
        ++first;
        --kept;
    }
    m_loop.resize(kept);
    m_loop.erase(m_loop.begin(), m_loop.begin() + static_cast<std::ptrdiff_t>(first));
}

void VertexJoiner::writeFace(std::uint32_t face)
{
    const std::uint32_t outer = m_topology.firstLoop(face);
    takeLoop(outer);
    if (m_loop.size() < kLeastCorners) {
        return;
    }
    m_rewriter.beginFace(face);
    for (std::uint32_t loop = outer; loop < m_topology.firstLoop(face + 1); ++loop) {
        if (loop != outer) {
            takeLoop(loop);
        }
        if (m_loop.size() < kLeastCorners) {
            continue;
        }
        for (const KeptCorner& corner : m_loop) {
            m_rewriter.addCorner(corner.reference, corner.source);
        }
        m_rewriter.endLoop();
    }
    m_rewriter.endFace();
}

std::shared_ptr<const MeshData> VertexJoiner::run()
{
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        writeFace(face);
    }
    return m_rewriter.finish(kCleanAll);
}

} // namespace

VertexJoin unjoined(const MeshData& mesh)
{
    VertexJoin join;
    join.target.resize(mesh.topology->vertexCount);
    std::iota(join.target.begin(), join.target.end(), 0U);
    join.points = *mesh.points;
    return join;
}

std::shared_ptr<const MeshData> joinVertices(const MeshData& mesh, const VertexJoin& join)
{
    return VertexJoiner(mesh, join).run();
}

} // namespace host::geometry
