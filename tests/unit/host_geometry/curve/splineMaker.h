// Splines that tests write down.
#pragma once

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/curve/SplineRows.h"

#include <gtest/gtest.h>

namespace test {

inline host::geometry::CurveData
curve(std::int32_t degree, std::vector<double> knots, std::vector<double> poles,
      host::geometry::SplineForm form = host::geometry::SplineForm::Open)
{
    host::geometry::CurveData result;
    result.degree = degree;
    result.form = form;
    result.knots = std::move(knots);
    result.poles = std::move(poles);
    result.spans = static_cast<std::int32_t>(result.cvCount()) - degree;
    return result;
}

inline host::geometry::CurveEvaluator evaluatorOf(const host::geometry::SplineRows& rows,
                                                  bool isRational = false)
{
    return host::geometry::CurveEvaluator(host::geometry::curveOf(rows, isRational));
}

inline void expectNear(const host::Vec3d& found, const host::Vec3d& expected,
                       double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

/// A closed quadratic of four spans through the middles of the sides of the square (+-1, +-1).
inline host::geometry::CurveData ring()
{
    return curve(2, {-1, 0, 1, 2, 3, 4, 5},
                 {1, 1, 0, -1, 1, 0, -1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0},
                 host::geometry::SplineForm::Periodic);
}

} // namespace test
