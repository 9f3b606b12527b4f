#include "host/geometry/mesh/edit/detachEdges.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <vector>

namespace host::geometry {
namespace {

class Detacher {
public:
    explicit Detacher(const MeshData& mesh)
        : m_topology(*mesh.topology)
        , m_rewriter(mesh)
        , m_links(m_topology)
        , m_cornersOf(cornersOfEdges(m_topology))
        , m_isCut(m_topology.edges.size())
        , m_groups(m_topology.corners.size())
        , m_points(m_topology.corners.size())
        , m_references(m_topology.corners)
    {
    }

    void cut(std::uint32_t edge) { m_isCut[edge] = true; }

    std::shared_ptr<const MeshData> run()
    {
        joinCorners();
        placeCorners();
        placeEdges();
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            writeFace(face);
        }
        return m_rewriter.finish();
    }

private:
    /// The corners at which an edge starts and ends, as it is numbered, in the face of one of its
    /// corners.
    std::pair<std::uint32_t, std::uint32_t> endsAt(std::uint32_t corner) const
    {
        const std::uint32_t next = m_links.next(corner);
        return m_topology.corners[corner] >= 0 ? std::pair(corner, next) : std::pair(next, corner);
    }

    void joinCorners()
    {
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            const auto corners = m_cornersOf.of(edge);
            for (std::size_t i = 1; !m_isCut[edge] && i < corners.size(); ++i) {
                const auto [start, end] = endsAt(corners[0]);
                const auto [otherStart, otherEnd] = endsAt(corners[i]);
                m_groups.join(start, otherStart);
                m_groups.join(end, otherEnd);
            }
        }
    }

    void placeCorners()
    {
        const NumberLists corners = cornersOfVertices(m_topology);
        std::vector<std::uint32_t> pointOfGroup(m_topology.corners.size(), kNone);
        for (std::uint32_t vertex = 0; vertex < m_topology.vertexCount; ++vertex) {
            bool isTaken = false;
            for (const std::uint32_t corner : corners.of(vertex)) {
                std::uint32_t& point = pointOfGroup[m_groups.lowest(corner)];
                if (point == kNone) {
                    const Vec3f place = m_rewriter.points()[vertex];
                    point = isTaken ? m_rewriter.addPoint(place, vertex) : vertex;
                    isTaken = true;
                }
                m_points[corner] = point;
            }
        }
    }

    void placeEdges()
    {
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            const auto corners = m_cornersOf.of(edge);
            for (std::size_t i = 0; i < corners.size(); ++i) {
                const auto [start, end] = endsAt(corners[i]);
                std::uint32_t number = edge;
                if (i == 0) {
                    m_rewriter.edges()[edge] = {m_points[start], m_points[end]};
                } else if (m_isCut[edge]) {
                    const bool isSmooth = m_rewriter.before().isSmooth(edge);
                    number = m_rewriter.addEdge(m_points[start], m_points[end], isSmooth, edge);
                }
                m_references[corners[i]] = referenceTo(number, m_topology.corners[corners[i]] < 0);
            }
        }
    }

    void writeFace(std::uint32_t face)
    {
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                m_rewriter.addCorner(m_references[corner], corner);
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }

    const MeshTopology& m_topology;
    MeshRewriter m_rewriter;
    CornerLinks m_links;
    NumberLists m_cornersOf;
    std::vector<bool> m_isCut;
    DisjointSets m_groups;
    std::vector<std::uint32_t> m_points;    ///< by corner
    std::vector<std::int32_t> m_references; ///< by corner
};

} // namespace

std::shared_ptr<const MeshData> detachEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges)
{
    Detacher detacher(mesh);
    for (const std::uint32_t edge : edges) {
        detacher.cut(edge);
    }
    return detacher.run();
}

std::shared_ptr<const MeshData> detachVertices(const MeshData& mesh,
                                               std::span<const std::uint32_t> vertices)
{
    Detacher detacher(mesh);
    const NumberLists edges = edgesOfVertices(*mesh.topology);
    for (const std::uint32_t vertex : vertices) {
        for (const std::uint32_t edge : edges.of(vertex)) {
            detacher.cut(edge);
        }
    }
    return detacher.run();
}

} // namespace host::geometry
