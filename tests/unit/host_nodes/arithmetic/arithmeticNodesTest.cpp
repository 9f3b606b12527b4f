// Arithmetic on channels: each operation at numbers that can be checked by eye.
#include "host/math/transform.h"
#include "host/nodes/arithmetic/allArithmeticNodes.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace {

using host::Matrix4;
using host::Value;
using test::ToyContext;

ToyContext nodeOf(std::string_view type)
{
    for (const host::NodeCompute* row : host::nodes::allArithmeticNodes()) {
        if (row->type == type) {
            return ToyContext(*row);
        }
    }
    throw std::logic_error("no row of " + std::string(type));
}

void setColour(ToyContext& context, const std::string& name, double r, double g, double b)
{
    context.set(name + "R", r);
    context.set(name + "G", g);
    context.set(name + "B", b);
}

TEST(Arithmetic, AddsAndMultipliesTwo)
{
    ToyContext sum = nodeOf("addDoubleLinear");
    ToyContext product = nodeOf("multDoubleLinear");
    for (ToyContext* context : {&sum, &product}) {
        context->set("input1", 6);
        context->set("input2", 7);
    }
    EXPECT_EQ(sum.compute("output").number(), 13);
    EXPECT_EQ(product.compute("output").number(), 42);
}

TEST(Arithmetic, BlendsTwoAttributes)
{
    ToyContext context = nodeOf("blendTwoAttr");
    context.setElement("input", {0}, 10);
    context.setElement("input", {1}, 20);
    EXPECT_EQ(context.compute("output").number(), 10);
    context.set("attributesBlender", 0.25);
    EXPECT_EQ(context.compute("output").number(), 12.5);
}

TEST(PlusMinusAverage, WorksOnLists)
{
    ToyContext context = nodeOf("plusMinusAverage");
    EXPECT_EQ(context.compute("output1D").number(), 0);
    for (const int index : {1, 4, 9}) {
        context.setElement("input1D", {index}, 10 * index);
        context.setElement("input3Dz", {index}, index);
    }
    EXPECT_EQ(context.compute("output1D").number(), 140); // sums by default
    EXPECT_EQ(context.compute("output3Dz").number(), 14);
    EXPECT_EQ(context.compute("output3Dx").number(), 0);
    context.set("operation", 0);
    EXPECT_EQ(context.compute("output1D").number(), 10);
    context.set("operation", 2);
    EXPECT_EQ(context.compute("output1D").number(), 10 - 40 - 90);
    context.set("operation", 3);
    EXPECT_NEAR(context.compute("output1D").number(), 140.0 / 3, 1e-12);
}

TEST(MultiplyDivide, HasFourOperations)
{
    ToyContext context = nodeOf("multiplyDivide");
    context.setVector("input1", 12, 9, -4);
    context.setVector("input2", 3, 0.5, 0);
    EXPECT_EQ(context.compute("outputX").number(), 36);
    EXPECT_EQ(context.compute("outputY").number(), 4.5);
    context.set("operation", 0);
    EXPECT_EQ(context.compute("outputX").number(), 12);
    context.set("operation", 2);
    EXPECT_EQ(context.compute("outputX").number(), 4);
    EXPECT_LT(context.compute("outputZ").number(), -1e38); // by zero
    context.set("operation", 3);
    EXPECT_NEAR(context.compute("outputX").number(), 1728, 1e-9);
    EXPECT_NEAR(context.compute("outputY").number(), 3, 1e-12);
}

TEST(Reverse, TakesFromOne)
{
    ToyContext context = nodeOf("reverse");
    context.setVector("input", 0.25, 1, 3);
    EXPECT_EQ(context.compute("outputX").number(), 0.75);
    EXPECT_EQ(context.compute("outputY").number(), 0);
    EXPECT_EQ(context.compute("outputZ").number(), -2);
}

TEST(Condition, ComparesTwoTerms)
{
    ToyContext context = nodeOf("condition");
    setColour(context, "colorIfTrue", 1, 2, 3);
    setColour(context, "colorIfFalse", 4, 5, 6);
    context.set("firstTerm", 2);
    // ==, !=, >, >=, <, <= of 2 with 1, 2 and 3.
    constexpr bool kHolds[3][6] = {{false, true, true, true, false, false},
                                   {true, false, false, true, false, true},
                                   {false, true, false, false, true, true}};
    for (int second = 1; second <= 3; ++second) {
        for (int operation = 0; operation < 6; ++operation) {
            context.set("secondTerm", second);
            context.set("operation", operation);
            EXPECT_EQ(context.compute("outColorG").number(), kHolds[second - 1][operation] ? 2 : 5)
                << second << " " << operation;
        }
    }
}

TEST(Clamp, HoldsBetweenBounds)
{
    ToyContext context = nodeOf("clamp");
    setColour(context, "input", -1, 0.5, 9);
    setColour(context, "max", 1, 1, 1);
    EXPECT_EQ(context.compute("outputR").number(), 0);
    EXPECT_EQ(context.compute("outputG").number(), 0.5);
    EXPECT_EQ(context.compute("outputB").number(), 1);
}

TEST(SetRange, MovesFromOneRangeToAnother)
{
    ToyContext context = nodeOf("setRange");
    context.setVector("value", 15, -100, 15);
    context.setVector("oldMin", 10, 10, 5);
    context.setVector("oldMax", 30, 30, 5);
    context.setVector("min", 0, 4, 7);
    context.setVector("max", 100, 8, 9);
    EXPECT_EQ(context.compute("outValueX").number(), 25);
    EXPECT_EQ(context.compute("outValueY").number(), 4); // held at the end
    EXPECT_EQ(context.compute("outValueZ").number(), 7); // no range to read
}

TEST(BlendColors, WeighsTheFirstByTheBlender)
{
    ToyContext context = nodeOf("blendColors");
    setColour(context, "color1", 1, 0, 0);
    setColour(context, "color2", 0, 0, 1);
    context.set("blender", 0.75);
    EXPECT_EQ(context.compute("outputR").number(), 0.75);
    EXPECT_EQ(context.compute("outputB").number(), 0.25);
}

TEST(GammaCorrect, IsAPower)
{
    ToyContext context = nodeOf("gammaCorrect");
    context.setVector("value", 0.25, 0.25, -1);
    context.setVector("gamma", 2, 1, 2);
    EXPECT_NEAR(context.compute("outValueX").number(), 0.5, 1e-12);
    EXPECT_EQ(context.compute("outValueY").number(), 0.25);
    EXPECT_EQ(context.compute("outValueZ").number(), -1);
}

TEST(Contrast, TurnsAboutItsBias)
{
    ToyContext context = nodeOf("contrast");
    context.setVector("value", 0.5, 0.25, 0.25);
    context.setVector("contrast", 5, 1, 2);
    context.setVector("bias", 0.5, 0.5, 0.5);
    EXPECT_NEAR(context.compute("outValueX").number(), 0.5, 1e-12);   // the bias stays
    EXPECT_NEAR(context.compute("outValueY").number(), 0.25, 1e-12);  // contrast 1: as it was
    EXPECT_NEAR(context.compute("outValueZ").number(), 0.125, 1e-12); // (2 * 0.25)^2 / 2
}

void setRamp(ToyContext& context, double blend)
{
    constexpr double kEntries[3][2] = {{0.5, 4}, {0, 0}, {1, 0}}; // in no order
    for (int i = 0; i < 3; ++i) {
        context.setElement("value_Position", {i}, kEntries[i][0]);
        context.setElement("value_FloatValue", {i}, kEntries[i][1]);
        context.setElement("value_Interp", {i}, blend);
    }
}

TEST(RemapValue, FollowsItsRamp)
{
    ToyContext context = nodeOf("remapValue");
    context.set("inputMin", 10);
    context.set("inputMax", 50);
    context.set("inputValue", 15); // an eighth of the range, a quarter of the first part
    constexpr double kExpected[] = {0, 1, 4 * (3.0 / 16 - 2.0 / 64)};
    for (int blend = 0; blend < 3; ++blend) {
        setRamp(context, blend);
        EXPECT_NEAR(context.compute("outValue").number(), kExpected[blend], 1e-12) << blend;
    }
    setRamp(context, 1);
    context.set("outputMin", 100);
    context.set("outputMax", 110);
    EXPECT_NEAR(context.compute("outValue").number(), 110, 1e-12);
    context.set("inputValue", 500);
    EXPECT_NEAR(context.compute("outValue").number(), 100, 1e-12);
}

TEST(RemapValue, RisesFromZeroToOneUntouched)
{
    ToyContext context = nodeOf("remapValue");
    context.set("inputValue", 0.375);
    EXPECT_EQ(context.compute("outValue").number(), 0.375);
    EXPECT_EQ(context.compute("outColorG").number(), 0.375);
}

TEST(RemapColor, HasARampPerChannel)
{
    ToyContext context = nodeOf("remapColor");
    setColour(context, "color", 0.5, 0.5, 0.5);
    context.setElement("green_Position", {0}, 0.0);
    context.setElement("green_FloatValue", {0}, 0.25);
    EXPECT_EQ(context.compute("outColorR").number(), 0.5);
    EXPECT_EQ(context.compute("outColorG").number(), 0.25);
}

TEST(DistanceBetween, IsBetweenPointsInTheirSpaces)
{
    ToyContext context = nodeOf("distanceBetween");
    context.setVector("point1", 3, 0, 0);
    context.setVector("point2", 0, 4, 0);
    EXPECT_EQ(context.compute("distance").number(), 5);
    context.values["inMatrix2"] = Value::of(host::translation({3, -4, 12}));
    EXPECT_EQ(context.compute("distance").number(), 12);
}

TEST(VectorProduct, HasFiveOperations)
{
    ToyContext context = nodeOf("vectorProduct");
    context.setVector("input1", 3, 0, 0);
    context.setVector("input2", 2, 4, 0);
    context.values["matrix"] = Value::of(host::translation({1, 1, 1}));
    EXPECT_EQ(context.compute("outputX").number(), 6);
    context.set("operation", 0);
    EXPECT_EQ(context.compute("outputX").number(), 3);
    context.set("operation", 2);
    EXPECT_EQ(context.compute("outputZ").number(), 12);
    context.set("operation", 3);
    EXPECT_EQ(context.compute("outputX").number(), 3); // a vector is not moved
    context.set("operation", 4);
    EXPECT_EQ(context.compute("outputX").number(), 4);
    context.set("operation", 2);
    context.set("normalizeOutput", 1);
    EXPECT_EQ(context.compute("outputZ").number(), 1);
}

Matrix4 matrixFrom(ToyContext& context, std::string_view output)
{
    const auto matrix = context.compute(output).data<Matrix4>();
    return matrix != nullptr ? *matrix : Matrix4{};
}

TEST(Matrices, AreMultipliedInOrder)
{
    ToyContext context = nodeOf("multMatrix");
    context.setElement("matrixIn", {7}, Value::of(host::translation({1, 2, 3})));
    context.setElement("matrixIn", {2}, Value::of(host::scaling({2, 2, 2})));
    // Scaled first, then moved.
    EXPECT_EQ(host::transformPoint({1, 1, 1}, matrixFrom(context, "matrixSum")),
              (host::Vec3d{3, 4, 5}));
}

TEST(Matrices, AreAddedWithAndWithoutWeights)
{
    ToyContext sum = nodeOf("addMatrix");
    ToyContext weighted = nodeOf("wtAddMatrix");
    for (ToyContext* context : {&sum, &weighted}) {
        context->setElement("matrixIn", {0}, Value::of(host::translation({4, 0, 0})));
        context->setElement("matrixIn", {1}, Value::of(host::translation({0, 8, 0})));
        context->setElement("weightIn", {0}, 0.25);
        context->setElement("weightIn", {1}, 0.75);
    }
    EXPECT_EQ(matrixFrom(sum, "matrixSum").m[0][0], 2);
    EXPECT_EQ(matrixFrom(sum, "matrixSum").m[3][1], 8);
    EXPECT_EQ(matrixFrom(weighted, "matrixSum").m[0][0], 1);
    EXPECT_EQ(matrixFrom(weighted, "matrixSum").m[3][0], 1);
    EXPECT_EQ(matrixFrom(weighted, "matrixSum").m[3][1], 6);
}

TEST(Matrices, AreMadeOfPartsAndTakenApart)
{
    ToyContext compose = nodeOf("composeMatrix");
    compose.setVector("inputTranslate", 1, 2, 3);
    compose.setVector("inputRotate", 0.25, -0.5, 1);
    compose.setVector("inputScale", 2, 3, 4);
    compose.setVector("inputShear", 0.5, 0, 0.25);
    compose.set("inputRotateOrder", 3);
    ToyContext decompose = nodeOf("decomposeMatrix");
    decompose.values["inputMatrix"] = compose.compute("outputMatrix");
    decompose.set("inputRotateOrder", 3);
    EXPECT_NEAR(decompose.compute("outputTranslateZ").number(), 3, 1e-12);
    EXPECT_NEAR(decompose.compute("outputRotateX").number(), 0.25, 1e-11);
    EXPECT_NEAR(decompose.compute("outputRotateY").number(), -0.5, 1e-11);
    EXPECT_NEAR(decompose.compute("outputScaleY").number(), 3, 1e-12);
    EXPECT_NEAR(decompose.compute("outputShearX").number(), 0.5, 1e-12);
    EXPECT_NEAR(decompose.compute("outputShearZ").number(), 0.25, 1e-12);
    // A half turn about y as a quaternion.
    compose.set("useEulerRotation", 0);
    compose.set("inputQuatY", 1);
    compose.set("inputQuatW", 0);
    decompose.values["inputMatrix"] = compose.compute("outputMatrix");
    EXPECT_NEAR(std::fabs(decompose.compute("outputQuatY").number()), 1, 1e-12);
    EXPECT_NEAR(decompose.compute("outputQuatW").number(), 0, 1e-12);
}

TEST(Matrices, AreInvertedHandedOnAndPutTogether)
{
    ToyContext inverse = nodeOf("inverseMatrix");
    inverse.values["inputMatrix"] = Value::of(host::translation({1, 2, 3}));
    EXPECT_EQ(matrixFrom(inverse, "outputMatrix").m[3][2], -3);
    ToyContext pass = nodeOf("passMatrix");
    pass.values["inMatrix"] = Value::of(host::translation({1, 2, 3}));
    EXPECT_EQ(matrixFrom(pass, "outMatrix").m[3][2], 3);
    ToyContext cells = nodeOf("fourByFourMatrix");
    cells.set("in31", 7);
    EXPECT_EQ(matrixFrom(cells, "output"), host::translation({0, 7, 0}));
    ToyContext point = nodeOf("pointMatrixMult");
    point.setVector("inPoint", 1, 1, 1);
    point.values["inMatrix"] = Value::of(host::translation({1, 2, 3}));
    EXPECT_EQ(point.compute("outputZ").number(), 4);
    point.set("vectorMultiply", 1);
    EXPECT_EQ(point.compute("outputZ").number(), 1);
}

} // namespace
