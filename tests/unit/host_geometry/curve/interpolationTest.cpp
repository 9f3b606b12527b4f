#include "host/geometry/curve/interpolation.h"

#include "host/geometry/curve/knotAlgebra.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

namespace {

using host::geometry::CurveEvaluator;
using host::geometry::HomogeneousPoint;
using host::geometry::SplineRows;
using test::curve;
using test::evaluatorOf;
using test::expectNear;

TEST(Interpolation, PutsGrevilleParametersAtMeansOfKnots)
{
    EXPECT_EQ(host::geometry::grevilleParameters({0, 0, 0, 3, 6, 6, 6}, 3),
              (std::vector<double>{0, 1, 3, 5, 6}));
}

TEST(Interpolation, RaisesTheDegreeOfALineAndOfAParabola)
{
    // Of Bezier curves: the new points lie between the old ones by i / (degree + 1).
    const SplineRows line =
        host::geometry::elevated(host::geometry::rowsOf(curve(1, {0, 1}, {0, 0, 0, 3, 6, 0})), 3);
    EXPECT_EQ(line.knots, (std::vector<double>{0, 0, 0, 1, 1, 1}));
    ASSERT_EQ(line.cvCount(), 4U);
    expectNear(line.points[1].vector(), {1, 2, 0});
    const SplineRows parabola = host::geometry::elevated(
        host::geometry::rowsOf(curve(2, {0, 0, 1, 1}, {0, 0, 0, 3, 6, 0, 6, 0, 0})), 3);
    ASSERT_EQ(parabola.cvCount(), 4U);
    expectNear(parabola.points[1].vector(), {2, 4, 0});
    expectNear(parabola.points[2].vector(), {4, 4, 0});
}

TEST(Interpolation, RaisesTheDegreeAcrossSpansWithoutMovingAnything)
{
    const auto bent = curve(2, {0, 0, 1, 3, 3}, {0, 0, 0, 0.5, 0, 0, 2, 3, 0, 3, 9, 1});
    const SplineRows raised = host::geometry::elevated(host::geometry::rowsOf(bent), 3);
    EXPECT_EQ(raised.knots, (std::vector<double>{0, 0, 0, 1, 1, 3, 3, 3}));
    for (const double u : {0.0, 0.4, 1.0, 2.5, 3.0}) {
        expectNear(evaluatorOf(raised).point(u), CurveEvaluator(bent).point(u));
    }
}

TEST(Interpolation, GoesThroughPointsWithTangents)
{
    // A cubic is its own interpolant: (u, u^3) at 0, 1, 3 with slopes (1, 0) and (1, 27).
    const std::vector<double> parameters{0, 1, 3};
    const std::vector<HomogeneousPoint> points{{0, 0, 0, 1}, {1, 1, 0, 1}, {3, 27, 0, 1}};
    const HomogeneousPoint first{1, 0, 0, 0};
    const HomogeneousPoint last{1, 27, 0, 0};
    const SplineRows cubic =
        host::geometry::cubicThrough(parameters, points, 1, {&first, 1}, {&last, 1});
    for (const double u : {0.0, 0.5, 1.0, 2.0, 3.0}) {
        expectNear(evaluatorOf(cubic).point(u), {u, u * u * u, 0});
    }
}

TEST(Interpolation, ClosesThroughPoints)
{
    // The corners of a square at unit steps: by symmetry every control point is its corner times
    // one factor f with f (4 + 2 cos 90) / 6 = 1, f = 1.5.
    const std::vector<double> parameters{0, 1, 2, 3, 4};
    const std::vector<HomogeneousPoint> points{
        {1, 0, 0, 1}, {0, 1, 0, 1}, {-1, 0, 0, 1}, {0, -1, 0, 1}};
    const SplineRows ring = host::geometry::periodicCubicThrough(parameters, points, 1);
    ASSERT_EQ(ring.cvCount(), 7U);
    EXPECT_EQ(ring.knots, (std::vector<double>{-2, -1, 0, 1, 2, 3, 4, 5, 6}));
    expectNear(ring.points[1].vector(), {1.5, 0, 0});
    expectNear(ring.points[2].vector(), {0, 1.5, 0});
    expectNear(ring.points[4].vector(), ring.points[0].vector());
    expectNear(evaluatorOf(ring).point(3), {0, -1, 0});
}

TEST(Interpolation, ResamplesExactlyWhatTheNewKnotsHold)
{
    const auto bezier = curve(3, {0, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0});
    const auto knots = host::geometry::uniformKnots(3, 4, 0, 8);
    EXPECT_EQ(knots, (std::vector<double>{0, 0, 0, 2, 4, 6, 8, 8, 8}));
    const SplineRows finer = host::geometry::resampled(host::geometry::rowsOf(bezier), knots, 3);
    for (const double u : {0.0, 1.0, 3.0, 8.0}) {
        expectNear(evaluatorOf(finer).point(u), CurveEvaluator(bezier).point(u / 8));
    }
}

} // namespace
