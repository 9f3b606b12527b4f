#include "host/geometry/mesh/polygon.h"

#include "host/math/angle.h"

namespace host::geometry {

std::vector<std::uint32_t> cornerVertices(const MeshTopology& topology)
{
    std::vector<std::uint32_t> vertices(topology.corners.size());
    for (std::size_t corner = 0; corner < vertices.size(); ++corner) {
        vertices[corner] = topology.cornerVertex(static_cast<std::uint32_t>(corner));
    }
    return vertices;
}

Vec3d areaVector(std::span<const Vec3d> loop)
{
    Vec3d sum;
    if (loop.size() < 3) {
        return sum;
    }
    // Seen from the first point, so that a small polygon far from the origin keeps its digits.
    Vec3d last = loop[1] - loop[0];
    for (std::size_t i = 2; i < loop.size(); ++i) {
        const Vec3d spoke = loop[i] - loop[0];
        sum = sum + cross(last, spoke);
        last = spoke;
    }
    return sum * 0.5;
}

PolygonPlane polygonPlane(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds)
{
    PolygonPlane plane;
    if (loopEnds.empty()) {
        return plane;
    }
    const Vec3d vector = areaVector(points.first(loopEnds[0]));
    const double outerArea = length(vector);
    if (!(outerArea > 0) || !std::isfinite(outerArea)) {
        return plane;
    }
    plane.normal = vector * (1 / outerArea);
    plane.area = outerArea;
    for (std::size_t loop = 1; loop < loopEnds.size(); ++loop) {
        const std::uint32_t first = loopEnds[loop - 1];
        plane.area -= length(areaVector(points.subspan(first, loopEnds[loop] - first)));
    }
    if (!(plane.area > 0)) {
        plane.area = outerArea;
    }
    return plane;
}

double interiorAngle(const Vec3d& previous, const Vec3d& corner, const Vec3d& next,
                     const Vec3d& normal)
{
    const Vec3d back = previous - corner;
    const Vec3d ahead = next - corner;
    const Vec3d turn = cross(ahead, back);
    const double angle = angleOf(length(turn), dot(ahead, back));
    return dot(turn, normal) < 0 ? 2 * std::numbers::pi - angle : angle;
}

} // namespace host::geometry
