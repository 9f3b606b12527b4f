// Three curves as one rotation.
#include "host/geometry/animation/RotationCurves.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using namespace host;
using namespace host::geometry;

constexpr double kDegree = std::numbers::pi / 180;

/// Keys at times 0, 1, 2, ...: degrees of one axis.
CurveKeys axis(std::initializer_list<double> degrees, TangentType type = TangentType::Spline)
{
    CurveKeys keys;
    for (const double value : degrees) {
        CurveKey& key = keys.keys.emplace_back();
        key.time = static_cast<double>(keys.keys.size() - 1);
        key.value = value * kDegree;
        key.outType = type;
    }
    return keys;
}

double degreesAt(const RotationCurves& curves, double time, std::size_t which)
{
    return curves.at(time, which) / kDegree;
}

TEST(RotationCurves, TurnEvenlyOnTheShortArc)
{
    const auto curves = RotationCurves::join({axis({0, 90}), axis({0, 0}), axis({0, 0})},
                                             RotationOrder::Xyz, RotationBlend::Slerp);
    ASSERT_NE(curves, nullptr);
    EXPECT_NEAR(degreesAt(*curves, 0.25, 0), 22.5, 1e-9);
    EXPECT_NEAR(degreesAt(*curves, 0.25, 1), 0, 1e-9);
    EXPECT_NEAR(degreesAt(*curves, 1, 0), 90, 1e-12);
    EXPECT_NEAR(degreesAt(*curves, 7, 0), 90, 1e-12);
    EXPECT_NEAR(degreesAt(*curves, -7, 0), 0, 1e-12);
}

TEST(RotationCurves, BlendAxesThatIndependentCurvesWouldNot)
{
    // From none to a third of a turn about (1 1 1)/sqrt 3, which takes x to y, y to z, z to x: as
    // angles in the order xyz 90 0 90. Half of the way is 60 degrees about that axis: the first row
    // of its matrix is (2 2 -1)/3, so that the middle angle is asin(1/3).
    const auto curves = RotationCurves::join({axis({0, 90}), axis({0, 0}), axis({0, 90})},
                                             RotationOrder::Xyz, RotationBlend::Slerp);
    ASSERT_NE(curves, nullptr);
    const Matrix4 half = eulerRotation({curves->at(0.5, 0), curves->at(0.5, 1), curves->at(0.5, 2)},
                                       RotationOrder::Xyz);
    EXPECT_NEAR(half.m[0][0], 2.0 / 3, 1e-12);
    EXPECT_NEAR(half.m[0][1], 2.0 / 3, 1e-12);
    EXPECT_NEAR(half.m[0][2], -1.0 / 3, 1e-12);
}

TEST(RotationCurves, OfSquadsPassThroughKeysWithoutAKink)
{
    const auto curves =
        RotationCurves::join({axis({0, 40, 60, 120}), axis({0, 0, 0, 0}), axis({0, 0, 0, 0})},
                             RotationOrder::Xyz, RotationBlend::Squad);
    ASSERT_NE(curves, nullptr);
    EXPECT_NEAR(degreesAt(*curves, 1, 0), 40, 1e-12);
    // About one axis a squad is a cubic: its slope at a key is half of the way between neighbours.
    constexpr double kStep = 1e-5;
    const double before = (degreesAt(*curves, 1, 0) - degreesAt(*curves, 1 - kStep, 0)) / kStep;
    const double after = (degreesAt(*curves, 1 + kStep, 0) - degreesAt(*curves, 1, 0)) / kStep;
    EXPECT_NEAR(before, 30, 1e-3);
    EXPECT_NEAR(after, 30, 1e-3);
}

TEST(RotationCurves, HoldStepsAndCountTurnsOfCycles)
{
    CurveKeys x = axis({0, 90}, TangentType::Step);
    x.after = InfinityType::CycleRelative;
    const auto curves = RotationCurves::join({x, axis({0, 0}), axis({0, 0})}, RotationOrder::Xyz,
                                             RotationBlend::Slerp);
    ASSERT_NE(curves, nullptr);
    EXPECT_NEAR(degreesAt(*curves, 0.75, 0), 0, 1e-12);
    EXPECT_NEAR(degreesAt(*curves, 1.5, 0), 90, 1e-12);
    EXPECT_NEAR(degreesAt(*curves, 2.5, 0), 180, 1e-12);
}

TEST(RotationCurves, NeedKeysAtTheSameTimes)
{
    CurveKeys late = axis({0, 10});
    late.keys[1].time = 3;
    EXPECT_EQ(RotationCurves::join({axis({0, 90}), axis({0, 0}), late}, RotationOrder::Xyz,
                                   RotationBlend::Slerp),
              nullptr);
    EXPECT_EQ(RotationCurves::join({}, RotationOrder::Xyz, RotationBlend::Slerp), nullptr);
    const auto one = RotationCurves::join({axis({5}), axis({6}), axis({7})}, RotationOrder::Zyx,
                                          RotationBlend::Squad);
    ASSERT_NE(one, nullptr);
    EXPECT_NEAR(degreesAt(*one, std::nan(""), 2), 7, 1e-12);
}

} // namespace
