#include "host/geometry/mesh/shape/moveComponents.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/math/rotation.h"

#include <vector>

namespace host::geometry {
namespace {

/// Vertices and normals of components of one kind.
class Components {
public:
    Components(const MeshTopology& topology, ComponentKind kind, std::span<const Vec3d> points)
        : m_topology(topology)
        , m_kind(kind)
        , m_planes(facePlanes(topology, points))
        , m_links(topology)
    {
        if (kind == ComponentKind::Edge) {
            m_cornersOf = cornersOfEdges(topology);
        } else if (kind == ComponentKind::Vertex) {
            m_cornersOf = cornersOfVertices(topology);
        }
    }

    void vertices(std::uint32_t component, std::vector<std::uint32_t>& list) const
    {
        list.clear();
        if (m_kind == ComponentKind::Vertex) {
            list.push_back(component);
        } else if (m_kind == ComponentKind::Edge) {
            list = {m_topology.edges[component].start, m_topology.edges[component].end};
        } else {
            for (std::uint32_t corner = m_topology.firstCorner(component);
                 corner < m_topology.endCorner(component); ++corner) {
                list.push_back(m_topology.cornerVertex(corner));
            }
        }
    }

    Vec3d normal(std::uint32_t component) const
    {
        if (m_kind == ComponentKind::Face) {
            return m_planes[component].normal;
        }
        Vec3d sum;
        for (const std::uint32_t corner : m_cornersOf.of(component)) {
            const PolygonPlane& plane = m_planes[m_links.face(corner)];
            sum = sum + plane.normal * (m_kind == ComponentKind::Vertex ? plane.area : 1.0);
        }
        return normalized(sum);
    }

private:
    const MeshTopology& m_topology;
    ComponentKind m_kind;
    std::vector<PolygonPlane> m_planes;
    CornerLinks m_links;
    NumberLists m_cornersOf;
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

/// The points after what each component does in its own frame.
class LocalMoves {
public:
    LocalMoves(const Components& components, std::span<const Vec3d> points)
        : m_components(components), m_points(points), m_sums(points.size()), m_counts(points.size())
    {
    }

    void add(std::uint32_t component, const ComponentMove& move)
    {
        m_components.vertices(component, m_vertices);
        if (m_vertices.empty()) {
            return;
        }
        Vec3d centre;
        for (const std::uint32_t vertex : m_vertices) {
            centre = centre + m_points[vertex];
        }
        centre = centre * (1.0 / static_cast<double>(m_vertices.size()));
        const Matrix4 frame = frameOf(m_components.normal(component), move.localDirection, centre);
        const Matrix4 local = inverse(frame) * scaling(move.localScale) *
                              eulerRotation(move.localRotate, RotationOrder::Xyz) *
                              translation(move.localTranslate) * frame;
        for (const std::uint32_t vertex : m_vertices) {
            m_sums[vertex] = m_sums[vertex] + transformPoint(m_points[vertex], local);
            ++m_counts[vertex];
        }
    }

    Vec3d point(std::uint32_t vertex) const
    {
        return m_counts[vertex] == 0 ? m_points[vertex] : m_sums[vertex] * (1.0 / m_counts[vertex]);
    }

private:
    const Components& m_components;
    std::span<const Vec3d> m_points;
    std::vector<Vec3d> m_sums;
    std::vector<std::uint32_t> m_counts;
    std::vector<std::uint32_t> m_vertices;
};

std::vector<bool> verticesOf(const Components& all, std::span<const std::uint32_t> components,
                             std::size_t count)
{
    std::vector<bool> isMoved(count);
    std::vector<std::uint32_t> vertices;
    for (const std::uint32_t component : components) {
        all.vertices(component, vertices);
        for (const std::uint32_t vertex : vertices) {
            isMoved[vertex] = true;
        }
    }
    return isMoved;
}

} // namespace

std::shared_ptr<const MeshData> moveComponents(const MeshData& mesh, ComponentKind kind,
                                               std::span<const std::uint32_t> components,
                                               const ComponentMove& move)
{
    std::vector<Vec3d> points = doublePoints(mesh);
    std::vector<Vec3d> inSpace;
    inSpace.reserve(points.size());
    for (const Vec3d& point : points) {
        inSpace.push_back(transformPoint(point, move.space));
    }
    const Components all(*mesh.topology, kind, inSpace);
    const std::vector<bool> isMoved = verticesOf(all, components, points.size());
    LocalMoves local(all, inSpace);
    if (!isLocalIdle(move)) {
        for (const std::uint32_t component : components) {
            local.add(component, move);
        }
    }
    const Matrix4 back = move.common * inverse(move.space);
    for (std::uint32_t vertex = 0; vertex < points.size(); ++vertex) {
        if (isMoved[vertex]) {
            points[vertex] = transformPoint(local.point(vertex), back);
        }
    }
    return withPoints(mesh, points);
}

} // namespace host::geometry
