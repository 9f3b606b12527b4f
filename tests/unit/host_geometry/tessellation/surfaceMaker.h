// Exact rational surfaces by the textbook formulas, and curves to trim them (L. Piegl, W. Tiller,
// The NURBS Book, chapters 7 and 8).
#pragma once

#include "host/geometry/nurbs/SurfaceData.h"
#include "host/geometry/tessellation/triangulatePlane.h"

#include <cmath>
#include <numbers>

namespace test {

using host::geometry::CurveData;
using host::geometry::PlanePosition;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using host::geometry::TrimBoundary;
using host::geometry::TrimEdge;
using host::geometry::TrimRegion;

/// A quadratic rational profile in the half plane (distance from the axis, height, weight).
struct Profile {
    std::int32_t degree = 1;
    std::vector<double> knots;
    std::vector<std::array<double, 3>> points;
};

/// Control points of the unit circle: nine, of which every other one has the weight sqrt(1/2).
inline std::vector<std::array<double, 3>> circlePoints()
{
    const double w = std::sqrt(0.5);
    return {{1, 0, 1},   {1, 1, w},  {0, 1, 1},  {-1, 1, w}, {-1, 0, 1},
            {-1, -1, w}, {0, -1, 1}, {1, -1, w}, {1, 0, 1}};
}
inline const std::vector<double> kCircleKnots{0, 0, 1, 1, 2, 2, 3, 3, 4, 4};

/// The profile turned round the z axis: u goes round counter-clockwise, v along the profile. Upward
/// profiles have their normals outside.
inline SurfaceData revolved(const Profile& profile)
{
    SurfaceData surface;
    surface.degreeU = 2;
    surface.formU = SplineForm::Closed;
    surface.knotsU = kCircleKnots;
    surface.degreeV = profile.degree;
    surface.knotsV = profile.knots;
    surface.rational = true;
    for (const auto& [x, y, w] : circlePoints()) {
        for (const auto& [radius, height, weight] : profile.points) {
            surface.poles.insert(surface.poles.end(), {radius * x, radius * y, height, w * weight});
        }
    }
    return surface;
}
inline SurfaceData sphere(double r)
{
    const double w = std::sqrt(0.5);
    return revolved(
        {2, {0, 0, 1, 1, 2, 2}, {{0, -r, 1}, {r, -r, w}, {r, 0, 1}, {r, r, w}, {0, r, 1}}});
}
inline SurfaceData cylinder(double r, double height)
{
    return revolved({1, {0, 1}, {{r, 0, 1}, {r, height, 1}}});
}
inline SurfaceData cone(double r, double height)
{
    return revolved({1, {0, 1}, {{r, 0, 1}, {0, height, 1}}});
}
inline SurfaceData disc(double r)
{
    return revolved({1, {0, 1}, {{r, 0, 1}, {0, 0, 1}}});
}
inline SurfaceData torus(double large, double small)
{
    Profile profile{2, kCircleKnots, {}};
    for (const auto& [x, y, w] : circlePoints()) {
        profile.points.push_back({large + small * x, small * y, w});
    }
    SurfaceData surface = revolved(profile);
    surface.formV = SplineForm::Closed;
    return surface;
}
/// The rectangle from (0, 0, 0) to (width, height, 0), u along x, domain 0..1.
inline SurfaceData plane(double width, double height)
{
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 1;
    surface.knotsU = surface.knotsV = {0, 1};
    surface.poles = {0, 0, 0, 0, height, 0, width, 0, 0, width, height, 0};
    return surface;
}

/// A straight line in the parameter plane.
inline CurveData line(const PlanePosition& from, const PlanePosition& to)
{
    CurveData curve;
    curve.degree = 1;
    curve.spans = 1;
    curve.dimension = 2;
    curve.knots = {0, 1};
    curve.poles = {from.x, from.y, to.x, to.y};
    return curve;
}
/// A circle in the parameter plane, counter-clockwise.
inline CurveData circle(double u, double v, double radius)
{
    CurveData curve;
    curve.degree = 2;
    curve.spans = 4;
    curve.form = SplineForm::Closed;
    curve.rational = true;
    curve.dimension = 2;
    curve.knots = kCircleKnots;
    for (const auto& [x, y, w] : circlePoints()) {
        curve.poles.insert(curve.poles.end(), {u + radius * x, v + radius * y, w});
    }
    return curve;
}
inline CurveData reversed(const CurveData& curve)
{
    CurveData result = curve;
    result.poles.clear();
    for (std::size_t i = curve.cvCount(); i-- > 0;) {
        const auto first = curve.poles.begin() + static_cast<std::ptrdiff_t>(i * curve.stride());
        result.poles.insert(result.poles.end(), first,
                            first + static_cast<std::ptrdiff_t>(curve.stride()));
    }
    for (std::size_t i = 0; i < curve.knots.size(); ++i) {
        result.knots[i] = -curve.knots[curve.knots.size() - 1 - i];
    }
    return result;
}

/// A boundary with one edge per curve.
inline TrimBoundary boundary(const std::vector<CurveData>& curves, bool isHole = false)
{
    TrimBoundary result;
    result.type = isHole ? 1 : 0;
    for (const CurveData& curve : curves) {
        TrimEdge edge;
        edge.curves2d.push_back(curve);
        result.edges.push_back(edge);
        result.edgeFlags.push_back(0);
    }
    return result;
}
inline TrimBoundary polygon(const std::vector<PlanePosition>& corners, bool isHole = false)
{
    std::vector<CurveData> curves;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        curves.push_back(line(corners[i], corners[(i + 1) % corners.size()]));
    }
    return boundary(curves, isHole);
}
inline TrimBoundary wholeDomain()
{
    return polygon({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
}
inline void trim(SurfaceData& surface, const std::vector<TrimBoundary>& boundaries,
                 bool flipNormal = false)
{
    auto region = std::make_shared<TrimRegion>();
    region->boundaries = boundaries;
    region->flipNormal = flipNormal;
    surface.trims.push_back(region);
}

} // namespace test
