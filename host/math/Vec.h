// Small fixed-size vectors: plain records with the few operations that the kernels need.
#pragma once

#include <cmath>

namespace host {

struct Vec2f {
    float x = 0, y = 0;
    friend bool operator==(const Vec2f&, const Vec2f&) = default;
};

struct Vec3f {
    float x = 0, y = 0, z = 0;
    friend bool operator==(const Vec3f&, const Vec3f&) = default;
};

struct Vec3d {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const Vec3d&, const Vec3d&) = default;
};

inline Vec3d toDouble(const Vec3f& v)
{
    return {v.x, v.y, v.z};
}
inline Vec3f toFloat(const Vec3d& v)
{
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}
inline Vec3d operator+(const Vec3d& a, const Vec3d& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3d operator-(const Vec3d& a, const Vec3d& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3d operator*(const Vec3d& v, double s)
{
    return {v.x * s, v.y * s, v.z * s};
}
inline double dot(const Vec3d& a, const Vec3d& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3d cross(const Vec3d& a, const Vec3d& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec3d& v)
{
    return std::sqrt(dot(v, v));
}
/// The vector over its length; the vector itself when the length is zero.
inline Vec3d normalized(const Vec3d& v)
{
    const double l = length(v);
    return l > 0 ? v * (1.0 / l) : v;
}

} // namespace host
