// Curves and surfaces as values of tests.
#pragma once

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

namespace test {

inline host::geometry::CurveData curveData(std::int32_t degree, std::vector<double> knots,
                                           std::vector<double> poles)
{
    host::geometry::CurveData result;
    result.degree = degree;
    result.knots = std::move(knots);
    result.poles = std::move(poles);
    result.spans = static_cast<std::int32_t>(result.cvCount()) - degree;
    return result;
}

/// A straight line over 0..1.
inline host::Value lineValue(const host::Vec3d& from, const host::Vec3d& to)
{
    return host::Value::of(curveData(1, {0, 1}, {from.x, from.y, from.z, to.x, to.y, to.z}));
}

/// The square 0..2 in x and z at y = 0, u along x, v along z.
inline host::Value squareValue()
{
    host::geometry::SurfaceData surface;
    surface.degreeU = surface.degreeV = 1;
    surface.knotsU = surface.knotsV = {0, 2};
    surface.poles = {0, 0, 0, 0, 0, 2, 2, 0, 0, 2, 0, 2};
    return host::Value::of(std::move(surface));
}

inline host::geometry::CurveData curveFrom(const host::Value& value)
{
    const auto curve = value.data<host::geometry::CurveData>();
    return curve != nullptr ? *curve : host::geometry::CurveData();
}

inline host::geometry::SurfaceData surfaceFrom(const host::Value& value)
{
    const auto surface = value.data<host::geometry::SurfaceData>();
    return surface != nullptr ? *surface : host::geometry::SurfaceData();
}

inline host::Vec3d pointOf(const host::geometry::CurveData& curve, double u)
{
    const host::geometry::CurveEvaluator evaluator(curve);
    EXPECT_TRUE(evaluator.isValid());
    return evaluator.isValid() ? evaluator.point(u) : host::Vec3d();
}

inline host::Vec3d pointOf(const host::geometry::SurfaceData& surface, double u, double v)
{
    const host::geometry::SurfaceEvaluator evaluator(surface);
    EXPECT_TRUE(evaluator.isValid());
    return evaluator.isValid() ? evaluator.point(u, v) : host::Vec3d();
}

inline void expectNear(const host::Vec3d& found, const host::Vec3d& expected,
                       double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

} // namespace test
