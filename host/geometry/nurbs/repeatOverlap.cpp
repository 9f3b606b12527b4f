#include "host/geometry/nurbs/repeatOverlap.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// How many of `count` control points are no repetition.
std::size_t ownCount(std::size_t count, std::int32_t degree, SplineForm form)
{
    const auto overlap = static_cast<std::size_t>(std::max(degree, 0));
    return form == SplineForm::Periodic && count > overlap ? count - overlap : count;
}

} // namespace

void repeatOverlap(CurveData& curve)
{
    const std::size_t own = ownCount(curve.cvCount(), curve.degree, curve.form) * curve.stride();
    for (std::size_t i = own; i < curve.poles.size(); ++i) {
        curve.poles[i] = curve.poles[i - own];
    }
}

void repeatOverlap(SurfaceData& surface)
{
    const std::size_t u = surface.cvCountU();
    const std::size_t v = surface.cvCountV();
    const std::size_t ownU = ownCount(u, surface.degreeU, surface.formU);
    const std::size_t ownV = ownCount(v, surface.degreeV, surface.formV);
    const auto pole = [&](std::size_t i, std::size_t j) {
        return surface.poles.begin() + static_cast<std::ptrdiff_t>((i * v + j) * surface.stride());
    };
    for (std::size_t i = 0; i < u; ++i) {
        for (std::size_t j = 0; j < v; ++j) {
            if (i >= ownU || j >= ownV) {
                std::copy_n(pole(i % ownU, j % ownV), surface.stride(), pole(i, j));
            }
        }
    }
}

} // namespace host::geometry
