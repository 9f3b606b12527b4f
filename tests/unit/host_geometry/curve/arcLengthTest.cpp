#include "host/geometry/curve/arcLength.h"

#include "host/geometry/curve/arcs.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <cmath>
#include <numbers>

namespace {

using host::geometry::ArcLengthTable;
using host::geometry::CurveEvaluator;
using std::numbers::pi;
using test::curve;
using test::expectNear;

TEST(ArcLength, MeasuresLinesAndCircles)
{
    const CurveEvaluator corner(curve(1, {0, 1, 2}, {0, 0, 0, 3, 0, 0, 3, 4, 0}));
    const ArcLengthTable lengths(corner);
    EXPECT_NEAR(lengths.total(), 7, 1e-13);
    EXPECT_NEAR(lengths.lengthTo(1.5), 5, 1e-13);
    EXPECT_NEAR(lengths.parameterAt(5), 1.5, 1e-13);
    const auto circle = test::evaluatorOf(host::geometry::exactArc(0, 2 * pi), true);
    EXPECT_NEAR(ArcLengthTable(circle).total(), 2 * pi, 1e-10);
}

TEST(ArcLength, MeasuresAParabola)
{
    // y = x^2 from 0 to 1: sqrt 5 / 2 + asinh(2) / 4; u runs unevenly over its length.
    const CurveEvaluator parabola(curve(2, {0, 0, 1, 1}, {0, 0, 0, 0.5, 0, 0, 1, 1, 0}));
    const double total = std::sqrt(5.0) / 2 + std::asinh(2.0) / 4;
    const ArcLengthTable lengths(parabola);
    EXPECT_NEAR(lengths.total(), total, 1e-10);
    const double half = lengths.parameterAt(total / 2);
    EXPECT_NEAR(half * std::sqrt(1 + 4 * half * half) / 2 + std::asinh(2 * half) / 4, total / 2,
                1e-10);
    EXPECT_EQ(lengths.parameterAt(-1), 0);
    EXPECT_EQ(lengths.parameterAt(99), 1);
}

TEST(ArcLength, OfAPointIsNothing)
{
    const CurveEvaluator point(curve(1, {0, 1}, {2, 2, 2, 2, 2, 2}));
    const ArcLengthTable lengths(point);
    EXPECT_EQ(lengths.total(), 0);
    EXPECT_TRUE(std::isfinite(lengths.parameterAt(0)));
    EXPECT_TRUE(std::isfinite(lengths.parameterAt(1)));
}

TEST(NearestPoint, FindsFeetOfPerpendiculars)
{
    // On y = x^2 - 1 ... the parabola (u, u^2): from (0, 1.25) the feet are where
    // u (2 u^2 - 1.5) = 0; u = sqrt 0.75 is nearer than 0. On 0..1 it is the only other one.
    const CurveEvaluator parabola(curve(2, {0, 0, 1, 1}, {0, 0, 0, 0.5, 0, 0, 1, 1, 0}));
    EXPECT_NEAR(host::geometry::nearestParameter(parabola, {0, 1.25, 0}), std::sqrt(0.75), 1e-12);
    EXPECT_EQ(host::geometry::nearestParameter(parabola, {-3, 0, 0}), 0);
    EXPECT_EQ(host::geometry::nearestParameter(parabola, {9, 9, 0}), 1);
    const CurveEvaluator corner(curve(1, {0, 1, 2}, {0, 0, 0, 3, 0, 0, 3, 4, 0}));
    EXPECT_NEAR(host::geometry::nearestParameter(corner, {5, 1, 0}), 1.25, 1e-12);
}

} // namespace
