#include "host/geometry/deform/moveByLattice.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using namespace host;
using namespace host::geometry;

Vec3d moved(const LatticeData& lattice, const LatticeSettings& settings, const Vec3d& point)
{
    std::vector<Vec3d> points{point};
    moveByLattice(lattice, settings, points);
    return points[0];
}

LatticeSettings local(int influence)
{
    LatticeSettings settings;
    settings.isLocal = true;
    settings.influence = {influence, influence, influence};
    return settings;
}

void expectNear(const Vec3d& a, const Vec3d& b)
{
    EXPECT_NEAR(a.x, b.x, 1e-12);
    EXPECT_NEAR(a.y, b.y, 1e-12);
    EXPECT_NEAR(a.z, b.z, 1e-12);
}

TEST(Lattice, RestsInItsBoxWithSFastest)
{
    const LatticeData lattice = restLattice(2, 3, 2);
    ASSERT_EQ(lattice.points.size(), 12U);
    EXPECT_EQ(lattice.points[0], (Vec3d{-0.5, -0.5, -0.5}));
    EXPECT_EQ(lattice.points[1], (Vec3d{0.5, -0.5, -0.5}));
    EXPECT_EQ(lattice.points[2], (Vec3d{-0.5, 0, -0.5}));
    EXPECT_EQ(lattice.points[11], (Vec3d{0.5, 0.5, 0.5}));
}

TEST(Lattice, LeavesPointsWhereNothingMovedIt)
{
    const Vec3d point{0.1, -0.4, 0.3};
    expectNear(moved(restLattice(4, 5, 2), {}, point), point);
    expectNear(moved(restLattice(4, 5, 2), local(2), point), point);
}

// The corner at s = t = u = 1 of eight, moved by (8, 0, 0): a point at (s, t, u) takes s * t * u of
// it, so (3/4, 1/2, 1/4) takes 3/32 of 8.
TEST(Lattice, OfEightPointsIsTrilinear)
{
    LatticeData lattice = restLattice(2, 2, 2);
    lattice.points[7] = lattice.points[7] + Vec3d{8, 0, 0};
    expectNear(moved(lattice, {}, {0.25, 0, -0.25}), {1, 0, -0.25});
    expectNear(moved(lattice, local(2), {0.25, 0, -0.25}), {1, 0, -0.25});
}

// The middle one of three points along t moved: Bernstein 2 t (1 - t), a half in the middle, 3/8
// at a quarter. As splines of degree 1 the middle takes all of it, the quarter a half.
TEST(Lattice, WeighsByItsPolynomialOrSplines)
{
    LatticeData lattice = restLattice(2, 3, 2);
    for (const std::size_t middle : {2U, 3U, 8U, 9U}) {
        lattice.points[middle] = lattice.points[middle] + Vec3d{0, 0, 8};
    }
    expectNear(moved(lattice, {}, {0, 0, 0}), {0, 0, 4});
    expectNear(moved(lattice, {}, {0, -0.25, 0}), {0, -0.25, 3});
    expectNear(moved(lattice, local(1), {0, 0, 0}), {0, 0, 8});
    expectNear(moved(lattice, local(1), {0, -0.25, 0}), {0, -0.25, 4});
}

// Quadratic splines over four points have one inner knot at 1/2, where the two middle points take
// half each; the basis at 1/4 is 1/4, 5/8, 1/8 (knots 0 0 0 1 2 2 2 at 1/2).
TEST(Lattice, HasSplinesOfTheDegreeOfItsInfluence)
{
    LatticeData lattice = restLattice(2, 4, 2);
    for (const std::size_t second : {2U, 3U, 10U, 11U}) {
        lattice.points[second] = lattice.points[second] + Vec3d{8, 0, 0};
    }
    expectNear(moved(lattice, local(2), {0, 0, 0}), {4, 0, 0});
    expectNear(moved(lattice, local(2), {0, -0.25, 0}), {5, -0.25, 0});
}

TEST(Lattice, ReachesOutOfItsBoxAsFarAsItIsTold)
{
    LatticeSettings settings;
    EXPECT_EQ(latticeReach(settings, {0.5, -0.5, 0}), 1);
    EXPECT_EQ(latticeReach(settings, {0.6, 0, 0}), 0);
    settings.outside = LatticeOutside::FallsOff;
    settings.falloffDistance = 0.4;
    EXPECT_NEAR(latticeReach(settings, {0.6, 0, 0}), 0.75, 1e-12);
    EXPECT_EQ(latticeReach(settings, {2, 0, 0}), 0);
    settings.outside = LatticeOutside::Moves;
    EXPECT_EQ(latticeReach(settings, {2, 0, 0}), 1);
}

TEST(Lattice, IsValidOnlyWithAllItsPoints)
{
    EXPECT_TRUE(isValidLattice(restLattice(2, 5, 2)));
    EXPECT_FALSE(isValidLattice(restLattice(1, 5, 2)));
    EXPECT_FALSE(isValidLattice({1000, 1000, 1000, {}}));
    EXPECT_FALSE(isValidLattice({-2, -2, 2, std::vector<Vec3d>(8)}));
    EXPECT_EQ(latticeWork(restLattice(4, 5, 2), {}, 10), 400U);
    EXPECT_EQ(latticeWork(restLattice(4, 5, 2), local(2), 10), 10U * 3 * 3 * 2);
}

TEST(Lattice, LeavesPointsThatAreNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(moved(restLattice(3, 3, 3), local(2), {nan, 0, 0}).x));
}

} // namespace
