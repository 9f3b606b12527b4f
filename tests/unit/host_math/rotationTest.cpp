#include "host/math/rotation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;

void expectNear(const Vec3d& actual, const Vec3d& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-15);
    EXPECT_NEAR(actual.y, expected.y, 1e-15);
    EXPECT_NEAR(actual.z, expected.z, 1e-15);
}

TEST(Rotation, PositiveAnglesTurnCounterClockwise)
{
    // Seen from the tip of the axis: x turns y to z, y turns z to x, z turns x to y.
    expectNear(transformPoint({0, 1, 0}, eulerRotation({kQuarter, 0, 0}, RotationOrder::Xyz)),
               {0, 0, 1});
    expectNear(transformPoint({0, 0, 1}, eulerRotation({0, kQuarter, 0}, RotationOrder::Xyz)),
               {1, 0, 0});
    expectNear(transformPoint({1, 0, 0}, eulerRotation({0, 0, kQuarter}, RotationOrder::Xyz)),
               {0, 1, 0});
}

// Quarter turns about x (y->z, z->-y), y (z->x, x->-z) and z (x->y, y->-x), worked by hand on
// (1 2 3) for each order: X sends (a b c) to (a -c b), Y to (c b -a), Z to (-b a c).
struct OrderCase {
    RotationOrder order;
    Vec3d expected;
};

TEST(Rotation, EachOrderAppliesItsAxesInItsSequence)
{
    const OrderCase cases[] = {
        {RotationOrder::Xyz, {3, 2, -1}}, // X: (1 -3 2)  Y: (2 -3 -1)  Z: (3 2 -1)
        {RotationOrder::Yzx, {-2, 1, 3}}, // Y: (3 2 -1)  Z: (-2 3 -1)  X: (-2 1 3)
        {RotationOrder::Zxy, {1, -3, 2}}, // Z: (-2 1 3)  X: (-2 -3 1)  Y: (1 -3 2)
        {RotationOrder::Xzy, {2, 1, -3}}, // X: (1 -3 2)  Z: (3 1 2)    Y: (2 1 -3)
        {RotationOrder::Yxz, {-1, 3, 2}}, // Y: (3 2 -1)  X: (3 1 2)    Z: (-1 3 2)
        {RotationOrder::Zyx, {3, -2, 1}}, // Z: (-2 1 3)  Y: (3 1 2)    X: (3 -2 1)
    };
    for (const OrderCase& each : cases) {
        expectNear(
            transformPoint({1, 2, 3}, eulerRotation({kQuarter, kQuarter, kQuarter}, each.order)),
            each.expected);
    }
}

TEST(Rotation, OrderNumbersOutsideTheSixAreXyz)
{
    EXPECT_EQ(rotationOrderFromNumber(0), RotationOrder::Xyz);
    EXPECT_EQ(rotationOrderFromNumber(1), RotationOrder::Yzx);
    EXPECT_EQ(rotationOrderFromNumber(2), RotationOrder::Zxy);
    EXPECT_EQ(rotationOrderFromNumber(3), RotationOrder::Xzy);
    EXPECT_EQ(rotationOrderFromNumber(4), RotationOrder::Yxz);
    EXPECT_EQ(rotationOrderFromNumber(5), RotationOrder::Zyx);
    EXPECT_EQ(rotationOrderFromNumber(6), RotationOrder::Xyz);
    EXPECT_EQ(rotationOrderFromNumber(-1), RotationOrder::Xyz);
    EXPECT_EQ(rotationOrderFromNumber(std::nan("")), RotationOrder::Xyz);
    EXPECT_EQ(rotationOrderFromNumber(1e300), RotationOrder::Xyz);
}

TEST(Rotation, QuaternionAgreesWithTheAngleAboutEachAxis)
{
    const double angle = 0.7;
    const double s = std::sin(angle / 2);
    const double c = std::cos(angle / 2);
    const Vec3d axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const Vec3d& axis : axes) {
        const Matrix4 expected = eulerRotation(axis * angle, RotationOrder::Xyz);
        const Matrix4 actual = quaternionRotation({axis.x * s, axis.y * s, axis.z * s, c});
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                EXPECT_NEAR(actual.m[row][column], expected.m[row][column], 1e-15);
            }
        }
    }
}

TEST(Rotation, QuaternionNeedNotBeOfUnitLength)
{
    // A third of a turn about the diagonal takes x to y, y to z, z to x.
    const Matrix4 matrix = quaternionRotation({3, 3, 3, 3});
    expectNear(transformPoint({1, 0, 0}, matrix), {0, 1, 0});
    expectNear(transformPoint({0, 1, 0}, matrix), {0, 0, 1});
}

TEST(Rotation, UselessQuaternionIsIdentity)
{
    EXPECT_EQ(quaternionRotation({0, 0, 0, 0}), Matrix4{});
    EXPECT_EQ(quaternionRotation({std::nan(""), 0, 0, 1}), Matrix4{});
}

} // namespace
} // namespace host
