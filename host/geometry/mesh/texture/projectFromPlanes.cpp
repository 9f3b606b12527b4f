#include "host/geometry/mesh/texture/projectFromPlanes.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/geometry/mesh/texture/UvEditor.h"
#include "host/geometry/mesh/texture/projectionPlanes.h"
#include "host/math/rotation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace host::geometry {
namespace {

/// The points as the planes see them; what is no number is at the origin.
std::vector<Vec3d> pointsSeen(const MeshData& mesh, const PlanesProjection& projection)
{
    const Matrix4 toPlanes =
        projection.toSpace * inverse(eulerRotation(projection.rotate, RotationOrder::Xyz));
    const auto part = [](double size) {
        return size != 0 && std::isfinite(1 / size) ? 1 / size : 1;
    };
    const Vec3d scale{part(projection.scale.x), part(projection.scale.y), part(projection.scale.z)};
    std::vector<Vec3d> points = doublePoints(mesh);
    for (Vec3d& point : points) {
        const Vec3d seen = transformPoint(point, toPlanes);
        point = {seen.x * scale.x, seen.y * scale.y, seen.z * scale.z};
        if (!std::isfinite(point.x + point.y + point.z)) {
            point = {};
        }
    }
    return points;
}

/// Which faces go to which plane, and which of them hang together.
class Pieces {
public:
    Pieces(const MeshTopology& topology, std::span<const std::uint32_t> faces,
           std::span<const PolygonPlane> facePlanes, std::span<const ProjectionPlane> planes)
        : m_topology(topology)
        , m_faces(faces)
        , m_facePlanes(facePlanes)
        , m_planes(planes)
        , m_planeOf(topology.faceCount(), kNone)
        , m_sets(topology.faceCount())
    {
        for (const std::uint32_t face : faces) {
            m_planeOf[face] = bestPlane(facePlanes[face].normal);
        }
        findNeighbours();
        for (const auto& [face, beside] : m_neighbours) {
            if (m_planeOf[face] == m_planeOf[beside]) {
                m_sets.join(face, beside);
            }
        }
    }

    /// Gives small pieces to the large ones beside them, each at most once.
    void joinSmall()
    {
        constexpr double kSmallest = 0.1; // of the area of the piece that takes it
        const std::size_t count = m_planeOf.size();
        std::vector<double> areas(count);
        for (const std::uint32_t face : m_faces) {
            areas[m_sets.lowest(face)] += m_facePlanes[face].area;
        }
        std::vector<std::uint32_t> takers(count, kNone); // by the lowest face of a piece
        for (const auto& [face, beside] : m_neighbours) {
            offer(m_sets.lowest(face), m_sets.lowest(beside), areas, kSmallest, takers);
            offer(m_sets.lowest(beside), m_sets.lowest(face), areas, kSmallest, takers);
        }
        refuseSteep(takers);
        // A taker that is itself taken would lead on to a plane that was not asked: it stays.
        std::vector<std::uint32_t> pieceOf(count, kNone);
        for (const std::uint32_t face : m_faces) {
            pieceOf[face] = m_sets.lowest(face);
        }
        for (const std::uint32_t face : m_faces) {
            const std::uint32_t taker = takers[pieceOf[face]];
            if (taker != kNone && takers[taker] == kNone) {
                m_planeOf[face] = m_planeOf[taker];
                m_sets.join(face, taker);
            }
        }
    }

    /// The faces plane by plane, among those piece by piece, ascending.
    std::vector<std::uint32_t> faceOrder()
    {
        std::vector<std::uint32_t> order(m_faces.begin(), m_faces.end());
        std::vector<std::uint32_t> pieceOf(m_planeOf.size());
        for (const std::uint32_t face : m_faces) {
            pieceOf[face] = m_sets.lowest(face);
        }
        std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            return m_planeOf[a] != m_planeOf[b] ? m_planeOf[a] < m_planeOf[b]
                   : pieceOf[a] != pieceOf[b]   ? pieceOf[a] < pieceOf[b]
                                                : a < b;
        });
        return order;
    }
    std::uint32_t planeOf(std::uint32_t face) const { return m_planeOf[face]; }
    std::uint32_t pieceOf(std::uint32_t face) { return m_sets.lowest(face); }

private:
    std::uint32_t bestPlane(const Vec3d& normal) const
    {
        constexpr double kBetter = 1e-5; // by which a later plane must see a face better
        std::uint32_t best = 0;
        for (std::uint32_t plane = 1; plane < m_planes.size(); ++plane) {
            if (dot(normal, m_planes[plane].normal) >
                dot(normal, m_planes[best].normal) + kBetter) {
                best = plane;
            }
        }
        return best;
    }

    /// Pairs of mapped faces that follow each other along an edge.
    void findNeighbours()
    {
        const CornerLinks links(m_topology);
        const NumberLists sides = cornersOfEdges(m_topology);
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            std::uint32_t last = kNone;
            for (const std::uint32_t corner : sides.of(edge)) {
                const std::uint32_t face = links.face(corner);
                if (m_planeOf[face] == kNone) {
                    continue;
                }
                if (last != kNone && last != face) {
                    m_neighbours.push_back({last, face});
                }
                last = face;
            }
        }
    }

    static void offer(std::uint32_t piece, std::uint32_t taker, const std::vector<double>& areas,
                      double smallest, std::vector<std::uint32_t>& takers)
    {
        const bool isSmall = piece != taker && areas[piece] < smallest * areas[taker];
        if (isSmall && (takers[piece] == kNone || areas[taker] > areas[takers[piece]])) {
            takers[piece] = taker;
        }
    }

    /// No face may be seen from too far aside; those without area are seen from anywhere.
    void refuseSteep(std::vector<std::uint32_t>& takers)
    {
        constexpr double kLeastCosine = 0.5;
        for (const std::uint32_t face : m_faces) {
            std::uint32_t& taker = takers[m_sets.lowest(face)];
            const PolygonPlane& plane = m_facePlanes[face];
            if (taker != kNone && plane.area > 0 &&
                dot(plane.normal, m_planes[m_planeOf[taker]].normal) < kLeastCosine) {
                taker = kNone;
            }
        }
    }

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    std::span<const PolygonPlane> m_facePlanes;
    std::span<const ProjectionPlane> m_planes;
    std::vector<std::uint32_t> m_planeOf; ///< by face; kNone for those that are not mapped
    DisjointSets m_sets;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_neighbours;
};

/// New coordinates behind those of the other faces, and which piece each is of.
class Mapper {
public:
    Mapper(UvEditor& editor, std::span<const Vec3d> points)
        : m_editor(editor)
        , m_points(points)
        , m_idOf(points.size(), -1)
        , m_pieceOfVertex(points.size(), kNone)
        , m_pieceOfId(editor.points().size(), kNone)
    {
    }

    void map(std::uint32_t face, bool isNewPiece, const ProjectionPlane& plane)
    {
        m_pieceCount += isNewPiece ? 1 : 0;
        const MeshTopology& topology = m_editor.topology();
        const std::uint32_t end = topology.endCorner(face);
        for (std::uint32_t corner = topology.firstCorner(face); corner < end; ++corner) {
            const std::uint32_t vertex = topology.cornerVertex(corner);
            if (m_pieceOfVertex[vertex] != m_pieceCount) {
                m_pieceOfVertex[vertex] = m_pieceCount;
                m_idOf[vertex] =
                    m_editor.add({static_cast<float>(dot(m_points[vertex], plane.right)),
                                  static_cast<float>(dot(m_points[vertex], plane.up))});
                m_pieceOfId.push_back(m_pieceCount - 1);
            }
            m_editor.corners()[corner] = m_idOf[vertex];
        }
    }

    const std::vector<std::uint32_t>& pieceOfId() const { return m_pieceOfId; }
    std::uint32_t pieceCount() const { return m_pieceCount; }

private:
    UvEditor& m_editor;
    std::span<const Vec3d> m_points;
    std::vector<std::int32_t> m_idOf;
    std::vector<std::uint32_t> m_pieceOfVertex; ///< the count at which a vertex got its last id
    std::vector<std::uint32_t> m_pieceOfId;
    std::uint32_t m_pieceCount = 0;
};

/// What looks the other way takes the frame of the first of the two.
void mirrorOpposites(std::vector<ProjectionPlane>& planes)
{
    constexpr double kOpposite = -0.999;
    for (std::size_t plane = 1; plane < planes.size(); ++plane) {
        for (std::size_t first = 0; first < plane; ++first) {
            if (dot(planes[plane].normal, planes[first].normal) < kOpposite) {
                planes[plane].right = planes[first].right;
                planes[plane].up = planes[first].up;
            }
        }
    }
}

} // namespace

std::shared_ptr<const MeshData> projectFromPlanes(const MeshData& mesh, std::string_view setName,
                                                  std::span<const std::uint32_t> faces,
                                                  const PlanesProjection& projection)
{
    const MeshTopology& topology = *mesh.topology;
    std::vector<ProjectionPlane> planes = projectionPlanes(projection.planes);
    const std::vector<Vec3d> points = pointsSeen(mesh, projection);
    const std::vector<PolygonPlane> normals = facePlanes(topology, points);
    Pieces pieces(topology, faces, normals, planes);
    if (projection.joinsSmall) {
        pieces.joinSmall();
    }
    if (projection.mirrorsOpposites) {
        mirrorOpposites(planes);
    }

    const std::size_t set = findUvSet(mesh, setName).value_or(mesh.uvSets.size());
    UvEditor editor(mesh, set, setName.empty() ? kUsualUvSetName : setName);
    editor.clear(faces);
    editor.removeUnused();
    Mapper mapper(editor, points);
    std::uint32_t last = kNone;
    for (const std::uint32_t face : pieces.faceOrder()) {
        const std::uint32_t piece = pieces.pieceOf(face);
        mapper.map(face, piece != last, planes[pieces.planeOf(face)]);
        last = piece;
    }
    layOut(editor.points(), mapper.pieceOfId(), mapper.pieceCount(), projection.layout);
    return editor.finish();
}

} // namespace host::geometry
