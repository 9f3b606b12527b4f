#include "host/geometry/curve/CurveEvaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using host::Vec3d;
using host::geometry::CurveData;
using host::geometry::CurveEvaluator;
using host::geometry::CurvePoint;
using host::geometry::SplineForm;

void expectNear(const Vec3d& found, const Vec3d& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
    EXPECT_NEAR(found.z, expected.z, tolerance);
}

CurveData curve(std::int32_t degree, std::vector<double> knots, std::vector<double> poles,
                SplineForm form = SplineForm::Open)
{
    CurveData result;
    result.degree = degree;
    result.form = form;
    result.knots = std::move(knots);
    result.poles = std::move(poles);
    result.spans = static_cast<std::int32_t>(result.cvCount()) - degree;
    return result;
}

TEST(CurveEvaluator, EvaluatesABezierCurve)
{
    // (0,0) (1,2) (3,2) (4,0) at 1/2: (1 p0 + 3 p1 + 3 p2 + 1 p3) / 8 = (2, 1.5); the derivative is
    // 3/4 (p3 - p0 + p2 - p1) = 3/4 (6, 0); the second 6/2 (p0 - p1 - p2 + p3) = 3 (0, -4).
    const CurveEvaluator bezier(curve(3, {0, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0}));
    ASSERT_TRUE(bezier.isValid());
    const CurvePoint middle = bezier.evaluate(0.5);
    expectNear(middle.position, {2, 1.5, 0});
    expectNear(middle.first, {4.5, 0, 0});
    expectNear(middle.second, {0, -12, 0});
    expectNear(bezier.point(0.5), {2, 1.5, 0});
    expectNear(bezier.point(1), {4, 0, 0});
    // At the start: 3 (p1 - p0), and 6 (p0 - 2 p1 + p2).
    expectNear(bezier.evaluate(0).first, {3, 6, 0});
    expectNear(bezier.evaluate(0).second, {6, -12, 0});
}

TEST(CurveEvaluator, EvaluatesAParabolaOfSeveralSpans)
{
    // x(u) = u and y(u) = u^2 on the knots 0 1 3: control points are the blossom at neighbouring
    // knots, (a + b) / 2 and a b: (0,0) (0,1) (1,3) (3,3).
    const CurveEvaluator parabola(
        curve(2, {0, 0, 1, 3, 3}, {0, 0, 0, 0.5, 0, 0, 2, 3, 0, 3, 9, 0}));
    ASSERT_TRUE(parabola.isValid());
    for (const double u : {0.0, 0.3, 1.0, 2.2, 3.0}) {
        const CurvePoint found = parabola.evaluate(u);
        expectNear(found.position, {u, u * u, 0});
        expectNear(found.first, {1, 2 * u, 0});
        expectNear(found.second, {0, 2, 0});
    }
}

TEST(CurveEvaluator, EvaluatesARationalQuarterCircle)
{
    // (1,0) weight 1, (1,1) weight sqrt(1/2), (0,1) weight 1: every point has length 1, the middle
    // is at 45 degrees; the derivative at the start is 2 w1 / w0 (p1 - p0).
    const double half = std::sqrt(0.5);
    CurveData arc = curve(2, {0, 0, 1, 1}, {});
    arc.rational = true;
    arc.poles = {1, 0, 0, 1, 1, 1, 0, half, 0, 1, 0, 1};
    const CurveEvaluator circle(arc);
    ASSERT_TRUE(circle.isValid());
    expectNear(circle.point(0.5), {half, half, 0});
    expectNear(circle.evaluate(0).first, {0, 2 * half, 0});
    for (int i = 0; i <= 10; ++i) {
        const CurvePoint found = circle.evaluate(i / 10.0);
        EXPECT_NEAR(host::length(found.position), 1, 1e-14);
        EXPECT_NEAR(host::dot(found.position, found.first), 0, 1e-14);
        // The derivative of p . p' = 0.
        EXPECT_NEAR(host::dot(found.position, found.second) + host::dot(found.first, found.first),
                    0, 1e-12);
    }
}

TEST(CurveEvaluator, WrapsPeriodicCurves)
{
    // Four control points on unit steps, the first two repeated: a closed quadratic of four spans
    // whose points at whole parameters are the middles of neighbouring control points.
    const std::vector<double> poles{1, 1, 0, -1, 1, 0, -1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0};
    const CurveEvaluator ring(curve(2, {-1, 0, 1, 2, 3, 4, 5}, poles, SplineForm::Periodic));
    ASSERT_TRUE(ring.isValid());
    EXPECT_EQ(ring.start(), 0);
    EXPECT_EQ(ring.end(), 4);
    expectNear(ring.point(0), {0, 1, 0});
    expectNear(ring.point(1), {-1, 0, 0});
    expectNear(ring.point(4), {0, 1, 0});
    expectNear(ring.point(5), {-1, 0, 0});
    expectNear(ring.point(-3), {-1, 0, 0});
    expectNear(ring.point(4.25), ring.point(0.25));
}

TEST(CurveEvaluator, ClampsOpenCurvesAndTakesAnythingAsAParameter)
{
    const CurveEvaluator line(curve(1, {2, 5}, {1, 1, 1, 4, 4, 4}));
    ASSERT_TRUE(line.isValid());
    expectNear(line.point(3), {2, 2, 2});
    expectNear(line.point(0), {1, 1, 1});
    expectNear(line.point(9), {4, 4, 4});
    expectNear(line.evaluate(9).first, {1, 1, 1});
    expectNear(line.point(std::numeric_limits<double>::quiet_NaN()), {1, 1, 1});
    expectNear(line.point(std::numeric_limits<double>::infinity()), {4, 4, 4});
}

TEST(CurveEvaluator, TakesKnotsOfFullMultiplicity)
{
    // Two lines that do not meet: at the knot the right one holds, at the end the last.
    const CurveEvaluator broken(curve(1, {0, 1, 1, 2}, {0, 0, 0, 1, 0, 0, 5, 0, 0, 6, 0, 0}));
    ASSERT_TRUE(broken.isValid());
    expectNear(broken.point(0.5), {0.5, 0, 0});
    expectNear(broken.point(1), {5, 0, 0});
    expectNear(broken.point(2), {6, 0, 0});
    // A domain that ends in a multiple knot.
    const CurveEvaluator ended(curve(1, {0, 1, 1}, {0, 0, 0, 1, 0, 0, 5, 0, 0}));
    ASSERT_TRUE(ended.isValid());
    expectNear(ended.point(1), {1, 0, 0});
}

TEST(CurveEvaluator, EvaluatesCurvesInTheParameterPlane)
{
    CurveData line = curve(1, {0, 1}, {});
    line.dimension = 2;
    line.poles = {0, 1, 2, 5};
    expectNear(CurveEvaluator(line).point(0.5), {1, 3, 0});
}

TEST(CurveEvaluator, RefusesRecordsThatDoNotFit)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto isValid = [](const CurveData& data) { return CurveEvaluator(data).isValid(); };
    EXPECT_FALSE(isValid(CurveData()));
    EXPECT_FALSE(isValid(curve(1, {0, 1}, {0, 0, 0})));                         // one point short
    EXPECT_FALSE(isValid(curve(1, {0, 1}, {0, 0, 0, 1, 1})));                   // half a point
    EXPECT_FALSE(isValid(curve(1, {1, 0}, {0, 0, 0, 1, 1, 1})));                // decreasing
    EXPECT_FALSE(isValid(curve(1, {1, 1}, {0, 0, 0, 1, 1, 1})));                // no domain
    EXPECT_FALSE(isValid(curve(1, {0, nan}, {0, 0, 0, 1, 1, 1})));              //
    EXPECT_FALSE(isValid(curve(1, {0, 1}, {0, 0, 0, 1, nan, 1})));              //
    EXPECT_FALSE(isValid(curve(3, {0, 0, 1, 1}, {0, 0, 0, 1, 1, 1, 2, 2, 2}))); // degree too high
    EXPECT_FALSE(isValid(curve(0, {0, 1}, {0, 0, 0, 1, 1, 1, 2, 2, 2})));
    EXPECT_FALSE(isValid(curve(-3, {0, 1}, {0, 0, 0, 1, 1, 1, 2, 2, 2})));
    EXPECT_FALSE(isValid(curve(2147483647, {0, 1}, {0, 0, 0, 1, 1, 1, 2, 2, 2})));
    CurveData odd = curve(1, {0, 1}, {0, 0, 0, 1, 1, 1});
    odd.dimension = 0;
    EXPECT_FALSE(isValid(odd));
}

} // namespace
