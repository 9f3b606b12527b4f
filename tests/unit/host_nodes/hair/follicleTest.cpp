#include "host/geometry/mesh/buildTopology.h"
#include "host/geometry/nurbs/SurfaceData.h"
#include "host/math/rotation.h"
#include "host/nodes/hair/hairNodes.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

using host::Matrix4;
using host::Value;
using host::Vec2f;
using host::Vec3d;
using host::Vec3f;
using host::geometry::CurveData;
using host::geometry::MeshData;
using host::geometry::SurfaceData;
using host::nodes::kFollicle;
using host::nodes::kHairSystem;
using test::ToyContext;

/// One square with the texture coordinates (0 0) (1 0) (1 1) (0 1) at its corners.
Value square(const std::vector<Vec3f>& points)
{
    const std::vector<std::int32_t> edges{0, 1, 0, 1, 2, 0, 2, 3, 0, 3, 0, 0};
    const std::vector<std::int32_t> corners{0, 1, 2, 3};
    const std::vector<std::uint32_t> sizes{4};
    const std::vector<std::uint32_t> loops{1};
    auto built = host::geometry::buildTopology(4, edges, {corners, sizes, loops});
    MeshData mesh;
    mesh.topology = std::make_shared<const host::geometry::MeshTopology>(std::move(built.topology));
    mesh.edgeSmooth = host::geometry::shareEdgeFlags(std::move(built.edgeSmooth));
    mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
    mesh.uvSets.push_back(
        {"map1",
         std::make_shared<const std::vector<Vec2f>>(
             std::vector<Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}}),
         std::make_shared<const std::vector<std::int32_t>>(std::vector<std::int32_t>{0, 1, 2, 3})});
    mesh.currentUvSet = "map1";
    return Value::of(std::move(mesh));
}

/// A plane of side 2 that looks along y, with u along x and v against z.
Value groundPlane()
{
    return square({{-1, 0, 1}, {1, 0, 1}, {1, 0, -1}, {-1, 0, -1}});
}

Vec3d vectorOf(ToyContext& context, const std::string& name)
{
    return {context.compute(name + "X").number(), context.compute(name + "Y").number(),
            context.compute(name + "Z").number()};
}

void expectNear(const Vec3d& value, const Vec3d& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(value.x, expected.x, tolerance);
    EXPECT_NEAR(value.y, expected.y, tolerance);
    EXPECT_NEAR(value.z, expected.z, tolerance);
}

/// The rows of the rotation that a follicle gives its transform.
void expectFrame(ToyContext& context, const Vec3d& x, const Vec3d& y, const Vec3d& z)
{
    const Matrix4 turn =
        host::eulerRotation(vectorOf(context, "outRotate"), host::RotationOrder::Xyz);
    expectNear({turn.m[0][0], turn.m[0][1], turn.m[0][2]}, x, 1e-9);
    expectNear({turn.m[1][0], turn.m[1][1], turn.m[1][2]}, y, 1e-9);
    expectNear({turn.m[2][0], turn.m[2][1], turn.m[2][2]}, z, 1e-9);
}

Value lineOf(const std::vector<Vec3d>& points)
{
    CurveData curve;
    curve.degree = 1;
    curve.spans = static_cast<std::int32_t>(points.size()) - 1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        curve.knots.push_back(static_cast<double>(i));
        curve.poles.insert(curve.poles.end(), {points[i].x, points[i].y, points[i].z});
    }
    return Value::of(std::move(curve));
}

Value moved(double x, double y, double z)
{
    return Value::of(host::translation({x, y, z}));
}

std::vector<Vec3d> hairOf(ToyContext& context)
{
    const auto points = context.compute("outHair").data<std::vector<Vec3d>>();
    return points != nullptr ? *points : std::vector<Vec3d>();
}

// Follicles in scenes on planes that look along y are turned by -90 degrees about x: their z is the
// surface's normal, their x runs along u. Their curves start out as lines along z.
TEST(Follicle, StandsOnAMesh)
{
    ToyContext context(kFollicle);
    context.values["inputMesh"] = groundPlane();
    context.set("parameterU", 0.25);
    context.set("parameterV", 0.75);
    expectNear(vectorOf(context, "outTranslate"), {-0.5, 0, -0.5});
    expectNear(vectorOf(context, "outRotate"), {-std::numbers::pi / 2, 0, 0}, 1e-11);
    expectNear(vectorOf(context, "outNormal"), {0, 1, 0});
    expectNear(vectorOf(context, "outTangent"), {1, 0, 0});
    EXPECT_EQ(context.compute("validUv").number(), 1);
}

// A bilinear patch over the knots 2..6 and 10..11: parameters are shares of these ranges.
TEST(Follicle, StandsOnASurfaceByShares)
{
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 1;
    surface.knotsU = {2, 6};
    surface.knotsV = {10, 11};
    surface.poles = {-1, 0, 1, -1, 0, -1, 1, 0, 1, 1, 0, -1}; // v fastest
    ToyContext context(kFollicle);
    context.values["inputSurface"] = Value::of(std::move(surface));
    context.set("parameterU", 0.25);
    context.set("parameterV", 0.75);
    expectNear(vectorOf(context, "outTranslate"), {-0.5, 0, -0.5});
    expectNear(vectorOf(context, "outRotate"), {-std::numbers::pi / 2, 0, 0}, 1e-11);
}

// The matrix turns x into y and y into -x (rows 0 1 0, -1 0 0, 0 0 1) and moves by 1 2 3.
TEST(Follicle, GoesWhereTheSurfaceIs)
{
    Matrix4 world = host::translation({1, 2, 3});
    world.m[0] = {0, 1, 0, 0};
    world.m[1] = {-1, 0, 0, 0};
    ToyContext context(kFollicle);
    context.values["inputMesh"] = groundPlane();
    context.values["inputWorldMatrix"] = Value::of(world);
    context.set("parameterU", 0.25);
    context.set("parameterV", 0.75);
    expectNear(vectorOf(context, "outTranslate"), {1, 1.5, 2.5});
    expectNear(vectorOf(context, "outNormal"), {-1, 0, 0});
    expectNear(vectorOf(context, "outTangent"), {0, 1, 0});
    expectFrame(context, {0, 1, 0}, {0, 0, -1}, {-1, 0, 0});
}

// The normal of a slope under an uneven scale is that of its scaled sides.
TEST(Follicle, KeepsItsNormalUprightUnderScales)
{
    const Vec3d along{2, 1, 0};
    const Vec3d across{0, 0.5, -1};
    ToyContext context(kFollicle);
    context.values["inputMesh"] = square({{0, 0, 0}, {2, 1, 0}, {2, 1.5F, -1}, {0, 0.5F, -1}});
    context.values["inputWorldMatrix"] = Value::of(host::scaling({3, 1, 5}));
    context.set("parameterU", 0.5);
    context.set("parameterV", 0.5);
    const Vec3d scaledAlong{along.x * 3, along.y, along.z * 5};
    const Vec3d scaledAcross{across.x * 3, across.y, across.z * 5};
    expectNear(vectorOf(context, "outNormal"), normalized(cross(scaledAlong, scaledAcross)), 1e-6);
    expectNear(vectorOf(context, "outTangent"), normalized(scaledAlong), 1e-6);
}

TEST(Follicle, TurnsRoundWhenFlipped)
{
    ToyContext context(kFollicle);
    context.values["inputMesh"] = groundPlane();
    context.set("parameterU", 0.5);
    context.set("parameterV", 0.5);
    context.set("flipDirection", 1);
    expectNear(vectorOf(context, "outNormal"), {0, -1, 0});
    expectFrame(context, {1, 0, 0}, {0, 0, 1}, {0, -1, 0});
}

// What is kept of one mesh must not answer for another one, nor one set for another.
TEST(Follicle, TellsMeshesAndSetsApart)
{
    std::vector<Value> grounds;
    for (int height = 0; height < 7; ++height) {
        const auto y = static_cast<float>(height);
        grounds.push_back(square({{-1, y, 1}, {1, y, 1}, {1, y, -1}, {-1, y, -1}}));
    }
    ToyContext context(kFollicle);
    context.set("parameterU", 0.25);
    context.set("parameterV", 0.75);
    for (int round = 0; round < 3; ++round) {
        for (int height = 0; height < 7; ++height) {
            context.values["inputMesh"] = grounds[static_cast<std::size_t>(height)];
            expectNear(vectorOf(context, "outTranslate"),
                       {-0.5, static_cast<double>(height), -0.5});
        }
    }
    MeshData mesh = *groundPlane().data<MeshData>();
    host::geometry::UvSet turned = mesh.uvSets[0]; // u against x, v along z
    turned.name = "turned";
    turned.points = std::make_shared<const std::vector<Vec2f>>(
        std::vector<Vec2f>{{1, 1}, {0, 1}, {0, 0}, {1, 0}});
    mesh.uvSets.push_back(turned);
    context.values["inputMesh"] = Value::of(std::move(mesh));
    expectNear(vectorOf(context, "outTranslate"), {-0.5, 0, -0.5});
    context.values["mapSetName"] = Value::of(std::string("turned"));
    expectNear(vectorOf(context, "outTranslate"), {0.5, 0, 0.5});
    expectNear(vectorOf(context, "outTangent"), {-1, 0, 0});
}

TEST(Follicle, HasNoPlaceWithoutASurfaceOrBesideIt)
{
    ToyContext context(kFollicle);
    EXPECT_TRUE(context.compute("outTranslateX").isEmpty());
    EXPECT_EQ(context.compute("validUv").number(), 0);
    context.values["inputMesh"] = groundPlane();
    context.set("parameterU", 1.5);
    EXPECT_TRUE(context.compute("outTranslateX").isEmpty());
    EXPECT_EQ(context.compute("validUv").number(), 0);
}

TEST(Follicle, GivesItsStartCurveInTheWorld)
{
    ToyContext context(kFollicle);
    context.values["startPosition"] = lineOf({{0, 0, 0}, {0, 0, 1}, {0, 1, 1}});
    context.values["restPosition"] = lineOf({{9, 9, 9}, {8, 8, 8}});
    EXPECT_EQ(hairOf(context), (std::vector<Vec3d>{{0, 0, 0}, {0, 0, 1}, {0, 1, 1}}));
    context.values["startPositionMatrix"] = moved(4, 0, 2);
    EXPECT_EQ(hairOf(context), (std::vector<Vec3d>{{4, 0, 2}, {4, 0, 3}, {4, 1, 3}}));
    context.values.erase("startPosition");
    EXPECT_EQ(hairOf(context), (std::vector<Vec3d>{{9, 9, 9}, {8, 8, 8}}));
}

// Twice the points: 6 over the control points 0..2, that is every 0.4 of a span.
TEST(Follicle, SamplesItsCurveByDensityOrLength)
{
    ToyContext context(kFollicle);
    context.values["startPosition"] = lineOf({{0, 0, 0}, {0, 0, 1}, {0, 1, 1}});
    context.set("sampleDensity", 2);
    const std::vector<Vec3d> dense{{0, 0, 0},   {0, 0, 0.4}, {0, 0, 0.8},
                                   {0, 0.2, 1}, {0, 0.6, 1}, {0, 1, 1}};
    std::vector<Vec3d> points = hairOf(context);
    ASSERT_EQ(points.size(), dense.size());
    for (std::size_t i = 0; i < dense.size(); ++i) {
        expectNear(points[i], dense[i]);
    }
    context.values["startPosition"] = lineOf({{0, 0, 0}, {0, 0, 3}, {0, 0, 4}});
    context.set("fixedSegmentLength", 1);
    context.set("segmentLength", 0.5);
    points = hairOf(context);
    ASSERT_EQ(points.size(), 9U); // 4 centimetres in pieces of a half
    for (std::size_t i = 0; i < points.size(); ++i) {
        expectNear(points[i], {0, 0, 0.5 * static_cast<double>(i)}, 1e-9);
    }
}

TEST(Follicle, GrowsAStraightHairWithoutACurve)
{
    ToyContext context(kFollicle);
    context.values["inputMesh"] = groundPlane();
    context.set("parameterU", 0.5);
    context.set("parameterV", 0.5);
    context.set("segmentLength", 2.5);
    const std::vector<Vec3d> points = hairOf(context);
    ASSERT_EQ(points.size(), 2U);
    expectNear(points[0], {0, 0, 0});
    expectNear(points[1], {0, 2.5, 0});
}

TEST(Follicle, MakesACurveOfTheCurrentPoints)
{
    ToyContext context(kFollicle);
    EXPECT_TRUE(context.compute("outCurve").isEmpty());
    context.values["startPosition"] = lineOf({{0, 0, 0}, {0, 0, 1}});
    context.set("degree", 3);
    auto curve = context.compute("outCurve").data<CurveData>();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->degree, 1); // two points give no more
    EXPECT_EQ(curve->knots, (std::vector<double>{0, 1}));
    context.values["currentPosition"] =
        Value::of(std::vector<Vec3d>{{1, 0, 0}, {2, 0, 0}, {3, 1, 0}, {4, 1, 0}, {5, 0, 0}});
    curve = context.compute("outCurve").data<CurveData>();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->degree, 3);
    EXPECT_EQ(curve->spans, 2);
    EXPECT_EQ(curve->knots, (std::vector<double>{0, 0, 0, 1, 2, 2, 2}));
    EXPECT_EQ(curve->poles.size(), 15U);
    EXPECT_EQ(curve->poles[9], 4);
}

TEST(HairSystem, LeavesHairsAsTheyStart)
{
    ToyContext context(kHairSystem);
    const std::vector<Vec3d> points{{0, 0, 0}, {0, 1, 0}};
    context.setElement("inputHair", {3}, Value::of(points));
    const auto hair = context.compute("outputHair", 3).data<std::vector<Vec3d>>();
    ASSERT_NE(hair, nullptr);
    EXPECT_EQ(*hair, points);
    EXPECT_TRUE(context.compute("outputHair", 4).isEmpty());
}

} // namespace
