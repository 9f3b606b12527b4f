#include "host/geometry/mesh/shape/moveComponents.h"

#include "host/geometry/mesh/edit/FaceUses.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/math/rotation.h"

#include <vector>

namespace host::geometry {
namespace {

/// The vertices of components of one kind.
class ComponentVertices {
public:
    ComponentVertices(const MeshTopology& topology, ComponentKind kind)
        : m_topology(topology), m_kind(kind)
    {
    }

    void list(std::uint32_t component, std::vector<std::uint32_t>& vertices) const
    {
        vertices.clear();
        if (m_kind == ComponentKind::Vertex) {
            vertices.push_back(component);
        } else if (m_kind == ComponentKind::Edge) {
            vertices = {m_topology.edges[component].start, m_topology.edges[component].end};
        } else {
            for (std::uint32_t corner = m_topology.firstCorner(component);
                 corner < m_topology.endCorner(component); ++corner) {
                vertices.push_back(m_topology.cornerVertex(corner));
            }
        }
    }

private:
    const MeshTopology& m_topology;
    ComponentKind m_kind;
};

/// The normals of given components in the space of the move.
class ComponentNormals {
public:
    ComponentNormals(const MeshData& mesh, ComponentKind kind,
                     std::span<const std::uint32_t> components, const Matrix4& space)
        : m_kind(kind)
        , m_components(components)
        , m_planes(mesh, space)
        , m_faces(kind == ComponentKind::Edge     ? facesOfEdges(*mesh.topology, components)
                  : kind == ComponentKind::Vertex ? facesOfVertices(*mesh.topology, components)
                                                  : facesOfEdges(*mesh.topology, {}))
    {
    }

    /// Of the component at a place of the list.
    Vec3d normal(std::uint32_t place)
    {
        if (m_kind == ComponentKind::Face) {
            return m_planes.of(m_components[place]).normal;
        }
        Vec3d sum;
        for (std::size_t use = 0; use < m_faces.count(place); ++use) {
            const PolygonPlane& plane = m_planes.of(m_faces.face(place, use));
            sum = sum + plane.normal * (m_kind == ComponentKind::Vertex ? plane.area : 1.0);
        }
        return normalized(sum);
    }

private:
    ComponentKind m_kind;
    std::span<const std::uint32_t> m_components;
    LazyPlanes m_planes;
    FaceUses m_faces; ///< of vertices and edges
};

/// Rows x, y, z of length one at right angles, and the centre; z along the normal. A component
/// without a normal has the axes of the space.
Matrix4 frameOf(const Vec3d& normal, const Vec3d& direction, const Vec3d& centre)
{
    Matrix4 frame = translation(centre);
    const auto across = [&normal](const Vec3d& axis) { return axis - normal * dot(axis, normal); };
    if (!(length(normal) > 0)) {
        return frame;
    }
    constexpr double kAlong = 1e-6;
    Vec3d x = across(direction);
    for (const Vec3d& axis : {Vec3d{1, 0, 0}, Vec3d{0, 1, 0}}) {
        x = length(x) > kAlong ? x : across(axis);
    }
    x = normalized(x);
    const Vec3d y = cross(normal, x);
    frame.m[0] = {x.x, x.y, x.z, 0};
    frame.m[1] = {y.x, y.y, y.z, 0};
    frame.m[2] = {normal.x, normal.y, normal.z, 0};
    return frame;
}

bool isLocalIdle(const ComponentMove& move)
{
    return move.localTranslate == Vec3d{} && move.localRotate == Vec3d{} &&
           move.localScale == Vec3d{1, 1, 1};
}

/// The points of a mesh in the space of a move.
class SpacePoints {
public:
    SpacePoints(const MeshData& mesh, const Matrix4& space)
        : m_points(pointsOf(mesh)), m_space(space)
    {
    }
    Vec3d operator[](std::uint32_t vertex) const
    {
        return transformPoint(toDouble(m_points[vertex]), m_space);
    }

private:
    std::span<const Vec3f> m_points;
    Matrix4 m_space;
};

/// The points after what each component does in its own frame.
class LocalMoves {
public:
    LocalMoves(const SpacePoints& points, std::size_t count) : m_points(points), m_places(count) {}

    void add(std::span<const std::uint32_t> vertices, const Vec3d& normal,
             const ComponentMove& move)
    {
        if (vertices.empty()) {
            return;
        }
        Vec3d centre;
        for (const std::uint32_t vertex : vertices) {
            centre = centre + m_points[vertex];
        }
        centre = centre * (1.0 / static_cast<double>(vertices.size()));
        const Matrix4 frame = frameOf(normal, move.localDirection, centre);
        const Matrix4 local = inverse(frame) * scaling(move.localScale) *
                              eulerRotation(move.localRotate, RotationOrder::Xyz) *
                              translation(move.localTranslate) * frame;
        for (const std::uint32_t vertex : vertices) {
            Sum& sum = sumOf(vertex);
            sum.points = sum.points + transformPoint(m_points[vertex], local);
            ++sum.count;
        }
    }

    /// Of a vertex of a component that was added.
    Vec3d point(std::uint32_t vertex) const
    {
        const Sum& sum = m_sums[m_places[vertex] - 1];
        return sum.points * (1.0 / sum.count);
    }

private:
    struct Sum {
        Vec3d points;
        std::uint32_t count = 0;
    };

    Sum& sumOf(std::uint32_t vertex)
    {
        if (m_places[vertex] == 0) {
            m_sums.emplace_back();
            m_places[vertex] = static_cast<std::uint32_t>(m_sums.size());
        }
        return m_sums[m_places[vertex] - 1];
    }

    const SpacePoints& m_points;
    std::vector<std::uint32_t> m_places; ///< by vertex, plus 1; 0: not moved
    std::vector<Sum> m_sums;
};

/// Moves each vertex of the components once: `move(vertex)` gives its point.
template<class Move>
std::shared_ptr<const MeshData> withMoved(const MeshData& mesh, const ComponentVertices& all,
                                          std::span<const std::uint32_t> components,
                                          const Move& move)
{
    const std::span<const Vec3f> before = pointsOf(mesh);
    auto points = std::make_shared<std::vector<Vec3f>>(before.begin(), before.end());
    std::vector<bool> isMoved(before.size());
    std::vector<std::uint32_t> vertices;
    for (const std::uint32_t component : components) {
        all.list(component, vertices);
        for (const std::uint32_t vertex : vertices) {
            if (!isMoved[vertex]) {
                isMoved[vertex] = true;
                (*points)[vertex] = toFloat(move(vertex));
            }
        }
    }
    auto moved = std::make_shared<MeshData>(mesh);
    moved->points = std::move(points);
    return moved;
}

} // namespace

std::shared_ptr<const MeshData> moveComponents(const MeshData& mesh, ComponentKind kind,
                                               std::span<const std::uint32_t> components,
                                               const ComponentMove& move)
{
    const ComponentVertices all(*mesh.topology, kind);
    const SpacePoints points(mesh, move.space);
    const Matrix4 back = move.common * inverse(move.space);
    if (isLocalIdle(move)) {
        return withMoved(mesh, all, components, [&](std::uint32_t vertex) {
            return transformPoint(points[vertex], back);
        });
    }
    ComponentNormals normals(mesh, kind, components, move.space);
    LocalMoves local(points, mesh.topology->vertexCount);
    std::vector<std::uint32_t> vertices;
    for (std::uint32_t place = 0; place < components.size(); ++place) {
        all.list(components[place], vertices);
        local.add(vertices, normals.normal(place), move);
    }
    return withMoved(mesh, all, components, [&](std::uint32_t vertex) {
        return transformPoint(local.point(vertex), back);
    });
}

} // namespace host::geometry
