#include "host/geometry/hair/Ramp.h"

#include <gtest/gtest.h>

#include <limits>

namespace host::geometry {
namespace {

using Entry = RampEntry<double>;

Ramp<double> twoEntries(RampBlend blend)
{
    return Ramp<double>({Entry{0.2, 1, blend}, Entry{0.6, 3, RampBlend::Linear}});
}

TEST(Ramp, HoldsTheFirstAndTheLastValueOutside)
{
    const Ramp<double> ramp = twoEntries(RampBlend::Linear);
    EXPECT_EQ(ramp.at(0, 9), 1);
    EXPECT_EQ(ramp.at(0.2, 9), 1);
    EXPECT_EQ(ramp.at(0.6, 9), 3);
    EXPECT_EQ(ramp.at(7, 9), 3);
    EXPECT_EQ(Ramp<double>().at(0.5, 9), 9);
}

// A quarter of the way from 0.2 to 0.6 is 0.3. By hand: linear 1 + 2/4; smooth 3/16 - 2/64 = 10/64
// of 2; the spline with its end slopes of half the change adds (1/4 * 9/16 - 1/16 * 3/4) * 1.
TEST(Ramp, BlendsAsTheLowerEntrySays)
{
    EXPECT_DOUBLE_EQ(twoEntries(RampBlend::None).at(0.3, 9), 1);
    EXPECT_DOUBLE_EQ(twoEntries(RampBlend::Linear).at(0.3, 9), 1.5);
    EXPECT_DOUBLE_EQ(twoEntries(RampBlend::Smooth).at(0.3, 9), 1 + 2 * 10.0 / 64);
    EXPECT_DOUBLE_EQ(twoEntries(RampBlend::Spline).at(0.3, 9),
                     1 + 2 * 10.0 / 64 + 9.0 / 64 - 3.0 / 64);
}

// Values of a straight line at even distances: a spline through them is that line between the inner
// ones.
TEST(Ramp, SplinesFollowTheirNeighbours)
{
    const auto spline = RampBlend::Spline;
    const Ramp<double> ramp(
        {Entry{0, 0, spline}, Entry{1, 2, spline}, Entry{2, 4, spline}, Entry{3, 6, spline}});
    EXPECT_DOUBLE_EQ(ramp.at(1.25, 9), 2.5);
    EXPECT_DOUBLE_EQ(ramp.at(1.7, 9), 3.4);
}

TEST(Ramp, TakesEntriesInAnyOrder)
{
    const Ramp<double> ramp({Entry{1, 5, RampBlend::Linear}, Entry{0, 1, RampBlend::Linear}});
    EXPECT_DOUBLE_EQ(ramp.at(0.5, 9), 3);
}

TEST(Ramp, JumpsBetweenEntriesAtOnePlace)
{
    const Ramp<double> ramp({Entry{0, 0, RampBlend::Linear}, Entry{1, 1, RampBlend::Linear},
                             Entry{1, 5, RampBlend::Linear}, Entry{2, 5, RampBlend::Linear}});
    EXPECT_DOUBLE_EQ(ramp.at(0.75, 9), 0.75);
    EXPECT_DOUBLE_EQ(ramp.at(1, 9), 5);
}

TEST(Ramp, LeavesOutPositionsThatAreNoNumbers)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Ramp<double> ramp({Entry{nan, 7, RampBlend::Linear}, Entry{0, 1, RampBlend::Linear}});
    EXPECT_EQ(ramp.at(0.5, 9), 1);
    EXPECT_EQ(ramp.at(nan, 9), 1);
}

TEST(Ramp, BlendsColors)
{
    const Ramp<Vec3d> ramp(
        {{0, {1, 0, 0.5}, RampBlend::Linear}, {1, {0, 1, 0.5}, RampBlend::Linear}});
    EXPECT_EQ(ramp.at(0.25, {}), (Vec3d{0.75, 0.25, 0.5}));
}

TEST(Ramp, KnowsBlendsByTheirNumbers)
{
    EXPECT_EQ(rampBlendFromNumber(0), RampBlend::None);
    EXPECT_EQ(rampBlendFromNumber(3), RampBlend::Spline);
    EXPECT_EQ(rampBlendFromNumber(4), RampBlend::Linear);
    EXPECT_EQ(rampBlendFromNumber(-1), RampBlend::Linear);
    EXPECT_EQ(rampBlendFromNumber(std::numeric_limits<double>::quiet_NaN()), RampBlend::Linear);
}

} // namespace
} // namespace host::geometry
