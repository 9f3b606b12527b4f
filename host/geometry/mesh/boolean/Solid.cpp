#include "host/geometry/mesh/boolean/Solid.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {

SolidGrid::SolidGrid(std::span<const Vec3f> points)
{
    constexpr int kBits = 40;
    float farthest = 0;
    for (const Vec3f& point : points) {
        farthest = std::max({farthest, std::fabs(point.x), std::fabs(point.y), std::fabs(point.z)});
    }
    int exponent = 0;
    std::frexp(farthest, &exponent);
    m_cells = std::ldexp(1.0, kBits - exponent);
}

Vec3d SolidGrid::place(const Vec3f& point) const
{
    const auto nearest = [this](double number) { return std::floor(number * m_cells + 0.5); };
    return {nearest(point.x), nearest(point.y), nearest(point.z)};
}

Vec3f SolidGrid::point(const Vec3d& place) const
{
    return toFloat(place * (1 / m_cells));
}

double volumeOf(const Solid& solid)
{
    double sixfold = 0;
    if (solid.triangles.empty()) {
        return sixfold;
    }
    // Seen from a point of its own, so that a small solid far from the origin keeps its digits.
    const Vec3d eye = solid.points[solid.triangles.front().corners[0]];
    for (const SolidTriangle& triangle : solid.triangles) {
        const Vec3d a = solid.points[triangle.corners[0]] - eye;
        const Vec3d b = solid.points[triangle.corners[1]] - eye;
        const Vec3d c = solid.points[triangle.corners[2]] - eye;
        sixfold += dot(a, cross(b, c));
    }
    return sixfold / 6;
}

SolidBox boxOfBoth(const SolidBox& a, const SolidBox& b)
{
    if (a.isEmpty() || b.isEmpty()) {
        return a.isEmpty() ? b : a;
    }
    return {
        {std::min(a.low.x, b.low.x), std::min(a.low.y, b.low.y), std::min(a.low.z, b.low.z)},
        {std::max(a.high.x, b.high.x), std::max(a.high.y, b.high.y), std::max(a.high.z, b.high.z)}};
}

SolidBox boxOf(const Solid& solid)
{
    SolidBox box;
    for (const SolidTriangle& triangle : solid.triangles) {
        for (const std::uint32_t corner : triangle.corners) {
            const Vec3d& point = solid.points[corner];
            box = boxOfBoth(box, {point, point});
        }
    }
    return box;
}

bool areApart(const SolidBox& a, const SolidBox& b)
{
    return a.isEmpty() || b.isEmpty() || a.high.x < b.low.x || b.high.x < a.low.x ||
           a.high.y < b.low.y || b.high.y < a.low.y || a.high.z < b.low.z || b.high.z < a.low.z;
}

} // namespace host::geometry
