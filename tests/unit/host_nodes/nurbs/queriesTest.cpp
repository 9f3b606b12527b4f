#include "host/nodes/matrixValue.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "tests/unit/host_nodes/nurbs/splines.h"

#include <cmath>
#include <numbers>

namespace {

using host::Value;
using host::Vec3d;
using std::numbers::pi;
using test::expectNear;
using test::lineValue;
using test::squareValue;
using test::ToyContext;

Vec3d vectorFrom(ToyContext& context, const std::string& name)
{
    return {context.compute(name + "X").number(), context.compute(name + "Y").number(),
            context.compute(name + "Z").number()};
}

/// (u, u^2) over 0..1.
Value parabola()
{
    return Value::of(test::curveData(2, {0, 0, 1, 1}, {0, 0, 0, 0.5, 0, 0, 1, 1, 0}));
}

TEST(CurveInfo, KnowsLengthAndPoints)
{
    ToyContext context(host::nodes::kCurveInfo);
    context.values["inputCurve"] = lineValue({0, 0, 0}, {3, 4, 12});
    EXPECT_NEAR(context.compute("arcLength").number(), 13, 1e-12);
    EXPECT_EQ(context.compute("zValue", 1).number(), 12);
    EXPECT_EQ(context.compute("weights", 1).number(), 1);
    EXPECT_TRUE(context.compute("xValue", 2).isEmpty());
}

TEST(PointOnCurveInfo, KnowsTheCurvatureOfAParabola)
{
    // At the vertex of y = x^2: tangent (1, 0), curvature 2, centre (0, 1/2).
    ToyContext context(host::nodes::kPointOnCurveInfo);
    context.values["inputCurve"] = parabola();
    expectNear(vectorFrom(context, "position"), {0, 0, 0});
    expectNear(vectorFrom(context, "tangent"), {1, 0, 0});
    expectNear(vectorFrom(context, "normal"), {0, 2, 0});
    expectNear(vectorFrom(context, "normalizedNormal"), {0, 1, 0});
    expectNear(vectorFrom(context, "curvatureCenter"), {0, 0.5, 0});
    EXPECT_NEAR(context.compute("curvatureRadius").number(), 0.5, 1e-12);
    // Half of the domain: (1/2, 1/4) with the tangent (1, 1).
    context.set("turnOnPercentage", 1);
    context.set("parameter", 0.5);
    expectNear(vectorFrom(context, "position"), {0.5, 0.25, 0});
    expectNear(vectorFrom(context, "normalizedTangent"), {std::sqrt(0.5), std::sqrt(0.5), 0});
}

TEST(NearestPointOnCurve, FindsPlaceAndParameter)
{
    ToyContext context(host::nodes::kNearestPointOnCurve);
    context.values["inputCurve"] = lineValue({0, 0, 0}, {4, 0, 0});
    context.setVector("inPosition", 3, 5, 5);
    expectNear(vectorFrom(context, "position"), {3, 0, 0});
    EXPECT_NEAR(context.compute("parameter").number(), 0.75, 1e-12);
}

TEST(PointOnSurfaceInfo, KnowsTangentsAndNormal)
{
    ToyContext context(host::nodes::kPointOnSurfaceInfo);
    context.values["inputSurface"] = squareValue();
    context.set("turnOnPercentage", 1);
    context.set("parameterU", 0.25);
    context.set("parameterV", 0.75);
    expectNear(vectorFrom(context, "position"), {0.5, 0, 1.5});
    expectNear(vectorFrom(context, "normalizedNormal"), {0, -1, 0});
    EXPECT_EQ(context.compute("tangentVz").number(), 1);
    EXPECT_EQ(context.compute("normalizedTangentUX").number(), 1);
}

TEST(ClosestPointOnSurface, FindsPlaceAndParameters)
{
    ToyContext context(host::nodes::kClosestPointOnSurface);
    context.values["inputSurface"] = squareValue();
    context.setVector("inPosition", 0.3, 9, 1.1);
    expectNear(vectorFrom(context, "position"), {0.3, 0, 1.1}, 1e-9);
    EXPECT_NEAR(context.compute("parameterU").number(), 0.3, 1e-9);
    EXPECT_NEAR(context.compute("parameterV").number(), 1.1, 1e-9);
}

TEST(MotionPath, PlacesByParameterAndByLength)
{
    // One span three times as long as the other.
    ToyContext context(host::nodes::kMotionPath);
    context.values["geometryPath"] =
        Value::of(test::curveData(1, {0, 1, 2}, {0, 0, 0, 3, 0, 0, 4, 0, 0}));
    context.set("uValue", 0.5);
    EXPECT_NEAR(context.compute("xCoordinate").number(), 1.5, 1e-12);
    context.set("fractionMode", 1);
    EXPECT_NEAR(context.compute("xCoordinate").number(), 2, 1e-12);
    expectNear(vectorFrom(context, "rotate"), {0, 0, 0}); // follows nothing
}

TEST(MotionPath, TurnsTheFrontAxisAlongThePath)
{
    // Along +x with +y up: the front axis y lies along x, the up axis z along y; that is a turn of
    // z to y and y to x, so x goes to z.
    ToyContext context(host::nodes::kMotionPath);
    context.values["geometryPath"] = lineValue({0, 0, 0}, {4, 0, 0});
    context.set("follow", 1);
    auto matrix = host::nodes::matrixOf(context.compute("orientMatrix"));
    expectNear(host::transformVector({0, 1, 0}, matrix), {1, 0, 0});
    expectNear(host::transformVector({0, 0, 1}, matrix), {0, 1, 0});
    expectNear(host::transformVector({1, 0, 0}, matrix), {0, 0, 1});
    context.set("frontAxis", 0);
    context.set("upAxis", 1);
    expectNear(vectorFrom(context, "rotate"), {0, 0, 0});
    context.set("frontTwist", pi / 2);
    expectNear(vectorFrom(context, "rotate"), {pi / 2, 0, 0});
    context.set("frontTwist", 0);
    context.set("inverseFront", 1);
    matrix = host::nodes::matrixOf(context.compute("orientMatrix"));
    expectNear(host::transformVector({1, 0, 0}, matrix), {-1, 0, 0});
    expectNear(host::transformVector({0, 1, 0}, matrix), {0, 1, 0});
}

TEST(MotionPath, TakesItsUpFromAnObject)
{
    ToyContext context(host::nodes::kMotionPath);
    context.values["geometryPath"] = lineValue({0, 0, 0}, {4, 0, 0});
    context.set("follow", 1);
    context.set("frontAxis", 0);
    context.set("upAxis", 1);
    context.set("worldUpType", 1);
    context.values["worldUpMatrix"] = host::nodes::matrixValue(host::translation({0, 0, 5}));
    const auto matrix = host::nodes::matrixOf(context.compute("orientMatrix"));
    expectNear(host::transformVector({0, 1, 0}, matrix), {0, 0, 1});
    // An up that lies along the path says nothing; any will do.
    context.values["worldUpMatrix"] = host::nodes::matrixValue(host::translation({9, 0, 0}));
    const auto any = host::nodes::matrixOf(context.compute("orientMatrix"));
    expectNear(host::transformVector({1, 0, 0}, any), {1, 0, 0});
    EXPECT_NEAR(host::length(host::transformVector({0, 1, 0}, any)), 1, 1e-12);
}

} // namespace
