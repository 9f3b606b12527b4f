#include "host/geometry/mesh/edit/extrudeEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/edgeSmoothness.h"
#include "host/geometry/mesh/edit/extrudeFaces.h"

namespace host::geometry {
namespace {

/// A vertex that was made anew, one point and one upright for each layer.
struct Copy {
    std::uint32_t source = 0;
    std::uint32_t firstPoint = 0;
    std::uint32_t firstUpright = 0;
    Vec3d sum;
    std::uint32_t uses = 0;
};

struct Wall {
    std::uint32_t corner = 0; ///< at which the first face leaves along the edge
    std::uint32_t here = 0;   ///< copy of the vertex at the corner
    std::uint32_t there = 0;  ///< of the next one
    std::uint32_t firstRail = 0;
};

class EdgeExtruder {
public:
    EdgeExtruder(const MeshData& mesh, const EdgeExtrusion& extrusion)
        : m_topology(*mesh.topology)
        , m_extrusion(extrusion)
        , m_layers(extrusion.divisions)
        , m_rewriter(mesh)
        , m_links(m_topology)
        , m_vertexCopy(m_topology.vertexCount, kNone)
        , m_uvCopies(mesh.uvSets.size())
        , m_uvIds(mesh.uvSets.size())
    {
    }

    std::shared_ptr<const MeshData> run(std::span<const std::uint32_t> edges)
    {
        if (edges.size() * std::size_t{m_layers} > kMaxExtrudedFaces) {
            return nullptr;
        }
        const NumberLists corners = cornersOfEdges(m_topology);
        for (const std::uint32_t edge : edges) {
            if (!corners.of(edge).empty()) {
                copyEdge(edge, corners.of(edge).front());
            }
        }
        placePoints();
        m_rewriter.copyFaces(0, m_topology.faceCount());
        for (const Wall& wall : m_walls) {
            writeWall(wall);
        }
        return withSmoothEdges(m_rewriter.finish(), m_extrusion.smoothingAngle);
    }

private:
    void copyEdge(std::uint32_t edge, std::uint32_t corner)
    {
        const MeshEdge ends = m_topology.edges[edge];
        const std::uint32_t start = copyVertex(ends.start);
        const std::uint32_t end = copyVertex(ends.end);
        const auto firstRail = static_cast<std::uint32_t>(m_rewriter.edges().size());
        for (std::uint32_t layer = 0; layer < m_layers; ++layer) {
            markSmoothByAngle(m_rewriter,
                              m_rewriter.addEdge(m_copies[start].firstPoint + layer,
                                                 m_copies[end].firstPoint + layer, false));
        }
        markSmoothByAngle(m_rewriter, edge);
        const bool isForward = m_topology.corners[corner] >= 0;
        m_walls.push_back({corner, isForward ? start : end, isForward ? end : start, firstRail});
        if (!m_extrusion.isTogether) {
            m_vertexCopy[ends.start] = kNone;
            m_vertexCopy[ends.end] = kNone;
        }
    }

    std::uint32_t copyVertex(std::uint32_t vertex)
    {
        if (m_vertexCopy[vertex] == kNone) {
            Copy copy;
            copy.source = vertex;
            copy.firstPoint = static_cast<std::uint32_t>(m_rewriter.points().size());
            copy.firstUpright = static_cast<std::uint32_t>(m_rewriter.edges().size());
            std::uint32_t below = vertex;
            for (std::uint32_t layer = 0; layer < m_layers; ++layer) {
                const std::uint32_t point = m_rewriter.addPoint({});
                markSmoothByAngle(m_rewriter, m_rewriter.addEdge(below, point, false));
                below = point;
            }
            m_vertexCopy[vertex] = static_cast<std::uint32_t>(m_copies.size());
            m_copies.push_back(copy);
        }
        return m_vertexCopy[vertex];
    }

    void placePoints()
    {
        const ComponentMotion& motion = m_extrusion.motion;
        m_points = pointsInSpace(m_rewriter.before(), motion.toSpace);
        const Matrix4 back = inverse(motion.toSpace);
        for (std::uint32_t layer = 1; layer <= m_layers && !m_rewriter.isFull(); ++layer) {
            const ComponentMover mover(
                layer == m_layers ? motion
                                  : atFraction(motion, static_cast<double>(layer) / m_layers));
            for (Copy& copy : m_copies) {
                copy.sum = {};
                copy.uses = 0;
            }
            for (const Wall& wall : m_walls) {
                const LocalFrame frame = frameOf(wall);
                for (const std::uint32_t number : {wall.here, wall.there}) {
                    Copy& copy = m_copies[number];
                    const Vec3d& place = m_points[copy.source];
                    copy.sum = copy.sum + mover.placed(frame, mover.scaled(frame, place));
                    ++copy.uses;
                }
            }
            for (const Copy& copy : m_copies) {
                const Vec3d place = mover.moved(copy.sum * (1.0 / copy.uses));
                m_rewriter.points()[copy.firstPoint + layer - 1] =
                    toFloat(transformPoint(place, back));
            }
        }
    }

    LocalFrame frameOf(const Wall& wall) const
    {
        const Vec3d& here = m_points[m_copies[wall.here].source];
        const Vec3d& there = m_points[m_copies[wall.there].source];
        return frameAlong((here + there) * 0.5,
                          faceNormal(m_topology, m_points, m_links.face(wall.corner)),
                          there - here);
    }

    void writeWall(const Wall& wall)
    {
        const std::uint32_t next = m_links.next(wall.corner);
        const std::int32_t reference = m_topology.corners[wall.corner];
        const Copy& here = m_copies[wall.here];
        const Copy& there = m_copies[wall.there];
        for (std::uint32_t layer = 0; layer < m_layers; ++layer) {
            const std::int32_t bottom =
                layer == 0 ? reversed(reference)
                           : referenceTo(wall.firstRail + layer - 1, reference >= 0);
            m_rewriter.beginFace(m_links.face(wall.corner));
            addCorner(bottom, next, wall.there, layer);
            addCorner(referenceTo(here.firstUpright + layer, false), wall.corner, wall.here, layer);
            addCorner(referenceTo(wall.firstRail + layer, reference < 0), wall.corner, wall.here,
                      layer + 1);
            addCorner(referenceTo(there.firstUpright + layer, true), next, wall.there, layer + 1);
            m_rewriter.endFace();
        }
    }

    void addCorner(std::int32_t reference, std::uint32_t uvCorner, std::uint32_t copy,
                   std::uint32_t layer)
    {
        for (std::size_t set = 0; set < m_uvIds.size(); ++set) {
            m_uvIds[set] = uvOf(set, uvCorner, copy, layer);
        }
        m_rewriter.addCorner(reference, m_uvIds);
    }

    /// The uv id over a corner in a layer; one run of ids for each copied vertex.
    std::int32_t uvOf(std::size_t set, std::uint32_t corner, std::uint32_t copy,
                      std::uint32_t layer)
    {
        const std::int32_t id = m_rewriter.uvId(set, corner);
        if (id < 0 || layer == 0) {
            return id;
        }
        std::vector<std::int32_t>& first = m_uvCopies[set];
        first.resize(m_copies.size(), -1);
        if (first[copy] < 0) {
            first[copy] = static_cast<std::int32_t>(m_rewriter.uvPoints(set).size());
            const Vec2f place = m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
            for (std::uint32_t made = 0; made < m_layers; ++made) {
                m_rewriter.addUv(set, place);
            }
        }
        return first[copy] + static_cast<std::int32_t>(layer) - 1;
    }

    const MeshTopology& m_topology;
    const EdgeExtrusion& m_extrusion;
    std::uint32_t m_layers = 1;
    MeshRewriter m_rewriter;
    CornerLinks m_links;
    std::vector<std::uint32_t> m_vertexCopy;
    std::vector<Copy> m_copies;
    std::vector<Wall> m_walls;
    std::vector<Vec3d> m_points;
    std::vector<std::vector<std::int32_t>> m_uvCopies; ///< first id, of each set and copy
    std::vector<std::int32_t> m_uvIds;
};

} // namespace

std::shared_ptr<const MeshData> extrudeEdges(const MeshData& mesh,
                                             std::span<const std::uint32_t> edges,
                                             const EdgeExtrusion& extrusion)
{
    return EdgeExtruder(mesh, extrusion).run(edges);
}

} // namespace host::geometry
