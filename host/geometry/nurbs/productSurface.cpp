#include "host/geometry/nurbs/productSurface.h"

#include "host/geometry/curve/knotAlgebra.h"

namespace host::geometry {
namespace {

SurfaceData frameOfProduct(const SplineRows& profile, const SplineRows& along, bool isRational)
{
    SurfaceData surface;
    surface.rational = isRational;
    surface.degreeU = profile.degree;
    surface.formU = profile.form;
    surface.knotsU = profile.knots;
    surface.degreeV = along.degree;
    surface.formV = along.form;
    surface.knotsV = along.knots;
    surface.poles.reserve(profile.cvCount() * along.cvCount() * surface.stride());
    return surface;
}

bool canMultiply(const SplineRows& a, const SplineRows& b)
{
    return !a.points.empty() && !b.points.empty() && a.cvCount() <= kMaxSplineCvs / b.cvCount();
}

void addPole(SurfaceData& surface, const Vec3d& position, double weight)
{
    surface.poles.insert(surface.poles.end(), {position.x, position.y, position.z});
    if (surface.rational) {
        surface.poles.push_back(weight);
    }
}

} // namespace

SurfaceData revolved(const SplineRows& profile, const SplineRows& arc, const Vec3d& pivot,
                     const Vec3d& axis, bool isRational)
{
    if (!canMultiply(profile, arc)) {
        return {};
    }
    SurfaceData surface = frameOfProduct(profile, arc, isRational);
    const Vec3d unit = normalized(axis);
    for (std::size_t i = 0; i < profile.cvCount(); ++i) {
        const HomogeneousPoint& own = profile.points[i * profile.width];
        const Vec3d away = own.projected() - pivot;
        const Vec3d foot = pivot + unit * dot(away, unit);
        const Vec3d x = away - unit * dot(away, unit);
        const Vec3d y = cross(x, unit);
        for (std::size_t j = 0; j < arc.cvCount(); ++j) {
            const HomogeneousPoint& turn = arc.points[j * arc.width];
            const Vec3d on = turn.projected();
            addPole(surface, foot + x * on.x + y * on.y, own.w * turn.w);
        }
    }
    return surface;
}

SurfaceData translated(const SplineRows& profile, const SplineRows& path, const Vec3d& origin,
                       bool isRational)
{
    if (!canMultiply(profile, path)) {
        return {};
    }
    SurfaceData surface = frameOfProduct(profile, path, isRational);
    for (std::size_t i = 0; i < profile.cvCount(); ++i) {
        const HomogeneousPoint& own = profile.points[i * profile.width];
        for (std::size_t j = 0; j < path.cvCount(); ++j) {
            const HomogeneousPoint& along = path.points[j * path.width];
            addPole(surface, own.projected() + along.projected() - origin, own.w * along.w);
        }
    }
    return surface;
}

} // namespace host::geometry
