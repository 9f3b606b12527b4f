#include "host/geometry/mesh/shape/facePlanes.h"

#include "host/geometry/mesh/normals.h"

#include <algorithm>

namespace host::geometry {

std::vector<PolygonPlane> facePlanes(const MeshTopology& topology, std::span<const Vec3d> points)
{
    std::vector<PolygonPlane> planes(topology.faceCount());
    std::vector<Vec3d> corners;
    std::vector<std::uint32_t> ends;
    for (std::uint32_t face = 0; face < planes.size(); ++face) {
        corners.clear();
        ends.clear();
        for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = topology.loopStart[loop];
                 corner < topology.loopStart[loop + 1]; ++corner) {
                corners.push_back(points[topology.cornerVertex(corner)]);
            }
            ends.push_back(static_cast<std::uint32_t>(corners.size()));
        }
        planes[face] = polygonPlane(corners, ends);
    }
    return planes;
}

LazyPlanes::LazyPlanes(const MeshData& mesh, const Matrix4& space)
    : m_topology(*mesh.topology), m_points(pointsOf(mesh)), m_space(space)
{
}

const PolygonPlane& LazyPlanes::of(std::uint32_t face)
{
    const std::size_t place = placeOf(face);
    if (place < m_planes.size()) {
        return m_planes[place];
    }
    m_planes.push_back(compute(face));
    m_faces.push_back(face);
    if (!m_places.empty()) {
        m_places[face] = static_cast<std::uint32_t>(m_planes.size());
    }
    return m_planes.back();
}

std::size_t LazyPlanes::placeOf(std::uint32_t face)
{
    constexpr std::size_t kMostFew = 16;
    if (m_places.empty() && m_faces.size() < kMostFew) {
        return static_cast<std::size_t>(std::find(m_faces.begin(), m_faces.end(), face) -
                                        m_faces.begin());
    }
    if (m_places.empty()) {
        m_places.resize(m_topology.faceCount());
        for (std::uint32_t place = 0; place < m_faces.size(); ++place) {
            m_places[m_faces[place]] = place + 1;
        }
    }
    return m_places[face] != 0 ? m_places[face] - std::size_t{1} : m_planes.size();
}

PolygonPlane LazyPlanes::compute(std::uint32_t face)
{
    m_corners.clear();
    m_ends.clear();
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        for (std::uint32_t corner = m_topology.loopStart[loop];
             corner < m_topology.loopStart[loop + 1]; ++corner) {
            const Vec3f& point = m_points[m_topology.cornerVertex(corner)];
            m_corners.push_back(transformPoint(toDouble(point), m_space));
        }
        m_ends.push_back(static_cast<std::uint32_t>(m_corners.size()));
    }
    return polygonPlane(m_corners, m_ends);
}

std::vector<Vec3d> doublePoints(const MeshData& mesh)
{
    const std::span<const Vec3f> given = pointsOf(mesh);
    std::vector<Vec3d> points;
    points.reserve(given.size());
    for (const Vec3f& point : given) {
        points.push_back(toDouble(point));
    }
    return points;
}

std::shared_ptr<const MeshData> withPoints(const MeshData& mesh, std::span<const Vec3d> points)
{
    auto narrow = std::make_shared<std::vector<Vec3f>>();
    narrow->reserve(points.size());
    for (const Vec3d& point : points) {
        narrow->push_back(toFloat(point));
    }
    auto moved = std::make_shared<MeshData>(mesh);
    moved->points = std::move(narrow);
    return moved;
}

} // namespace host::geometry
