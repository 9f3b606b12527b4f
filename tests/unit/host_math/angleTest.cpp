#include "host/math/angle.h"

#include <gtest/gtest.h>

#include <limits>

namespace host {
namespace {

TEST(Angle, AgreesWithTheArcTangentAllRound)
{
    for (int i = 0; i <= 20000; ++i) {
        const double angle = std::numbers::pi * i / 20000;
        const double size = 1e-30 + i * 1e10;
        EXPECT_NEAR(angleOf(size * std::fabs(std::sin(angle)), size * std::cos(angle)), angle,
                    1e-12);
    }
}

TEST(Angle, NearAnAxisIsTheSameWithoutFolding)
{
    int near = 0;
    for (int i = 0; i <= 20000; ++i) {
        const double angle = std::numbers::pi * i / 20000;
        const double size = i % 2 == 0 ? 1e-30 : 7e20;
        const double sine = size * std::fabs(std::sin(angle));
        const double cosine = size * std::cos(angle);
        if (isNearAnAxis(sine, cosine)) {
            ++near;
            ASSERT_EQ(angleOf<false>(sine, cosine), angleOf(sine, cosine)) << angle;
        }
    }
    // atan(0.41) is 22.294 degrees: of each quadrant's 90 twice as many.
    EXPECT_NEAR(near / 20001.0, 2 * 22.294 / 90, 1e-3);
    EXPECT_TRUE(isNearAnAxis(0, 0));
    EXPECT_EQ(angleOf<false>(0, 0), 0);
    EXPECT_FALSE(isNearAnAxis(std::numeric_limits<double>::quiet_NaN(), 1));
}

TEST(Angle, RightAndStraightAnglesAreExact)
{
    EXPECT_EQ(angleOf(3, 0), std::numbers::pi / 2);
    EXPECT_EQ(angleOf(0, 5), 0);
    EXPECT_EQ(angleOf(0, -5), std::numbers::pi);
    EXPECT_EQ(angleOf(0, 0), 0);
}

TEST(SineCosine, AgreesWithTheLibraryWithinTwoUnitsOfTheLastPlace)
{
    constexpr double kTwoUnits = 4.5e-16; // of numbers up to 1
    for (int i = -200000; i <= 200000; ++i) {
        const double angle = i * 0.00037;
        const auto [sine, cosine] = sineCosine(angle);
        ASSERT_NEAR(sine, std::sin(angle), kTwoUnits) << angle;
        ASSERT_NEAR(cosine, std::cos(angle), kTwoUnits) << angle;
    }
    EXPECT_NEAR(sineCosine(1e6).sine, std::sin(1e6), kTwoUnits);
}

TEST(SineCosine, KeepsWhatPiLeavesAtRightAngles)
{
    // The double nearest to pi/2 is short of it by 6.123233995736766e-17.
    EXPECT_EQ(sineCosine(std::numbers::pi / 2).cosine, 6.123233995736766e-17);
    EXPECT_EQ(sineCosine(std::numbers::pi / 2).sine, 1);
    EXPECT_EQ(sineCosine(std::numbers::pi).sine, 1.2246467991473532e-16);
    EXPECT_EQ(sineCosine(std::numbers::pi).cosine, -1);
    EXPECT_EQ(sineCosine(0).sine, 0);
    EXPECT_EQ(sineCosine(0).cosine, 1);
}

TEST(SineCosine, OfNoAngleIsThatOfZero)
{
    for (const double angle : {1e300, -1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(sineCosine(angle).cosine, 1);
        EXPECT_EQ(sineCosine(angle).sine, 0);
    }
}

} // namespace
} // namespace host
