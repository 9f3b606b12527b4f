#include "host/geometry/mesh/primitives/orientation.h"

namespace host::geometry {
namespace {

Vec3d direction(SolidUp up)
{
    return up == SolidUp::Y ? Vec3d{0, 1, 0} : Vec3d{0, 0, 1};
}

} // namespace

SmallestTurn::SmallestTurn(SolidUp up, const Vec3d& axis)
{
    const Vec3d from = direction(up);
    const double size = length(axis);
    if (!(size > 0) || !std::isfinite(size)) {
        return;
    }
    const Vec3d to = axis * (1 / size);
    const double cosine = dot(from, to);
    m_isIdentity = to == from;
    const Vec3d turn = cross(from, to); // its length is the sine
    constexpr double kOpposite = 1e-12;
    if (1 + cosine < kOpposite) {
        m_rows = {Vec3d{1, 0, 0}, Vec3d{0, -1, 0}, Vec3d{0, 0, -1}};
        return;
    }
    // Rodrigues: p cos + turn x p + turn (turn . p) / (1 + cos)
    const Vec3d scaled = turn * (1 / (1 + cosine));
    m_rows = {Vec3d{cosine, -turn.z, turn.y} + turn * scaled.x,
              Vec3d{turn.z, cosine, -turn.x} + turn * scaled.y,
              Vec3d{-turn.y, turn.x, cosine} + turn * scaled.z};
}

Vec3d SmallestTurn::operator()(const Vec3d& point) const
{
    return m_isIdentity
               ? point
               : Vec3d{dot(m_rows[0], point), dot(m_rows[1], point), dot(m_rows[2], point)};
}

} // namespace host::geometry
