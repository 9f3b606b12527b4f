#include "host/math/angle.h"

#include <gtest/gtest.h>

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

TEST(Angle, RightAndStraightAnglesAreExact)
{
    EXPECT_EQ(angleOf(3, 0), std::numbers::pi / 2);
    EXPECT_EQ(angleOf(0, 5), 0);
    EXPECT_EQ(angleOf(0, -5), std::numbers::pi);
    EXPECT_EQ(angleOf(0, 0), 0);
}

} // namespace
} // namespace host
