#include "host/geometry/mesh/shape/facePlanes.h"

#include "host/geometry/mesh/normals.h"

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
