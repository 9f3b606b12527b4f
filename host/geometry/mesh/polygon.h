// What the kernels need to know of a single polygon.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <span>
#include <vector>

namespace host::geometry {

/// The vertex of every corner, to be read in sequence instead of through the edges.
std::vector<std::uint32_t> cornerVertices(const MeshTopology& topology);

/// Half the sum of the cross products round a loop: its length is the area of a plane polygon, its
/// direction the side from which the loop runs counter-clockwise (M. E. Newell's method).
Vec3d areaVector(std::span<const Vec3d> loop);

/// Unit normal and area of a polygon; both zero where the outer loop has no area.
struct PolygonPlane {
    Vec3d normal;
    double area = 0;
};

/// The plane of a polygon of one outer loop and holes: the normal is the outer loop's, the area is
/// what the holes leave. `loopEnds` has the end of each loop in `points`.
PolygonPlane polygonPlane(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds);

/// The angle at `corner` between its neighbours in a loop that runs counter-clockwise about
/// `normal`: 0..2 pi, above pi where the polygon is concave. 0 where a neighbour has the same
/// place.
double interiorAngle(const Vec3d& previous, const Vec3d& corner, const Vec3d& next,
                     const Vec3d& normal);

} // namespace host::geometry
