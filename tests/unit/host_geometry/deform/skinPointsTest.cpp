#include "host/geometry/deform/skinPoints.h"

#include "host/math/quaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace {

using namespace host;
using namespace host::geometry;
using std::numbers::pi;

constexpr double kNear = 1e-12;

Matrix4 turnAboutZ(double angle)
{
    return eulerRotation({0, 0, angle}, RotationOrder::Xyz);
}

/// The weights of point 0 for influences 0, 1, ...
SkinWeights onePoint(const std::vector<double>& weights)
{
    SkinWeights table;
    table.points = {0};
    for (std::size_t i = 0; i < weights.size(); ++i) {
        table.entries.push_back({weights[i], static_cast<std::uint32_t>(i)});
    }
    table.starts = {0, table.entries.size()};
    return table;
}

void expectNear(const Vec3d& a, const Vec3d& b, double tolerance = kNear)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

Vec3d skinnedLinear(const std::vector<double>& weights, const std::vector<Matrix4>& matrices,
                    const Vec3d& point)
{
    std::vector<Vec3d> points{point};
    skinLinear(onePoint(weights), matrices, points);
    return points[0];
}

Vec3d skinnedDual(const std::vector<double>& weights, const std::vector<Matrix4>& matrices,
                  const Vec3d& point, bool isStretched = false)
{
    std::vector<RigidMotion> motions;
    for (const Matrix4& matrix : matrices) {
        motions.push_back(rigidMotion(matrix));
    }
    std::vector<Vec3d> points{point};
    skinDualQuaternion(onePoint(weights), motions, isStretched, points);
    return points[0];
}

// (2, 0, 0) stays under the first joint and comes to (0, 2, 0) under the second.
TEST(SkinLinear, IsTheMiddleOfWhatTwoJointsDo)
{
    expectNear(skinnedLinear({0.5, 0.5}, {Matrix4{}, turnAboutZ(pi / 2)}, {2, 0, 0}), {1, 1, 0});
}

TEST(SkinLinear, TakesWeightsAsTheyAre)
{
    expectNear(skinnedLinear({0.5}, {translation({4, 0, 0})}, {2, 0, 0}), {3, 0, 0});
    expectNear(skinnedLinear({0, 0}, {turnAboutZ(1), turnAboutZ(2)}, {2, 0, 0}), {2, 0, 0});
}

TEST(SkinLinear, LeavesPointsWithoutWeightsAndWeightsWithoutPoints)
{
    SkinWeights table;
    table.points = {1, 7};
    table.starts = {0, 1, 2};
    table.entries = {{1, 0}, {1, 0}};
    std::vector<Vec3d> points{{1, 1, 1}, {2, 2, 2}};
    skinLinear(table, std::vector{translation({1, 0, 0})}, points);
    expectNear(points[0], {1, 1, 1});
    expectNear(points[1], {3, 2, 2});
}

// Half of two rotations about one axis is the rotation by half the angle, at full distance.
TEST(SkinDualQuaternion, TurnsByHalfTheAngleHalfWay)
{
    const double root = std::sqrt(2.0);
    expectNear(skinnedDual({0.5, 0.5}, {Matrix4{}, turnAboutZ(pi / 2)}, {2, 0, 0}),
               {root, root, 0});
}

// A rotation about (3, 0, 0): translate, turn, translate back. Half of it keeps that centre.
TEST(SkinDualQuaternion, KeepsTheCentreOfAnAxisElsewhere)
{
    const Matrix4 about = translation({-3, 0, 0}) * turnAboutZ(pi / 2) * translation({3, 0, 0});
    const double half = std::sqrt(0.5);
    expectNear(skinnedDual({0.5, 0.5}, {Matrix4{}, about}, {4, 0, 0}), {3 + half, half, 0});
}

TEST(SkinDualQuaternion, GivesWhatOneInfluenceDoes)
{
    const Matrix4 matrix =
        eulerRotation({0.3, -1.2, 2.5}, RotationOrder::Xyz) * translation({5, -6, 7});
    const Vec3d point{1, 2, 3};
    expectNear(skinnedDual({1}, {matrix}, point), transformPoint(point, matrix));
    expectNear(skinnedDual({0.25}, {matrix}, point), transformPoint(point, matrix));
}

TEST(SkinDualQuaternion, IsRigidUnlessStretchIsAskedFor)
{
    const Matrix4 matrix = scaling({2, 3, 4}) * turnAboutZ(pi / 2) * translation({0, 0, 1});
    expectNear(skinnedDual({1}, {matrix}, {1, 0, 0}), {0, 1, 1});
    expectNear(skinnedDual({1}, {matrix}, {1, 0, 0}, true), {0, 2, 1});
}

// Rotations by 170 degrees either way are 20 degrees apart: their middle is the half turn.
TEST(SkinDualQuaternion, TakesTheShortWay)
{
    const double angle = 170 * pi / 180;
    expectNear(skinnedDual({0.5, 0.5}, {turnAboutZ(angle), turnAboutZ(-angle)}, {1, 0, 0}),
               {-1, 0, 0});
}

TEST(SkinDualQuaternion, SurvivesNumbersThatAreNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Matrix4 broken;
    broken.m[0][0] = nan;
    skinnedDual({nan, 1}, {broken, Matrix4{}}, {1, 2, 3}, true);
    expectNear(skinnedDual({0, 0}, {broken, broken}, {1, 2, 3}), {1, 2, 3});
    expectNear(skinnedDual({}, {}, {1, 2, 3}), {1, 2, 3});
}

} // namespace
