#include "host/geometry/deform/nonLinearShapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace {

using namespace host;
using namespace host::geometry;
using std::numbers::pi;

Vec3d moved(const NonLinearShape& shape, const Vec3d& point)
{
    std::vector<Vec3d> points{point};
    applyShape(shape, points);
    return points[0];
}

void expectNear(const Vec3d& a, const Vec3d& b)
{
    EXPECT_NEAR(a.x, b.x, 1e-12);
    EXPECT_NEAR(a.y, b.y, 1e-12);
    EXPECT_NEAR(a.z, b.z, 1e-12);
}

// With a quarter turn per unit the axis becomes a circle of radius 2 / pi about (2 / pi, 0, 0): its
// upper end stands beside the centre, level with it, and goes on along +x.
TEST(Bend, MakesAnArcOfTheAxisTowardsPositiveX)
{
    const double radius = 2 / pi;
    const BendShape shape{{-1, 1}, pi / 2};
    expectNear(moved(shape, {0, 0, 5}), {0, 0, 5});
    expectNear(moved(shape, {0, 1, 0}), {radius, radius, 0});
    expectNear(moved(shape, {0, -1, 0}), {radius, -radius, 0});
    expectNear(moved(shape, {0.25, 1, 0}), {radius, radius - 0.25, 0});
    expectNear(moved(shape, {0, 3, 0}), {radius + 2, radius, 0});
}

TEST(Bend, KeepsLengthsAlongTheAxis)
{
    const BendShape shape{{-1, 1}, 0.3};
    double way = 0;
    constexpr int kSteps = 1000;
    for (int i = 0; i < kSteps; ++i) {
        way += length(moved(shape, {0, (i + 1.0) / kSteps, 0}) -
                      moved(shape, {0, double{static_cast<double>(i)} / kSteps, 0}));
    }
    EXPECT_NEAR(way, 1, 1e-7);
    expectNear(moved(BendShape{{-1, 1}, 0}, {1, 2, 3}), {1, 2, 3});
}

TEST(Twist, TurnsEvenlyBetweenItsEnds)
{
    const TwistShape shape{{-1, 1}, 0, pi};
    expectNear(moved(shape, {1, -2, 0}), {1, -2, 0});
    expectNear(moved(shape, {1, 0, 0}), {0, 0, -1}); // half way: a quarter turn about +y
    expectNear(moved(shape, {1, 4, 0}), {-1, 4, 0});
}

TEST(Flare, ScalesEvenlyBetweenItsEnds)
{
    const FlareShape shape{{-1, 1}, 1, 2, 3, 4, 0};
    expectNear(moved(shape, {1, -1, 1}), {1, -1, 2});
    expectNear(moved(shape, {1, 0, 1}), {2, 0, 3});
    expectNear(moved(shape, {1, 5, 1}), {3, 5, 4});
    EXPECT_TRUE(isWellKnown(shape));
    EXPECT_FALSE(isWellKnown(FlareShape{{-1, 1}, 1, 1, 1, 1, 0.5}));
}

TEST(Sine, MovesAlongXByTheSineOfTheHeight)
{
    const SineShape shape{{-1, 1}, 3, 2, 0, 0};
    expectNear(moved(shape, {0, 0, 0}), {0, 0, 0});
    expectNear(moved(shape, {0, 0.5, 7}), {3, 0.5, 7}); // a quarter of a wave
    expectNear(moved(shape, {0, 0.25, 0}), {3 * std::sqrt(0.5), 0.25, 0});
}

TEST(Squash, KeepsTheEndsWidthAndStretchesTheHeight)
{
    const SquashShape shape{{-1, 1}, 0, 0, 0.5, 1, 3};
    expectNear(moved(shape, {1, 1, 0}), {1, 4, 0});
    expectNear(moved(shape, {1, 0, 0}), {0.5, 0, 0}); // four times as long: half as wide
    expectNear(moved(SquashShape{}, {1, 0.3, 2}), {1, 0.3, 2});
    EXPECT_TRUE(isWellKnown(SquashShape{}));
}

TEST(Wave, MovesAlongYBetweenItsRadii)
{
    const WaveShape shape{0, 1, 2, 1, 0, 0, 0};
    expectNear(moved(shape, {0, 1, 0.25}), {0, 3, 0.25});
    expectNear(moved(shape, {3, 1, 0}), {3, 1, 0});
}

TEST(NonLinear, LeavesPointsWithoutAFinitePlace)
{
    const double inf = std::numeric_limits<double>::infinity();
    const Vec3d point{1, 2, 3};
    expectNear(moved(BendShape{{-inf, inf}, std::numeric_limits<double>::quiet_NaN()}, point),
               point);
    expectNear(moved(SquashShape{{-1, 1}, 0, 0, 0.5, inf, inf}, point), point);
    expectNear(moved(FlareShape{{1, -1}, inf, 1, 1, 1, 0}, point), point);
}

} // namespace
