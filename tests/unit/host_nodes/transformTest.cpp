#include "host/nodes/matrixValue.h"
#include "host/nodes/nodeTypes.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using host::Matrix4;
using host::nodes::kDagNode;
using host::nodes::kJoint;
using host::nodes::kTransform;
using test::ToyContext;

constexpr double kQuarter = std::numbers::pi / 2;

Matrix4 matrixFrom(ToyContext& context, std::string_view output = "matrix")
{
    return host::nodes::matrixOf(context.compute(output));
}

void expectRows(const Matrix4& matrix, const std::array<std::array<double, 4>, 4>& rows)
{
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_NEAR(matrix.m[row][column], rows[row][column], 1e-12) << row << ',' << column;
        }
    }
}

TEST(Transform, IsTheIdentityByDefault)
{
    ToyContext context(kTransform);
    EXPECT_EQ(matrixFrom(context), Matrix4{});
}

TEST(Transform, ScalesThenTurnsThenMoves)
{
    // Scale 2 along x, a quarter turn about z (x becomes y), then the translation.
    ToyContext context(kTransform);
    context.set("scaleX", 2);
    context.set("rotateZ", kQuarter);
    context.setVector("translate", 10, 20, 30);
    expectRows(matrixFrom(context), {{{0, 2, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1}}});
}

TEST(Transform, TurnsInTheOrderOfItsAttribute)
{
    // Quarter turns about x and y. xyz: x -> x -> -z; zyx: x -> -z -> y (then about x: -z -> y).
    ToyContext context(kTransform);
    context.set("rotateX", kQuarter);
    context.set("rotateY", kQuarter);
    expectRows(matrixFrom(context), {{{0, 0, -1, 0}, {1, 0, 0, 0}, {0, -1, 0, 0}, {0, 0, 0, 1}}});
    context.set("rotateOrder", 5);
    expectRows(matrixFrom(context), {{{0, 1, 0, 0}, {0, 0, 1, 0}, {1, 0, 0, 0}, {0, 0, 0, 1}}});
}

TEST(Transform, TurnsAboutItsPivot)
{
    // A half turn about z at (1, 0, 0): the origin goes to (2, 0, 0); one more by the pivot's own
    // translation.
    ToyContext context(kTransform);
    context.set("rotateZ", 2 * kQuarter);
    context.set("rotatePivotX", 1);
    context.set("rotatePivotTranslateX", 1);
    const Matrix4 matrix = matrixFrom(context);
    EXPECT_NEAR(matrix.m[3][0], 3, 1e-12);
    EXPECT_NEAR(matrix.m[3][1], 0, 1e-12);
}

TEST(Transform, ScalesAboutItsPivot)
{
    // Twice the size about (1, 0, 0): the origin goes to (-1, 0, 0); 5 more by the translation.
    ToyContext context(kTransform);
    context.set("scaleX", 2);
    context.set("scalePivotX", 1);
    context.set("scalePivotTranslateX", 5);
    EXPECT_NEAR(matrixFrom(context).m[3][0], 4, 1e-12);
}

TEST(Transform, ShearsBehindItsScale)
{
    // Rows of the shear (1 0 0) (xy 1 0) (xz yz 1), scaled by (2, 3, 4).
    ToyContext context(kTransform);
    context.setVector("scale", 2, 3, 4);
    context.set("shearXY", 0.5);
    context.set("shearXZ", 0.25);
    context.set("shearYZ", 0.125);
    expectRows(matrixFrom(context), {{{2, 0, 0, 0}, {1.5, 3, 0, 0}, {1, 0.5, 4, 0}, {0, 0, 0, 1}}});
}

TEST(Transform, AddsItsRotateAxisBeforeItsRotation)
{
    // The axis turns x to y, the rotation y to z.
    ToyContext context(kTransform);
    context.set("rotateAxisZ", kQuarter);
    context.set("rotateX", kQuarter);
    const Matrix4 matrix = matrixFrom(context);
    EXPECT_NEAR(matrix.m[0][2], 1, 1e-12);
}

TEST(Transform, KeepsItsChannelsInsideEnabledLimits)
{
    ToyContext context(kTransform);
    context.setVector("translate", 5, -5, 5);
    context.set("maxTransXLimit", 2);
    context.set("maxTransXLimitEnable", 1);
    context.set("minTransYLimit", -3);
    context.set("minTransYLimitEnable", 1);
    context.set("maxTransZLimit", 1); // not enabled
    context.set("scaleY", 9);
    context.set("maxScaleYLimit", 4);
    context.set("maxScaleYLimitEnable", 1);
    context.set("rotateZ", kQuarter);
    context.set("maxRotZLimit", 0);
    context.set("maxRotZLimitEnable", 1);
    expectRows(matrixFrom(context), {{{1, 0, 0, 0}, {0, 4, 0, 0}, {0, 0, 1, 0}, {2, -3, 5, 1}}});
}

TEST(Transform, GivesTheInverseOfItsMatrix)
{
    ToyContext context(kTransform);
    context.set("scaleX", 4);
    context.set("translateX", 8);
    expectRows(matrixFrom(context, "inverseMatrix"),
               {{{0.25, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {-2, 0, 0, 1}}});
}

TEST(Joint, OrientsAfterItsRotation)
{
    // The rotation turns x to y, the orientation y to z.
    ToyContext context(kJoint);
    context.set("rotateZ", kQuarter);
    context.set("jointOrientX", kQuarter);
    EXPECT_NEAR(matrixFrom(context).m[0][2], 1, 1e-12);
}

TEST(Joint, UndoesTheScaleOfItsParentBeforeItsTranslation)
{
    ToyContext context(kJoint);
    context.set("translateX", 7);
    context.setVector("inverseScale", 2, 4, 1);
    expectRows(matrixFrom(context),
               {{{0.5, 0, 0, 0}, {0, 0.25, 0, 0}, {0, 0, 1, 0}, {7, 0, 0, 1}}});
    context.set("segmentScaleCompensate", 0);
    expectRows(matrixFrom(context), {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {7, 0, 0, 1}}});
}

TEST(Joint, HasNoPivots)
{
    ToyContext context(kJoint);
    context.set("rotateZ", 2 * kQuarter);
    context.set("rotatePivotX", 1);
    context.set("scalePivotX", 1);
    EXPECT_NEAR(matrixFrom(context).m[3][0], 0, 1e-12);
}

TEST(DagNode, StandsInItsParentsSpaceAfterTheOffset)
{
    ToyContext context(kDagNode);
    Matrix4 local;
    local.m[3][0] = 1;
    Matrix4 offset;
    offset.m[0][0] = 10;
    context.values["matrix"] = host::Value::of(local);
    context.values["offsetParentMatrix"] = host::Value::of(offset);
    context.parent.m[3][0] = 100;
    EXPECT_EQ(matrixFrom(context, "worldMatrix").m[3][0], 110); // 1 * 10 + 100
    EXPECT_EQ(matrixFrom(context, "worldInverseMatrix").m[0][0], 0.1);
    EXPECT_EQ(matrixFrom(context, "parentMatrix").m[3][0], 100);
    EXPECT_EQ(matrixFrom(context, "parentInverseMatrix").m[3][0], -100);
}

TEST(DagNode, LeavesItsParentOutWithoutInheritance)
{
    ToyContext context(kDagNode);
    Matrix4 local;
    local.m[3][0] = 1;
    context.values["matrix"] = host::Value::of(local);
    context.set("inheritsTransform", 0);
    context.parent.m[3][0] = 100;
    EXPECT_EQ(matrixFrom(context, "worldMatrix").m[3][0], 1);
}

} // namespace
