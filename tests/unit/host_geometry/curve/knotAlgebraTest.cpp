#include "host/geometry/curve/knotAlgebra.h"

#include "tests/unit/host_geometry/curve/splineMaker.h"

namespace {

using host::Vec3d;
using host::geometry::CurveEvaluator;
using host::geometry::SplineForm;
using host::geometry::SplineRows;
using test::curve;
using test::evaluatorOf;
using test::expectNear;

const std::vector<double> kArch{0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0};

/// The same point at every parameter of the part, moved along the domain by `shift`.
void expectSame(const CurveEvaluator& found, const CurveEvaluator& expected, double shift = 0)
{
    ASSERT_TRUE(found.isValid());
    for (int i = 0; i <= 20; ++i) {
        const double u = found.start() + (found.end() - found.start()) * i / 20;
        expectNear(found.point(u), expected.point(u + shift), 1e-13);
    }
}

TEST(KnotAlgebra, InsertsIntoABezierCurveByTheCornersOfItsCuts)
{
    // De Casteljau at 1/2: (0.5, 1) (2, 2) (3.5, 1) in the first round, (1.25, 1.5) (2.75, 1.5) in
    // the second, (2, 1.5) in the third.
    const auto bezier = curve(3, {0, 0, 0, 1, 1, 1}, kArch);
    SplineRows rows = host::geometry::rowsOf(bezier);
    host::geometry::insertKnot(rows, 0.5, 1);
    EXPECT_EQ(rows.knots, (std::vector<double>{0, 0, 0, 0.5, 1, 1, 1}));
    ASSERT_EQ(rows.cvCount(), 5U);
    expectNear(rows.points[1].vector(), {0.5, 1, 0});
    expectNear(rows.points[2].vector(), {2, 2, 0});
    expectNear(rows.points[3].vector(), {3.5, 1, 0});
    host::geometry::insertKnot(rows, 0.5, 5); // not beyond the degree
    EXPECT_EQ(rows.knots, (std::vector<double>{0, 0, 0, 0.5, 0.5, 0.5, 1, 1, 1}));
    expectNear(rows.points[2].vector(), {1.25, 1.5, 0});
    expectNear(rows.points[3].vector(), {2, 1.5, 0});
    expectNear(rows.points[4].vector(), {2.75, 1.5, 0});
    expectSame(evaluatorOf(rows), CurveEvaluator(bezier));
}

TEST(KnotAlgebra, InsertsWithoutWeightsAndWithThemTheSame)
{
    auto arc = curve(2, {0, 0, 1, 1}, {});
    arc.rational = true;
    arc.poles = {1, 0, 0, 1, 1, 1, 0, 0.5, 0, 1, 0, 1};
    SplineRows rows = host::geometry::rowsOf(arc);
    host::geometry::insertKnot(rows, 0.25, 2);
    ASSERT_EQ(rows.cvCount(), 5U);
    expectSame(evaluatorOf(rows, true), CurveEvaluator(arc));
}

TEST(KnotAlgebra, KeepsAPeriodicCurvePeriodic)
{
    SplineRows rows = host::geometry::rowsOf(test::ring());
    // The new points of span [0, 1]: between the old ones by 3/4 and 1/4, 1/4 and 3/4.
    host::geometry::insertKnot(rows, 0.5, 1);
    EXPECT_EQ(rows.form, SplineForm::Periodic);
    EXPECT_EQ(rows.knots, (std::vector<double>{-1, 0, 0.5, 1, 2, 3, 4, 4.5}));
    ASSERT_EQ(rows.cvCount(), 7U);
    expectNear(rows.points[1].vector(), {-0.5, 1, 0});
    expectNear(rows.points[0].vector(), rows.points[5].vector());
    expectNear(rows.points[1].vector(), rows.points[6].vector());
    expectSame(evaluatorOf(rows), CurveEvaluator(test::ring()));
}

TEST(KnotAlgebra, InsertsAtTheSeamOfAPeriodicCurve)
{
    SplineRows rows = host::geometry::rowsOf(test::ring());
    host::geometry::insertKnot(rows, 4, 1);
    EXPECT_EQ(rows.form, SplineForm::Periodic);
    EXPECT_EQ(rows.knots, (std::vector<double>{0, 0, 1, 2, 3, 4, 4, 5}));
    expectSame(evaluatorOf(rows), CurveEvaluator(test::ring()));
}

TEST(KnotAlgebra, TakesPartsThatAreClampedAtTheirEnds)
{
    const auto bezier = curve(3, {0, 0, 0, 1, 1, 1}, kArch);
    const SplineRows part = host::geometry::partOf(host::geometry::rowsOf(bezier), 0.25, 0.5);
    EXPECT_EQ(part.knots, (std::vector<double>{0.25, 0.25, 0.25, 0.5, 0.5, 0.5}));
    expectSame(evaluatorOf(part), CurveEvaluator(bezier));
    // An end without multiple knots, and over the seam of a ring.
    const auto loose = curve(2, {-1, 0, 1, 2, 3}, {0, 0, 0, 1, 1, 0, 2, 0, 0, 3, 1, 0});
    const SplineRows clamped = host::geometry::clamped(host::geometry::rowsOf(loose));
    EXPECT_EQ(clamped.knots, (std::vector<double>{0, 0, 1, 2, 2}));
    expectSame(evaluatorOf(clamped), CurveEvaluator(loose));
    const SplineRows over = host::geometry::partOf(host::geometry::rowsOf(test::ring()), 3, 5.5);
    EXPECT_EQ(over.knots, (std::vector<double>{3, 3, 4, 5, 5.5, 5.5}));
    expectSame(evaluatorOf(over), CurveEvaluator(test::ring()));
    EXPECT_TRUE(host::geometry::partOf(host::geometry::rowsOf(bezier), 0.5, 0.5).points.empty());
    EXPECT_TRUE(host::geometry::partOf(host::geometry::rowsOf(bezier), 0.5, 1.5).points.empty());
}

TEST(KnotAlgebra, CutsIntoPieces)
{
    const auto bezier = curve(3, {0, 0, 0, 1, 1, 1}, kArch);
    const SplineRows rows = host::geometry::rowsOf(bezier);
    const std::vector<double> at{0.75, 0.25, 0, 0.75};
    const SplineRows middle = host::geometry::piece(rows, at, 1);
    EXPECT_EQ(middle.start(), 0.25);
    EXPECT_EQ(middle.end(), 0.75);
    expectSame(evaluatorOf(middle), CurveEvaluator(bezier));
    EXPECT_TRUE(host::geometry::piece(rows, at, 3).points.empty());
    // A ring is opened by one parameter and halved by two.
    const SplineRows ring = host::geometry::rowsOf(test::ring());
    const std::vector<double> one{1};
    EXPECT_TRUE(host::geometry::piece(ring, one, 1).points.empty());
    const SplineRows opened = host::geometry::piece(ring, one, 0);
    EXPECT_EQ(opened.start(), 1);
    EXPECT_EQ(opened.end(), 5);
    expectSame(evaluatorOf(opened), CurveEvaluator(test::ring()));
    const std::vector<double> two{1, 3};
    EXPECT_EQ(host::geometry::piece(ring, two, 1).start(), 3);
    EXPECT_EQ(host::geometry::piece(ring, two, 1).end(), 5);
    EXPECT_TRUE(host::geometry::piece(ring, two, 2).points.empty());
    EXPECT_EQ(host::geometry::piece(ring, {}, 0).form, SplineForm::Periodic); // not cut at all
}

TEST(KnotAlgebra, RunsBackwardsOverTheSameDomain)
{
    const auto loose = curve(2, {-1, 0, 1, 2, 5}, {0, 0, 0, 1, 1, 0, 2, 0, 0, 3, 1, 0});
    SplineRows rows = host::geometry::rowsOf(loose);
    host::geometry::reverse(rows);
    EXPECT_EQ(rows.knots, (std::vector<double>{-3, 0, 1, 2, 3}));
    const auto back = evaluatorOf(rows);
    for (const double u : {0.0, 0.3, 1.0, 1.7, 2.0}) {
        expectNear(back.point(u), CurveEvaluator(loose).point(2 - u));
    }
}

TEST(KnotAlgebra, StretchesTheDomain)
{
    SplineRows rows = host::geometry::rowsOf(curve(1, {2, 3, 6}, {0, 0, 0, 1, 0, 0, 2, 0, 0}));
    host::geometry::setDomain(rows, 0, 1);
    EXPECT_EQ(rows.knots, (std::vector<double>{0, 0.25, 1}));
}

TEST(KnotAlgebra, KnowsWhatIsClosed)
{
    EXPECT_TRUE(host::geometry::isClosed(host::geometry::rowsOf(test::ring())));
    EXPECT_TRUE(host::geometry::isClosed(
        host::geometry::rowsOf(curve(1, {0, 1, 2, 3}, {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0}))));
    EXPECT_FALSE(host::geometry::isClosed(
        host::geometry::rowsOf(curve(1, {0, 1, 2}, {0, 0, 0, 1, 0, 0, 1, 1, 0}))));
}

TEST(KnotAlgebra, TakesPeriodicRecordsWhoseKnotsDoNotRepeat)
{
    // Steps of 1 at the start, 5 at the end: no ring can be continued with those.
    auto odd = test::ring();
    odd.knots = {-1, 0, 1, 2, 3, 4, 9};
    odd.knots[0] = -50;
    SplineRows rows = host::geometry::rowsOf(odd);
    host::geometry::insertKnot(rows, 2.5, 2);
    EXPECT_TRUE(evaluatorOf(rows).isValid());
    const SplineRows part = host::geometry::partOf(host::geometry::rowsOf(odd), 1, 6);
    EXPECT_TRUE(part.points.empty() || evaluatorOf(part).isValid());
}

TEST(KnotAlgebra, LeavesNothingAsItIs)
{
    SplineRows nothing;
    host::geometry::insertKnot(nothing, 0, 1);
    host::geometry::reverse(nothing);
    EXPECT_TRUE(host::geometry::piece(nothing, std::vector<double>{1}, 0).points.empty());
    EXPECT_TRUE(host::geometry::clamped(nothing).points.empty());
}

} // namespace
