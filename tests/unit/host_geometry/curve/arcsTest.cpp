#include "host/geometry/curve/arcs.h"

#include "tests/unit/host_geometry/curve/splineMaker.h"

#include <cmath>
#include <numbers>

namespace {

using host::Vec3d;
using host::geometry::Frame;
using host::geometry::SplineForm;
using host::geometry::SplineRows;
using std::numbers::pi;
using test::evaluatorOf;
using test::expectNear;

TEST(Arcs, MakeCirclesLikeStoredOnes)
{
    // A circle of eight sections in saved scenes has its control points at 1.1081941875543879 =
    // 3 / (2 + cos 45), the first before the start: 1.108... cos 45 = 0.78361162489122...
    const SplineRows circle = host::geometry::nearArc(0, 2 * pi, 8, 3);
    EXPECT_EQ(circle.form, SplineForm::Periodic);
    ASSERT_EQ(circle.cvCount(), 11U);
    EXPECT_EQ(circle.knots.front(), -2);
    EXPECT_EQ(circle.knots.back(), 10);
    expectNear(circle.points[0].vector(), {0.78361162489122, -0.78361162489122, 0}, 1e-13);
    expectNear(circle.points[1].vector(), {1.1081941875543879, 0, 0}, 1e-15);
    for (int i = 0; i <= 8; ++i) {
        EXPECT_NEAR(host::length(evaluatorOf(circle).point(i)), 1, 1e-15);
    }
}

TEST(Arcs, MakeHalfCirclesLikeStoredSpheres)
{
    // The profile of a stored sphere of four spans: its rings have the radii 0.2827250369469036,
    // 0.87176363753180319 and 1.2264094625656803, which are 1.1081941875543879 times those of the
    // profile, at the heights -1, -0.78361162489122427 and 0.
    const SplineRows half = host::geometry::nearArc(-pi / 2, pi / 2, 4, 3);
    EXPECT_EQ(half.knots, (std::vector<double>{0, 0, 0, 1, 2, 3, 4, 4, 4}));
    const double ring = 1.1081941875543879;
    ASSERT_EQ(half.cvCount(), 7U);
    expectNear(half.points[0].vector(), {0, -1, 0}, 1e-15);
    expectNear(half.points[1].vector(), {0.2827250369469036 / ring, -1, 0}, 1e-15);
    expectNear(half.points[2].vector(), {0.87176363753180319 / ring, -0.78361162489122427, 0},
               1e-15);
    expectNear(half.points[3].vector(), {1.2264094625656803 / ring, 0, 0}, 1e-15);
}

TEST(Arcs, MakePolygonsOfDegreeOne)
{
    const SplineRows square = host::geometry::nearArc(0, 2 * pi, 4, 1);
    EXPECT_EQ(square.form, SplineForm::Periodic);
    EXPECT_EQ(square.knots, (std::vector<double>{0, 1, 2, 3, 4}));
    expectNear(square.points[1].vector(), {0, 1, 0}, 1e-15);
    expectNear(square.points[4].vector(), square.points[0].vector(), 0);
    const SplineRows bend = host::geometry::nearArc(0, -pi / 2, 1, 1);
    EXPECT_EQ(bend.form, SplineForm::Open);
    expectNear(bend.points[1].vector(), {0, -1, 0}, 1e-15);
}

TEST(Arcs, TakeOddNumbers)
{
    EXPECT_EQ(host::geometry::nearArc(0, 2 * pi, 0, 3).cvCount(), 6U); // three sections at least
    EXPECT_EQ(host::geometry::nearArc(0, 9, 8, 3).form, SplineForm::Periodic); // at most a turn
    EXPECT_EQ(host::geometry::nearArc(0, 1, -5, 3).cvCount(), 4U);
    for (const auto& [from, to] : std::vector<std::pair<double, double>>{
             {1, 1}, {0, std::nan("")}, {std::nan(""), 1}, {0, INFINITY}}) {
        EXPECT_TRUE(evaluatorOf(host::geometry::nearArc(from, to, 8, 3)).isValid());
        EXPECT_TRUE(evaluatorOf(host::geometry::exactArc(from, to), true).isValid());
    }
}

TEST(Arcs, AreExactWithWeights)
{
    for (const double sweep : {0.3, pi / 2, 2.0, -4.0, 2 * pi}) {
        const SplineRows arc = host::geometry::exactArc(0.4, 0.4 + sweep);
        const auto evaluator = evaluatorOf(arc, true);
        for (int i = 0; i <= 50; ++i) {
            const double u = evaluator.start() + (evaluator.end() - evaluator.start()) * i / 50;
            EXPECT_NEAR(host::length(evaluator.point(u)), 1, 1e-14);
        }
        expectNear(evaluator.point(evaluator.end()),
                   {std::cos(0.4 + sweep), std::sin(0.4 + sweep), 0}, 1e-14);
    }
    EXPECT_EQ(host::geometry::exactArc(0, 2 * pi).cvCount(), 9U); // four quarters
    EXPECT_EQ(host::geometry::exactArc(0, 2 * pi).form, SplineForm::Closed);
}

TEST(Arcs, TakeAsManySectionsAsATolerancesAsksFor)
{
    const auto gap = [](std::int32_t sections) {
        const auto arc = evaluatorOf(host::geometry::nearArc(0, 2 * pi, sections, 3));
        return std::fabs(host::length(arc.point(0.5)) - 1);
    };
    const std::int32_t sections = host::geometry::sectionsWithin(0.001, 1, 2 * pi);
    EXPECT_LE(gap(sections), 0.001);
    EXPECT_GT(gap(sections / 2), 0.001);
    EXPECT_LE(host::geometry::sectionsWithin(0, 1, 2 * pi), 4096);
}

TEST(Arcs, TurnTheWorldTowardsAnAxis)
{
    const Frame up = host::geometry::frameOf({0, 2, 0});
    expectNear(up.x, {1, 0, 0});
    expectNear(up.y, {0, 0, -1});
    // +y to +x is a quarter turn about -z, which takes +x to -y.
    expectNear(host::geometry::frameOf({1, 0, 0}).x, {0, -1, 0});
    expectNear(host::geometry::frameOf({0, 0, 3}).x, {1, 0, 0});
    expectNear(host::geometry::frameOf({0, -1, 0}).x, {-1, 0, 0});
    expectNear(host::geometry::frameOf({0, 0, 0}).x, {1, 0, 0});
    const Frame any = host::geometry::frameOf({0.3, -0.5, 0.8});
    EXPECT_NEAR(host::dot(any.x, any.axis), 0, 1e-15);
    EXPECT_NEAR(host::length(any.x), 1, 1e-15);
    EXPECT_NEAR(host::length(any.y), 1, 1e-15);
}

} // namespace
