// Quaternions, angles from matrices, matrices taken apart, powers.
#include "host/math/quaternion.h"
#include "host/math/decompose.h"
#include "host/math/power.h"
#include "host/math/transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

using namespace host;
using std::numbers::pi;

void expectNear(const Matrix4& a, const Matrix4& b, double tolerance = 1e-12)
{
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_NEAR(a.m[row][column], b.m[row][column], tolerance) << row << " " << column;
        }
    }
}

void expectNear(const Vec3d& a, const Vec3d& b, double tolerance = 1e-11)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

constexpr RotationOrder kOrders[] = {RotationOrder::Xyz, RotationOrder::Yzx, RotationOrder::Zxy,
                                     RotationOrder::Xzy, RotationOrder::Yxz, RotationOrder::Zyx};

TEST(Quaternions, StandForTheRotationsOfAnglesAndMatrices)
{
    const Vec3d angles{0.3, -1.1, 2.5};
    for (const RotationOrder order : kOrders) {
        const Matrix4 rotation = eulerRotation(angles, order);
        expectNear(quaternionRotation(quaternionFromEuler(angles, order)), rotation);
        expectNear(quaternionRotation(quaternionOf(rotation)), rotation);
    }
    // Half turns about each axis, where w is 0.
    for (const Vec3d& half : {Vec3d{pi, 0, 0}, Vec3d{0, pi, 0}, Vec3d{0, 0, pi}}) {
        const Matrix4 rotation = eulerRotation(half, RotationOrder::Xyz);
        expectNear(quaternionRotation(quaternionOf(rotation)), rotation);
    }
}

TEST(Quaternions, MultiplyInTheOrderInWhichTheyAct)
{
    const Quaternion x = quaternionFromEuler({0.7, 0, 0}, RotationOrder::Xyz);
    const Quaternion y = quaternionFromEuler({0, 1.3, 0}, RotationOrder::Xyz);
    expectNear(quaternionRotation(product(x, y)), quaternionRotation(x) * quaternionRotation(y));
    expectNear(quaternionRotation(product(x, conjugate(x))), Matrix4{});
}

TEST(EulerAngles, ComeBackFromTheirMatrices)
{
    const Vec3d angles{0.3, -1.1, 2.5}; // the middle one is below a right angle for all orders
    for (const RotationOrder order : kOrders) {
        const Vec3d found = eulerAngles(eulerRotation(angles, order), order);
        expectNear(eulerRotation(found, order), eulerRotation(angles, order));
        expectNear(eulerNearest(found, angles, order), angles);
    }
}

TEST(EulerAngles, AreFoundWhereTheMiddleAxisIsUpright)
{
    for (const RotationOrder order : kOrders) {
        for (const double right : {pi / 2, -pi / 2}) {
            for (const Vec3d& angles :
                 {Vec3d{right, 0.4, 0.2}, Vec3d{0.4, right, 0.2}, Vec3d{0.4, 0.2, right}}) {
                const Matrix4 rotation = eulerRotation(angles, order);
                expectNear(eulerRotation(eulerAngles(rotation, order), order), rotation, 1e-9);
            }
        }
    }
}

TEST(EulerAngles, KeepWholeTurns)
{
    expectNear(eulerNearest({0.1, 0, 0}, {4 * pi, 0, 0}, RotationOrder::Xyz), {0.1 + 4 * pi, 0, 0});
    // 180 0 180 is the same as 0 180 0.
    expectNear(eulerNearest({pi, 0, pi}, {0, 3, 0}, RotationOrder::Xyz), {0, pi, 0});
}

TEST(Slerp, GoesTheShortWayAtEvenSpeed)
{
    const Quaternion from = quaternionFromEuler({0, 0, 0.2}, RotationOrder::Xyz);
    const Quaternion to = quaternionFromEuler({0, 0, 1.4}, RotationOrder::Xyz);
    const Quaternion quarter = quaternionFromEuler({0, 0, 0.5}, RotationOrder::Xyz);
    expectNear(quaternionRotation(slerp(from, to, 0.25)), quaternionRotation(quarter));
    const Quaternion turned{-to.x, -to.y, -to.z, -to.w};
    expectNear(quaternionRotation(slerp(from, turned, 0.25)), quaternionRotation(quarter));
    expectNear(quaternionRotation(slerp(from, from, 0.5)), quaternionRotation(from));
}

TEST(Decompose, GivesThePartsOfATransform)
{
    TransformParts parts;
    parts.translate = {1, -2, 3};
    parts.rotate = {0.3, -1.1, 2.5};
    parts.scale = {2, 0.5, 3};
    parts.shear = {0.1, -0.2, 0.3};
    for (const RotationOrder order : kOrders) {
        parts.order = order;
        const DecomposedMatrix found = decompose(composeTransform(parts), order);
        expectNear(found.translate, parts.translate);
        expectNear(found.scale, parts.scale);
        expectNear(found.shear, parts.shear);
        expectNear(eulerRotation(found.rotate, order), eulerRotation(parts.rotate, order));
        expectNear(quaternionRotation(found.rotation), eulerRotation(parts.rotate, order));
    }
}

TEST(Decompose, GivesMirrorsThreeNegativeScales)
{
    const DecomposedMatrix found = decompose(scaling({2, 3, -4}), RotationOrder::Xyz);
    expectNear(found.scale, {-2, -3, -4});
    const Matrix4 again = scaling(found.scale) * eulerRotation(found.rotate, RotationOrder::Xyz);
    expectNear(again, scaling({2, 3, -4}));
}

TEST(Decompose, SurvivesFlatMatrices)
{
    Matrix4 none;
    none.m = {};
    EXPECT_EQ(decompose(none, RotationOrder::Xyz).scale, (Vec3d{0, 0, 0}));
    none.m[1][1] = std::nan("");
    decompose(none, RotationOrder::Zyx);
}

TEST(Power, OfWholeAndBrokenExponents)
{
    EXPECT_EQ(power(2, 10), 1024);
    EXPECT_EQ(power(7, 2), 49); // exactly: conditions compare such results
    EXPECT_EQ(power(1e10, 4), 1e40);
    EXPECT_EQ(power(-3, 3), -27);
    EXPECT_EQ(power(2, -2), 0.25);
    EXPECT_NEAR(power(9, 0.5), 3, 1e-15 * 10);
    EXPECT_NEAR(power(10, 2.5), 100 * std::sqrt(10.0), 1e-12);
    EXPECT_NEAR(power(0.5, 1 / 2.2), 0.72974005284072, 1e-13); // the usual grey of displays
    EXPECT_NEAR(power(-3, 3), -27, 1e-13);
    EXPECT_NEAR(power(-3, 2), 9, 1e-13);
    EXPECT_EQ(power(-3, 0.5), 0);
    EXPECT_EQ(power(0, 3), 0);
    EXPECT_EQ(power(0, 0), 1);
    EXPECT_EQ(power(7, 1), 7);
    EXPECT_EQ(power(std::nan(""), 2), 0);
    EXPECT_EQ(power(10, 1e6), std::numeric_limits<double>::infinity());
    EXPECT_EQ(power(10, -1e6), 0);
}

} // namespace
