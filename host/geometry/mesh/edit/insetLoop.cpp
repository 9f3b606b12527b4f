#include "host/geometry/mesh/edit/insetLoop.h"

#include <cmath>

namespace host::geometry {
namespace {

constexpr double kSharpest = 0.01;

/// x so that one unit of it is at least kSharpest.
double kept(double x)
{
    return std::fabs(x) >= kSharpest ? x : std::copysign(kSharpest, x);
}

/// Where the corner between two lines of direction `before` and `after` goes when they move one
/// unit inwards.
Vec3d miter(const Vec3d& before, const Vec3d& after, const Vec3d& normal)
{
    const Vec3d inBefore = cross(normal, before);
    const Vec3d inAfter = cross(normal, after);
    return (inBefore + inAfter) * (1 / kept(1 + dot(inBefore, inAfter)));
}

/// The same where only the line of direction `moving` moves, and the corner slides along `still`,
/// which points away from it.
Vec3d slide(const Vec3d& moving, const Vec3d& still, const Vec3d& normal)
{
    return still * (1 / kept(dot(still, cross(normal, moving))));
}

} // namespace

void insetLoop(std::span<const Vec3d> loop, std::span<const std::uint8_t> isSetIn,
               const Vec3d& normal, double distance, std::vector<Vec3d>& inset)
{
    inset.assign(loop.begin(), loop.end());
    const std::size_t size = loop.size();
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t last = i > 0 ? i - 1 : size - 1;
        const Vec3d before = normalized(loop[i] - loop[last]);
        const Vec3d after = normalized(loop[i + 1 < size ? i + 1 : 0] - loop[i]);
        if (isSetIn[last] != 0 && isSetIn[i] != 0) {
            inset[i] = loop[i] + miter(before, after, normal) * distance;
        } else if (isSetIn[last] != 0) {
            inset[i] = loop[i] + slide(before, after, normal) * distance;
        } else if (isSetIn[i] != 0) {
            inset[i] = loop[i] + slide(after, before * -1, normal) * distance;
        }
    }
}

} // namespace host::geometry
