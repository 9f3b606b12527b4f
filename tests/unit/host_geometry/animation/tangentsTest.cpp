// Slopes of computed tangents at three keys: time 0 value 0, time 1 value 2, time 4 value 5. The
// span on the left rises by 2 a unit of time, the one on the right by 1, both together by 5/4.
#include "host/geometry/animation/tangents.h"
#include "host/geometry/animation/WeightedSpan.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using namespace host::geometry;

constexpr double kLevel = 0.05;

std::array<CurveKey, 3> keysOf(TangentType type, double last = 5)
{
    std::array<CurveKey, 3> keys;
    keys[0].time = 0;
    keys[1].time = 1;
    keys[1].value = 2;
    keys[2].time = 4;
    keys[2].value = last;
    for (CurveKey& key : keys) {
        key.inType = type;
        key.outType = type;
    }
    return keys;
}

double slope(const TangentVector& vector)
{
    return vector.y / vector.x;
}

double middleSlope(TangentType type, double last = 5)
{
    const KeyTangents tangents = tangentsOf(keysOf(type, last), 1, kLevel);
    EXPECT_NEAR(slope(tangents.in), slope(tangents.out), 1e-14);
    return slope(tangents.out);
}

TEST(Tangents, AreAsLongAsTheGapOnTheirSide)
{
    const auto keys = keysOf(TangentType::Spline);
    EXPECT_EQ(tangentsOf(keys, 1, kLevel).in.x, 1);
    EXPECT_EQ(tangentsOf(keys, 1, kLevel).out.x, 3);
    EXPECT_EQ(tangentsOf(keys, 0, kLevel).in.x, 1); // no neighbour: the other gap
    EXPECT_EQ(tangentsOf(keys, 2, kLevel).out.x, 3);
    EXPECT_EQ(tangentsOf(std::span(keys).first(1), 0, kLevel).in, (TangentVector{1, 0}));
}

TEST(Tangents, FollowTheirRules)
{
    EXPECT_EQ(middleSlope(TangentType::Spline), 1.25);
    EXPECT_EQ(middleSlope(TangentType::Clamped), 1.25);
    EXPECT_EQ(middleSlope(TangentType::Auto), 1.25);
    EXPECT_EQ(middleSlope(TangentType::Plateau), 1.25);
    EXPECT_EQ(middleSlope(TangentType::Flat), 0);
    // A quarter of the way in time: 2 * 3/4 + 1 * 1/4.
    EXPECT_EQ(middleSlope(TangentType::AutoMix), 1.75);
    // Eased: 0.5 - 0.25 * (1.5 - 0.125) = 0.15625; 2 - 0.15625.
    EXPECT_EQ(middleSlope(TangentType::AutoEase), 1.84375);
    const KeyTangents linear = tangentsOf(keysOf(TangentType::Linear), 1, kLevel);
    EXPECT_EQ(slope(linear.in), 2);
    EXPECT_EQ(slope(linear.out), 1);
}

TEST(Tangents, OfAutoKeysNeverOvershoot)
{
    EXPECT_EQ(middleSlope(TangentType::Auto, -3), 0);             // an extreme
    EXPECT_EQ(middleSlope(TangentType::Auto, 2), 0);              // level on one side
    EXPECT_NEAR(middleSlope(TangentType::Auto, 2.3), 0.3, 1e-14); // 3 * 0.1 below 2.3 / 4
    EXPECT_NEAR(middleSlope(TangentType::Spline, 2.3), 0.575, 1e-14);
}

TEST(Tangents, OfClampedKeysAreLevelBesideNearlyTheSameValue)
{
    EXPECT_EQ(middleSlope(TangentType::Clamped, 2.04), 0);
    EXPECT_NEAR(middleSlope(TangentType::Clamped, 2.06), 2.06 / 4, 1e-14);
}

TEST(Tangents, AtTheEnds)
{
    EXPECT_EQ(tangentsOf(keysOf(TangentType::Spline), 0, kLevel).out.y, 2); // 2 over a gap of 1
    EXPECT_EQ(tangentsOf(keysOf(TangentType::Spline), 2, kLevel).in.y, 3);  // 1 over a gap of 3
    EXPECT_EQ(tangentsOf(keysOf(TangentType::Auto), 0, kLevel).out.y, 0);
    EXPECT_EQ(tangentsOf(keysOf(TangentType::Linear), 2, kLevel).out.y, 0); // nothing to go to
    EXPECT_EQ(tangentsOf(keysOf(TangentType::Linear), 2, kLevel).in.y, 3);
}

TEST(Tangents, BetweenKeysAtOneTimeAreLevel)
{
    auto keys = keysOf(TangentType::Linear);
    keys[1].time = 0;
    EXPECT_EQ(tangentsOf(keys, 1, kLevel).in, (TangentVector{0, 0}));
}

TEST(WeightedSpans, KeepHandlesThatDoNotTurnTime)
{
    const WeightedSpan span = straightened(0.9, 0.1);
    EXPECT_EQ(span.first, 0.9);
    EXPECT_NEAR(span.second, 0.1, 1e-15);
    EXPECT_EQ(span.firstKept, 1);
    EXPECT_EQ(span.secondKept, 1);
    EXPECT_FALSE(span.isEven());
    EXPECT_TRUE(straightened(1.0 / 3 + 9e-7, 2.0 / 3 - 9e-7).isEven());
}

TEST(WeightedSpans, PullBackHandlesThatWould)
{
    // First at 1.2, second 0.8 before the end: q^2 - 0.8 q + 0.04 = 0 bounds it by 0.4 +
    // sqrt(0.12).
    const WeightedSpan span = straightened(1.2, 0.2);
    const double bound = 0.4 + std::sqrt(0.12);
    EXPECT_EQ(span.first, 1.2);
    EXPECT_NEAR(span.second, 1 - bound, 1e-14);
    EXPECT_NEAR(span.secondKept, bound / 0.8, 1e-14);
    // Beyond 4/3 only one pair is left.
    const WeightedSpan most = straightened(5, -7);
    EXPECT_NEAR(most.first, 4.0 / 3, 1e-15);
    EXPECT_NEAR(most.second, 2.0 / 3, 1e-15);
    EXPECT_NEAR(most.firstKept, 4.0 / 15, 1e-15);
    EXPECT_NEAR(most.secondKept, 1.0 / 24, 1e-15);
    // Handles that point out of the span lose all of their length.
    EXPECT_EQ(straightened(-0.5, 1.5).first, 0);
    EXPECT_EQ(straightened(-0.5, 1.5).second, 1);
    EXPECT_EQ(straightened(-0.5, 1.5).firstKept, 0);
}

TEST(WeightedSpans, FindTheParameterOfATime)
{
    for (const auto& [first, second] :
         {std::pair{0.0, 1.0}, {0.9, 0.1}, {0.0, 0.0}, {1.0, 1.0}, {4.0 / 3, 2.0 / 3}}) {
        const WeightedSpan span = straightened(first, second);
        double last = -1;
        for (int i = 0; i <= 64; ++i) {
            const double time = i / 64.0;
            const double s = span.parameterAt(time);
            const double r = 1 - s;
            const double back =
                3 * r * r * s * span.first + 3 * r * s * s * span.second + s * s * s;
            EXPECT_NEAR(back, time, 1e-15) << first << " " << second;
            EXPECT_GE(s, last);
            last = s;
        }
    }
}

} // namespace
