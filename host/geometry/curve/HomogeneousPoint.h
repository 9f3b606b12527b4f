// Control points multiplied by their weights, in which splines are sums of points.
#pragma once

#include "host/math/Vec.h"

namespace host::geometry {

/// (w x, w y, w z, w).
struct HomogeneousPoint {
    double x = 0, y = 0, z = 0, w = 0;

    void add(const HomogeneousPoint& other, double factor)
    {
        x += other.x * factor;
        y += other.y * factor;
        z += other.z * factor;
        w += other.w * factor;
    }
    Vec3d vector() const { return {x, y, z}; }
    /// The point itself; where the weights cancel out, its numerators.
    Vec3d projected() const { return w != 0 ? Vec3d{x / w, y / w, z / w} : vector(); }
};

inline HomogeneousPoint homogeneous(const Vec3d& point, double weight)
{
    return {point.x * weight, point.y * weight, point.z * weight, weight};
}

} // namespace host::geometry
