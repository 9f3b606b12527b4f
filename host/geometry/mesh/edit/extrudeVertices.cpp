#include "host/geometry/mesh/edit/extrudeVertices.h"

#include "host/geometry/mesh/edit/MeshCutter.h"
#include "host/geometry/mesh/edit/faceFrame.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// The widest part of an edge: up to its other end would leave nothing.
constexpr double kWidest = 0.999;

class VertexExtruder {
public:
    VertexExtruder(const MeshData& mesh, const VertexExtrusion& extrusion)
        : m_mesh(mesh)
        , m_topology(*mesh.topology)
        , m_extrusion(extrusion)
        , m_cutter(mesh)
        , m_edges(edgesOfVertices(m_topology))
        , m_corners(cornersOfVertices(m_topology))
        , m_links(m_topology)
        , m_width(std::clamp(extrusion.width, 1 - kWidest, kWidest))
    {
    }

    std::shared_ptr<const MeshData> run(std::span<const std::uint32_t> vertices)
    {
        m_points = pointsInSpace(m_mesh, m_extrusion.toSpace);
        m_current.assign(m_topology.edges.size(), {});
        for (std::uint32_t edge = 0; edge < m_current.size(); ++edge) {
            m_current[edge] = {edge, edge};
        }
        for (const std::uint32_t vertex : vertices) {
            draw(vertex);
        }
        const Matrix4 back = inverse(m_extrusion.toSpace);
        for (const std::uint32_t vertex : vertices) {
            const Vec3d place = m_points[vertex] + normalAt(vertex) * m_extrusion.length;
            m_cutter.rewriter().points()[vertex] = toFloat(transformPoint(place, back));
        }
        return m_cutter.finish(0);
    }

private:
    /// The pieces of an edge that lie at its start and at its end.
    struct EndPieces {
        std::uint32_t atStart = 0;
        std::uint32_t atEnd = 0;
    };

    void draw(std::uint32_t vertex)
    {
        for (const std::uint32_t edge : m_edges.of(vertex)) {
            splitNear(vertex, edge);
        }
        std::vector<std::uint32_t> corners(m_corners.of(vertex).begin(),
                                           m_corners.of(vertex).end());
        for (const std::uint32_t corner : corners) {
            cutOff(vertex, corner);
        }
    }

    void splitNear(std::uint32_t vertex, std::uint32_t edge)
    {
        EndPieces& pieces = m_current[edge];
        const bool isAtStart = m_topology.edges[edge].start == vertex;
        const std::uint32_t piece = isAtStart ? pieces.atStart : pieces.atEnd;
        const bool isWhole = pieces.atStart == pieces.atEnd;
        // The second split of an edge takes its part of the whole edge, as far as there is any.
        const double part = isWhole ? m_width : std::min(m_width / (1 - m_width), kWidest);
        m_cutter.splitEdge(piece, isAtStart ? part : 1 - part);
        if (!isAtStart || isWhole) {
            pieces.atEnd = m_cutter.lastEdge();
        }
    }

    /// The triangle of a face at the vertex.
    void cutOff(std::uint32_t vertex, std::uint32_t corner)
    {
        const std::uint32_t after = footOn(vertex, edgeOf(m_topology.corners[corner]));
        const std::uint32_t before =
            footOn(vertex, edgeOf(m_topology.corners[m_links.previous(corner)]));
        m_cutter.cutFace(m_links.face(corner), before, after);
    }

    std::uint32_t footOn(std::uint32_t vertex, std::uint32_t edge)
    {
        const bool isAtStart = m_topology.edges[edge].start == vertex;
        return isAtStart ? m_cutter.edge(m_current[edge].atStart).end
                         : m_cutter.edge(m_current[edge].atEnd).start;
    }

    /// The mean of the normals of the faces about a vertex.
    Vec3d normalAt(std::uint32_t vertex) const
    {
        Vec3d sum;
        for (const std::uint32_t corner : m_corners.of(vertex)) {
            sum = sum + faceNormal(m_topology, m_points, m_links.face(corner));
        }
        return normalized(sum);
    }

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    const VertexExtrusion& m_extrusion;
    MeshCutter m_cutter;
    NumberLists m_edges;
    NumberLists m_corners;
    CornerLinks m_links;
    double m_width = 0;
    std::vector<Vec3d> m_points;
    std::vector<EndPieces> m_current;
};

} // namespace

std::shared_ptr<const MeshData> extrudeVertices(const MeshData& mesh,
                                                std::span<const std::uint32_t> vertices,
                                                const VertexExtrusion& extrusion)
{
    return VertexExtruder(mesh, extrusion).run(vertices);
}

} // namespace host::geometry
