#include "host/math/transform.h"

#include <gtest/gtest.h>

#include <numbers>

namespace host {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;

void expectNear(const Vec3d& actual, const Vec3d& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-14);
    EXPECT_NEAR(actual.y, expected.y, 1e-14);
    EXPECT_NEAR(actual.z, expected.z, 1e-14);
}

Matrix4 negated(const Vec3d& offset)
{
    return translation(offset * -1);
}

void expectNear(const Matrix4& actual, const Matrix4& expected)
{
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_NEAR(actual.m[row][column], expected.m[row][column], 1e-13);
        }
    }
}

TransformParts fullParts()
{
    TransformParts parts;
    parts.translate = {1, 2, 3};
    parts.rotate = {0.1, 0.2, 0.3};
    parts.order = RotationOrder::Zxy;
    parts.scale = {2, 3, 4};
    parts.shear = {0.5, 0.25, 0.125};
    parts.rotatePivot = {5, 6, 7};
    parts.rotatePivotTranslate = {8, 9, 10};
    parts.scalePivot = {11, 12, 13};
    parts.scalePivotTranslate = {14, 15, 16};
    parts.rotateAxis = {0.4, 0.5, 0.6};
    return parts;
}

TEST(Transform, InitialPartsMakeTheIdentityWithoutNegativeZeros)
{
    const Matrix4 matrix = composeTransform({});
    EXPECT_EQ(matrix, Matrix4{});
    for (const auto& row : matrix.m) {
        for (const double value : row) {
            EXPECT_FALSE(std::signbit(value));
        }
    }
}

TEST(Transform, FactorsFollowEachOtherFromScalePivotToTranslation)
{
    const TransformParts p = fullParts();
    const Matrix4 expected =
        negated(p.scalePivot) * scaling(p.scale) * shearing(p.shear) * translation(p.scalePivot) *
        translation(p.scalePivotTranslate) * negated(p.rotatePivot) *
        eulerRotation(p.rotateAxis, RotationOrder::Xyz) * eulerRotation(p.rotate, p.order) *
        translation(p.rotatePivot) * translation(p.rotatePivotTranslate) * translation(p.translate);
    expectNear(composeTransform(p), expected);
}

TEST(Transform, ScaleActsAboutItsPivot)
{
    TransformParts parts;
    parts.scale = {2, 2, 2};
    parts.scalePivot = {1, 0, 0};
    EXPECT_EQ(transformPoint({1, 0, 0}, composeTransform(parts)), (Vec3d{1, 0, 0}));
    EXPECT_EQ(transformPoint({3, 1, 0}, composeTransform(parts)), (Vec3d{5, 2, 0}));
}

TEST(Transform, RotationActsAboutItsPivotAfterTheScale)
{
    TransformParts parts;
    parts.scale = {2, 1, 1};
    parts.rotate = {0, 0, kQuarter};
    parts.rotatePivot = {1, 0, 0};
    parts.translate = {0, 0, 5};
    // (1 0 0) -> scale (2 0 0) -> about (1 0 0): (1 1 0) -> (1 1 5)
    expectNear(transformPoint({1, 0, 0}, composeTransform(parts)), {1, 1, 5});
}

TEST(Transform, ShearActsAfterTheScale)
{
    TransformParts parts;
    parts.scale = {1, 3, 1};
    parts.shear = {2, 0, 0};
    // (0 1 0) -> (0 3 0) -> x gains 2 * 3
    EXPECT_EQ(transformPoint({0, 1, 0}, composeTransform(parts)), (Vec3d{6, 3, 0}));
}

TEST(Transform, RotateAxisActsBeforeRotateAndAlwaysInXyz)
{
    TransformParts parts;
    parts.order = RotationOrder::Zyx;
    parts.rotateAxis = {kQuarter, kQuarter, 0};
    parts.rotate = {0, 0, kQuarter};
    // (0 1 0): X -> (0 0 1), Y -> (1 0 0), then rotate's Z -> (0 1 0)
    expectNear(transformPoint({0, 1, 0}, composeTransform(parts)), {0, 1, 0});
}

TEST(Joint, PivotsAndShearDoNotEnter)
{
    const TransformParts p = fullParts();
    const Matrix4 expected = scaling(p.scale) * eulerRotation(p.rotateAxis, RotationOrder::Xyz) *
                             eulerRotation(p.rotate, p.order) *
                             eulerRotation({0.7, 0.8, 0.9}, RotationOrder::Xyz) *
                             scaling({0.5, 0.25, 0.2}) * translation(p.translate);
    expectNear(composeJoint(p, {0.7, 0.8, 0.9}, {2, 4, 5}, true), expected);
}

TEST(Joint, InverseScaleActsOnlyWithSegmentScaleCompensate)
{
    TransformParts parts;
    parts.translate = {1, 0, 0};
    EXPECT_EQ(composeJoint(parts, {}, {2, 2, 2}, false), translation({1, 0, 0}));
    // The translation stands behind the compensation and keeps its length.
    EXPECT_EQ(transformPoint({4, 0, 0}, composeJoint(parts, {}, {2, 2, 2}, true)),
              (Vec3d{3, 0, 0}));
}

TEST(Joint, InverseScaleOfZeroIsLeftOut)
{
    EXPECT_EQ(composeJoint({}, {}, {0, 2, 0}, true), scaling({1, 0.5, 1}));
}

TEST(Joint, OrientActsAfterRotate)
{
    TransformParts parts;
    parts.rotate = {kQuarter, 0, 0};
    // (0 1 0): rotate X -> (0 0 1), orient Y -> (1 0 0)
    expectNear(transformPoint({0, 1, 0}, composeJoint(parts, {0, kQuarter, 0}, {1, 1, 1}, true)),
               {1, 0, 0});
}

TEST(Pose, IsTheTransformWhereTheJointPartsAreNeutral)
{
    PoseParts pose;
    pose.parts = fullParts();
    pose.parts.rotateAxis = {};
    expectNear(composePose(pose), composeTransform(pose.parts));
}

TEST(Pose, IsTheJointWherePivotsAreNeutral)
{
    PoseParts pose;
    pose.parts.translate = {1, 2, 3};
    pose.parts.rotate = {0.1, 0.2, 0.3};
    pose.parts.scale = {2, 3, 4};
    const double s = std::sin(0.35);
    const double c = std::cos(0.35);
    pose.jointOrient = {0, s, 0, c};
    pose.rotateOrient = {s, 0, 0, c};
    pose.inverseScale = {2, 4, 5};
    pose.segmentScaleCompensate = true;
    TransformParts joint = pose.parts;
    joint.rotateAxis = {0.7, 0, 0};
    expectNear(composePose(pose), composeJoint(joint, {0, 0.7, 0}, {2, 4, 5}, true));
}

TEST(Limits, OnlyEnabledBoundsClamp)
{
    EXPECT_EQ(clampToLimits(5, {.minimum = -1, .maximum = 1}), 5);
    EXPECT_EQ(clampToLimits(5, {.minimum = -1, .maximum = 1, .hasMaximum = true}), 1);
    EXPECT_EQ(clampToLimits(-5, {.minimum = -1, .maximum = 1, .hasMaximum = true}), -5);
    EXPECT_EQ(clampToLimits(-5, {.minimum = -1, .maximum = 1, .hasMinimum = true}), -1);
    EXPECT_EQ(
        clampToLimits(0.5, {.minimum = -1, .maximum = 1, .hasMinimum = true, .hasMaximum = true}),
        0.5);
}

} // namespace
} // namespace host
