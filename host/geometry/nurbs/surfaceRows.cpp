#include "host/geometry/nurbs/surfaceRows.h"

#include "host/geometry/nurbs/SurfaceEvaluator.h"

namespace host::geometry {
namespace {

std::vector<HomogeneousPoint> transposed(const std::vector<HomogeneousPoint>& points,
                                         std::size_t width)
{
    std::vector<HomogeneousPoint> result;
    result.reserve(points.size());
    for (std::size_t column = 0; column < width; ++column) {
        for (std::size_t at = column; at < points.size(); at += width) {
            result.push_back(points[at]);
        }
    }
    return result;
}

void storePoles(SurfaceData& surface, const std::vector<HomogeneousPoint>& points)
{
    surface.poles.clear();
    surface.poles.reserve(points.size() * surface.stride());
    for (const HomogeneousPoint& point : points) {
        const Vec3d position = surface.rational ? point.projected() : point.vector();
        surface.poles.insert(surface.poles.end(), {position.x, position.y, position.z});
        if (surface.rational) {
            surface.poles.push_back(point.w);
        }
    }
}

} // namespace

SplineRows rowsOf(const SurfaceData& surface, SurfaceDirection direction)
{
    SplineRows rows;
    if (!isValidSurface(surface)) {
        return rows;
    }
    const bool isU = direction == SurfaceDirection::U;
    rows.degree = isU ? surface.degreeU : surface.degreeV;
    rows.form = isU ? surface.formU : surface.formV;
    rows.knots = isU ? surface.knotsU : surface.knotsV;
    rows.width = isU ? surface.cvCountV() : surface.cvCountU();
    rows.points = homogeneousPoints(surface);
    if (!isU) {
        rows.points = transposed(rows.points, surface.cvCountV());
    }
    return rows;
}

SurfaceData surfaceOf(const SplineRows& rows, const SurfaceData& surface,
                      SurfaceDirection direction)
{
    SurfaceData result;
    result.rational = surface.rational;
    const bool isU = direction == SurfaceDirection::U;
    result.degreeU = isU ? rows.degree : surface.degreeU;
    result.formU = isU ? rows.form : surface.formU;
    result.knotsU = isU ? rows.knots : surface.knotsU;
    result.degreeV = isU ? surface.degreeV : rows.degree;
    result.formV = isU ? surface.formV : rows.form;
    result.knotsV = isU ? surface.knotsV : rows.knots;
    storePoles(result, isU ? rows.points : transposed(rows.points, rows.width));
    return result;
}

} // namespace host::geometry
