// What the kernels need to know of a single polygon. In the header, since they ask it for every
// corner.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/angle.h"

#include <span>
#include <vector>

namespace host::geometry {

/// The vertex of every corner, to be read in sequence instead of through the edges.
std::vector<std::uint32_t> cornerVertices(const MeshTopology& topology);

/// Half the sum of the cross products round a loop: its length is the area of a plane polygon, its
/// direction the side from which the loop runs counter-clockwise (M. E. Newell's method).
inline Vec3d areaVector(std::span<const Vec3d> loop)
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

/// Unit normal and area of a polygon; both zero where the outer loop has no area.
struct PolygonPlane {
    Vec3d normal;
    double area = 0;
};

/// The plane of a polygon of one outer loop and holes: the normal is the outer loop's, the area is
/// what the holes leave. `loopEnds` has the end of each loop in `points`.
inline PolygonPlane polygonPlane(std::span<const Vec3d> points,
                                 std::span<const std::uint32_t> loopEnds)
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

/// The angle at `corner` between its neighbours in a loop that runs counter-clockwise about
/// `normal`: 0..2 pi, above pi where the polygon is concave. 0 where a neighbour has the same
/// place.
inline double interiorAngle(const Vec3d& previous, const Vec3d& corner, const Vec3d& next,
                            const Vec3d& normal)
{
    const Vec3d back = previous - corner;
    const Vec3d ahead = next - corner;
    const Vec3d turn = cross(ahead, back);
    const double angle = angleOf(length(turn), dot(ahead, back));
    return dot(turn, normal) < 0 ? 2 * std::numbers::pi - angle : angle;
}

} // namespace host::geometry
