#include "host/geometry/mesh/edit/bevelArc.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {

Vec3d bevelArc(const Vec3d& tip, const Vec3d& from, const Vec3d& to, double part, double depth)
{
    const Vec3d a = from - tip;
    const Vec3d b = to - tip;
    const Vec3d straight = from + (to - from) * part;
    const double cosine = dot(normalized(a), normalized(b));
    const double sine = length(cross(normalized(a), normalized(b)));
    const double turn = std::numbers::pi - angleOf(sine, cosine);
    constexpr double kFlat = 1e-6;
    if (!(turn > kFlat) || !(sine > kFlat)) {
        return straight;
    }
    // With legs of one unit the middle of the arc is at (a + b) / (1 + cosine).
    const double middle = 1 / (1 + cosine);
    const double whole = sineCosine(turn).sine;
    const double toA = sineCosine((1 - part) * turn).sine / whole;
    const double toB = sineCosine(part * turn).sine / whole;
    const double ofA = middle + toA * (1 - middle) - toB * middle;
    const double ofB = middle + toB * (1 - middle) - toA * middle;
    const Vec3d round = tip + a * ofA + b * ofB;
    return straight + (round - straight) * depth;
}

} // namespace host::geometry
