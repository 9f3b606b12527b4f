#include "host/geometry/curve/rebuild.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <numbers>

namespace {

using host::geometry::AttachOptions;
using host::geometry::CurveEvaluator;
using host::geometry::KeptRange;
using host::geometry::rowsOf;
using host::geometry::SplineForm;
using host::geometry::SplineRows;
using test::curve;
using test::evaluatorOf;
using test::expectNear;

SplineRows line(double fromX, double toX, std::int32_t degree = 1)
{
    std::vector<double> poles;
    for (std::int32_t i = 0; i <= degree; ++i) {
        poles.insert(poles.end(), {fromX + (toX - fromX) * i / degree, 0, 0});
    }
    std::vector<double> knots(static_cast<std::size_t>(degree), 0.0);
    knots.resize(2 * knots.size(), 2.0);
    return rowsOf(curve(degree, knots, poles));
}

TEST(Rebuild, MakesEqualSpansOfWhatFitsExactly)
{
    // A parabola is a cubic of any knots: (u, u^2) over 0..3 with a knot at 1.
    const auto parabola = curve(2, {0, 0, 1, 3, 3}, {0, 0, 0, 0.5, 0, 0, 2, 3, 0, 3, 9, 0});
    const SplineRows cubic = host::geometry::uniform(rowsOf(parabola), 3, 3);
    EXPECT_EQ(cubic.knots, (std::vector<double>{0, 0, 0, 1, 2, 3, 3, 3}));
    for (const double u : {0.0, 0.7, 1.5, 3.0}) {
        expectNear(evaluatorOf(cubic).point(u), {u, u * u, 0});
    }
    // Degree and spans as they were: one span for every distinct knot.
    EXPECT_EQ(host::geometry::uniform(rowsOf(parabola), 0, 0).knots,
              (std::vector<double>{0, 0, 1.5, 3, 3}));
}

TEST(Rebuild, LeavesACircleOfTheSameSectionsAsItIs)
{
    // Interpolation at the knots is how the circle was made.
    const SplineRows circle = host::geometry::nearArc(0, 2 * std::numbers::pi, 8, 3);
    const SplineRows same = host::geometry::uniform(circle, 3, 8);
    EXPECT_EQ(same.form, SplineForm::Periodic);
    ASSERT_EQ(same.points.size(), circle.points.size());
    for (std::size_t i = 0; i < circle.points.size(); ++i) {
        expectNear(same.points[i].vector(), circle.points[i].vector(), 1e-12);
    }
}

TEST(Rebuild, KeepsControlPointsOnEqualKnots)
{
    const SplineRows rows = rowsOf(curve(1, {0, 1, 6}, {0, 0, 0, 1, 0, 0, 2, 5, 0}));
    const SplineRows even = host::geometry::uniformKnotsKeepingPoints(rows);
    EXPECT_EQ(even.knots, (std::vector<double>{0, 3, 6}));
    expectNear(even.points[1].vector(), {1, 0, 0});
}

TEST(Rebuild, TakesTheKnotsOfAModel)
{
    const SplineRows model = rowsOf(curve(1, {0, 1, 4}, {0, 0, 0, 1, 0, 0, 2, 0, 0}));
    const SplineRows found = host::geometry::withKnotsOf(line(0, 8), model);
    EXPECT_EQ(found.knots, (std::vector<double>{0, 0.5, 2}));
    expectNear(found.points[1].vector(), {2, 0, 0});
}

TEST(Rebuild, CutsIntoBezierPiecesAndUndoesMultipleKnots)
{
    const auto bent = curve(2, {0, 0, 1, 2, 2}, {0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0});
    const SplineRows pieces = host::geometry::inBezierPieces(rowsOf(bent));
    EXPECT_EQ(pieces.knots, (std::vector<double>{0, 0, 1, 1, 2, 2}));
    // The joint of the pieces lies between the neighbouring points: (1, 2) and (3, 2).
    expectNear(pieces.points[2].vector(), {2, 2, 0});
    const SplineRows simple = host::geometry::withSimpleKnots(pieces);
    EXPECT_EQ(simple.knots, bent.knots);
    expectNear(simple.points[1].vector(), {1, 2, 0});
}

TEST(Rebuild, SetsTheRange)
{
    SplineRows rows = rowsOf(curve(1, {2, 3, 6}, {0, 0, 0, 1, 0, 0, 2, 0, 0}));
    host::geometry::setRange(rows, KeptRange::ZeroToSpans, 2, 6);
    EXPECT_EQ(rows.knots, (std::vector<double>{0, 0.5, 2}));
    host::geometry::setRange(rows, KeptRange::Same, 2, 6);
    EXPECT_EQ(rows.knots, (std::vector<double>{2, 3, 6}));
    host::geometry::setRange(rows, KeptRange::ZeroToOne, 2, 6);
    EXPECT_EQ(rows.end(), 1);
}

TEST(Rebuild, BringsCurvesOntoCommonKnots)
{
    const auto bent = curve(2, {0, 0, 1, 4, 4}, {0, 0, 0, 1, 2, 0, 3, 2, 0, 4, 0, 0});
    const auto straight = curve(1, {0, 1, 2}, {0, 1, 0, 1, 1, 0, 5, 1, 0});
    std::vector<SplineRows> splines{rowsOf(bent), rowsOf(straight)};
    ASSERT_TRUE(host::geometry::makeCompatible(splines));
    EXPECT_EQ(splines[0].knots, splines[1].knots);
    EXPECT_EQ(splines[0].knots, (std::vector<double>{0, 0, 0.25, 0.5, 0.5, 1, 1}));
    for (const double u : {0.0, 0.1, 0.3, 0.5, 0.9, 1.0}) {
        expectNear(evaluatorOf(splines[0]).point(u), CurveEvaluator(bent).point(4 * u));
        expectNear(evaluatorOf(splines[1]).point(u), CurveEvaluator(straight).point(2 * u));
    }
    std::vector<SplineRows> rings{rowsOf(test::ring()), rowsOf(test::ring())};
    ASSERT_TRUE(host::geometry::makeCompatible(rings));
    EXPECT_EQ(rings[1].form, SplineForm::Periodic); // equal already
    std::vector<SplineRows> nothing{SplineRows()};
    EXPECT_FALSE(host::geometry::makeCompatible(nothing));
}

TEST(Rebuild, AttachesOneAfterTheOther)
{
    const SplineRows joined = host::geometry::attached(line(0, 3), line(3, 5, 2), AttachOptions());
    EXPECT_EQ(joined.degree, 2);
    EXPECT_EQ(joined.knots, (std::vector<double>{0, 0, 2, 2, 4, 4}));
    expectNear(evaluatorOf(joined).point(1), {1.5, 0, 0});
    expectNear(evaluatorOf(joined).point(2), {3, 0, 0});
    expectNear(evaluatorOf(joined).point(3), {4, 0, 0});
    AttachOptions turned;
    turned.reversesSecond = true;
    expectNear(evaluatorOf(host::geometry::attached(line(0, 3), line(5, 3), turned)).point(4),
               {5, 0, 0});
    // A gap is closed half way.
    expectNear(evaluatorOf(host::geometry::attached(line(0, 2), line(4, 6), {})).point(2),
               {3, 0, 0});
}

TEST(Rebuild, ClosesALineRoundACorner)
{
    const SplineRows corner = rowsOf(curve(1, {0, 1, 2}, {0, 0, 0, 3, 0, 0, 3, 4, 0}));
    const SplineRows ring = host::geometry::closedByLine(corner);
    EXPECT_EQ(ring.form, SplineForm::Closed);
    EXPECT_EQ(ring.knots, (std::vector<double>{0, 1, 2, 3}));
    EXPECT_TRUE(host::geometry::isClosed(ring));
    expectNear(evaluatorOf(ring).point(2.5), {1.5, 2, 0});
    const SplineRows met = host::geometry::closedUp(corner, 0.5);
    expectNear(evaluatorOf(met).point(0), {1.5, 2, 0});
    expectNear(evaluatorOf(met).point(2), {1.5, 2, 0});
}

} // namespace
