#include "host/nodes/deform/deformTypes.h"

#include "host/geometry/curve/CurveData.h"
#include "host/geometry/deform/moveByLattice.h"
#include "host/math/rotation.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_nodes/deform/pointMesh.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

using host::ComponentList;
using host::Matrix4;
using host::NumberStorage;
using host::NumericArray;
using host::Value;
using host::Vec3d;
using host::Vec3f;
using std::numbers::pi;
using test::meshPoints;
using test::pointMesh;
using test::ToyContext;

using Rows = std::vector<std::vector<std::pair<std::uint32_t, double>>>;

Value turnAboutZ(double angle)
{
    return Value::of(host::eulerRotation({0, 0, angle}, host::RotationOrder::Xyz));
}

void expectPoint(const Value& mesh, std::size_t point, const Vec3f& expected)
{
    const auto points = meshPoints(mesh);
    ASSERT_LT(point, points.size());
    EXPECT_NEAR(points[point].x, expected.x, 1e-6);
    EXPECT_NEAR(points[point].y, expected.y, 1e-6);
    EXPECT_NEAR(points[point].z, expected.z, 1e-6);
}

NumericArray numbers(NumberStorage storage,
                     const std::vector<std::pair<std::uint32_t, double>>& values)
{
    NumericArray array(storage, 1);
    for (const auto& [index, value] : values) {
        array.storeComponent(index, 0, value);
    }
    return array;
}

// --- skinCluster

class Skin : public ::testing::Test {
protected:
    ToyContext context{host::nodes::kSkinCluster};
    std::vector<NumericArray> rows;

    Skin()
    {
        context.setElement("inputGeometry", {0}, pointMesh({{2, 0, 0}, {4, 0, 0}, {6, 0, 0}}));
        context.setElement("matrix", {0}, Value::of(Matrix4{}));
        context.setElement("matrix", {3}, turnAboutZ(pi / 2));
    }

    void setWeights(const Rows& points)
    {
        rows.reserve(points.size());
        for (std::size_t point = 0; point < points.size(); ++point) {
            rows.push_back(numbers(NumberStorage::Double, points[point]));
            context.inners["weights"][{static_cast<std::int32_t>(point)}] = &rows.back();
        }
    }
    Value deformed() { return context.compute("outputGeometry", 0); }
};

// A quarter turn takes (x, 0, 0) to (0, x, 0): half of it linearly is (x / 2, x / 2, 0), by dual
// quaternions an eighth turn. The third point has no weights.
TEST_F(Skin, BlendsJointsByLogicalIndex)
{
    setWeights({{{0, 0.5}, {3, 0.5}}, {{3, 1}}});
    const Value result = deformed();
    expectPoint(result, 0, {1, 1, 0});
    expectPoint(result, 1, {0, 4, 0});
    expectPoint(result, 2, {6, 0, 0});
    context.set("skinningMethod", 1);
    expectPoint(deformed(), 0, {1.41421356F, 1.41421356F, 0});
}

TEST_F(Skin, BlendsItsMethodsByTheirOwnWeights)
{
    setWeights({{{0, 0.5}, {3, 0.5}}, {{0, 0.5}, {3, 0.5}}});
    context.set("skinningMethod", 2);
    const NumericArray half = numbers(NumberStorage::Double, {{0, 0.5}});
    context.arrays["blendWeights"] = &half;
    const Value result = deformed();
    expectPoint(result, 0, {1.20710678F, 1.20710678F, 0}); // the middle of 1 and the root of 2
    expectPoint(result, 1, {2, 2, 0});
}

// The joint was bound at (1, 0, 0), the mesh stood at (0, 5, 0): a point at (2, 0, 0) of it stands
// at (2, 5, 0), that is (1, 5, 0) from the joint, comes to (-5, 1, 0) by a quarter turn about the
// origin, and is (-5, -4, 0) of the mesh.
TEST_F(Skin, GoesThroughTheSpaceInWhichItWasBound)
{
    setWeights({{{3, 1}}});
    context.setElement("bindPreMatrix", {3}, Value::of(host::translation({-1, 0, 0})));
    context.values["geomMatrix"] = Value::of(host::translation({0, 5, 0}));
    expectPoint(deformed(), 0, {-5, -4, 0});
}

TEST_F(Skin, DividesWeightsByTheirSumOnlyWhereItIsAskedTo)
{
    setWeights({{{0, 0.5}}});
    expectPoint(deformed(), 0, {1, 0, 0});
    context.set("normalizeWeights", 2);
    expectPoint(deformed(), 0, {2, 0, 0});
}

TEST_F(Skin, MovesAsFarAsItsEnvelopeLets)
{
    setWeights({{{3, 1}}});
    context.set("envelope", 0.5);
    expectPoint(deformed(), 0, {1, 1, 0});
    context.set("envelope", 0);
    expectPoint(deformed(), 0, {2, 0, 0});
    context.set("envelope", 1);
    context.set("nodeState", 1);
    expectPoint(deformed(), 0, {2, 0, 0});
}

TEST_F(Skin, SharesAllButPoints)
{
    setWeights({{{3, 1}}});
    const auto before = context.elements["inputGeometry"][{0}].data<host::geometry::MeshData>();
    EXPECT_EQ(deformed().data<host::geometry::MeshData>()->topology, before->topology);
}

TEST_F(Skin, ReadsItsWeightsOnce)
{
    setWeights({{{3, 1}}});
    expectPoint(deformed(), 0, {0, 2, 0});
    context.inners.clear();
    context.setElement("matrix", {3}, turnAboutZ(pi));
    expectPoint(deformed(), 0, {-2, 0, 0});
}

TEST_F(Skin, TakesConnectedWeights)
{
    setWeights({{{0, 1}}});
    context.connected.insert("weights");
    context.setElement("weights", {0, 0}, 0.0);
    context.setElement("weights", {0, 3}, 1.0);
    context.setElement("weights", {2, 3}, 1.0);
    const Value result = deformed();
    expectPoint(result, 0, {0, 2, 0});
    expectPoint(result, 1, {4, 0, 0});
    expectPoint(result, 2, {0, 6, 0});
}

TEST_F(Skin, SurvivesWhatCannotBe)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    setWeights({{{0, nan}}, {{4000000000U, 1}, {60000, 1}}});
    context.inners["weights"][{2147483647}] = rows.data();
    const Value result = deformed();
    EXPECT_EQ(meshPoints(result).size(), 3U);
    expectPoint(result, 1, {4, 0, 0}); // 60000 has no matrix: identity
    EXPECT_EQ(context.timesUncomputed, 1U);
}

// --- blendShape

class Blend : public ::testing::Test {
protected:
    using Offsets = std::vector<std::array<double, 4>>;
    ToyContext context{host::nodes::kBlendShape};

    Blend() { context.setElement("inputGeometry", {0}, pointMesh({{0, 0, 0}, {1, 0, 0}})); }

    void setItem(std::int32_t target, std::int32_t item, const Offsets& offsets,
                 const std::vector<std::string>& texts)
    {
        context.setElement("inputPointsTarget", {0, target, item}, Value::of(offsets));
        context.setElement("inputComponentsTarget", {0, target, item},
                           Value::of(ComponentList{texts}));
    }
    Value deformed() { return context.compute("outputGeometry", 0); }
};

TEST_F(Blend, AddsOffsetsInTheOrderOfTheirComponents)
{
    setItem(2, 6000, {{{1, 0, 0, 1}}, {{0, 2, 0, 1}}}, {"vtx[1]", "vtx[0]"});
    expectPoint(deformed(), 0, {0, 0, 0});
    context.setElement("weight", {2}, 0.5);
    const Value result = deformed();
    expectPoint(result, 0, {0, 1, 0});
    expectPoint(result, 1, {1.5F, 0, 0});
}

// In-between at 0.5 with x = 4, full shape with y = 2: at 0.5 the in-between alone, at 0.75 half of
// each.
TEST_F(Blend, GoesThroughInBetweens)
{
    setItem(0, 5500, {{{4, 0, 0, 1}}}, {"vtx[0]"});
    setItem(0, 6000, {{{0, 2, 0, 1}}}, {"vtx[0]"});
    context.setElement("weight", {0}, 0.5);
    expectPoint(deformed(), 0, {4, 0, 0});
    context.setElement("weight", {0}, 0.75);
    expectPoint(deformed(), 0, {2, 1, 0});
    context.setElement("weight", {0}, 0.25);
    expectPoint(deformed(), 0, {2, 0, 0});
}

TEST_F(Blend, AddsTargetsUp)
{
    setItem(0, 6000, {{{1, 0, 0, 1}}}, {"vtx[0]"});
    setItem(1, 6000, {{{0, 1, 0, 1}}}, {"vtx[0]"});
    setItem(2, 6000, {{{0, 0, 1, 1}}}, {"vtx[0]"});
    context.setElement("weight", {0}, 1.0);
    context.setElement("weight", {1}, -2.0);
    context.setElement("weight", {2}, 1.0);
    context.setElement("targetVisibility", {2}, 0.0);
    expectPoint(deformed(), 0, {1, -2, 0});
}

TEST_F(Blend, WeighsPointsOfTargetsAndOfTheWhole)
{
    setItem(0, 6000, {{{8, 0, 0, 1}}, {{8, 0, 0, 1}}}, {"vtx[*]"});
    context.setElement("weight", {0}, 1.0);
    const NumericArray quarter = numbers(NumberStorage::Float, {{1, 0.25}});
    const NumericArray half = numbers(NumberStorage::Float, {{1, 0.5}});
    context.inners["targetWeights"][{0, 0}] = &quarter;
    context.inners["baseWeights"][{0}] = &half;
    const Value result = deformed();
    expectPoint(result, 0, {8, 0, 0});
    expectPoint(result, 1, {2, 0, 0}); // 1 + 8 / 4 / 2
}

TEST_F(Blend, ReachesALiveShape)
{
    context.setElement("inputPointsTarget", {0, 0, 6000}, Value());
    context.setElement("inputGeomTarget", {0, 0, 6000}, pointMesh({{0, 4, 0}}));
    context.setElement("weight", {0}, 0.5);
    const Value result = deformed();
    expectPoint(result, 0, {0, 2, 0});
    expectPoint(result, 1, {1, 0, 0}); // the shape has no such point
}

TEST_F(Blend, TakesControlPointsOfCurves)
{
    host::geometry::CurveData curve;
    curve.degree = 1;
    curve.spans = 1;
    curve.knots = {0, 1};
    curve.poles = {0, 0, 0, 1, 0, 0};
    context.setElement("inputGeometry", {0}, Value::of(curve));
    setItem(0, 6000, {{{0, 0, 3, 1}}}, {"cv[1]"});
    context.setElement("weight", {0}, 1.0);
    const auto moved = deformed().data<host::geometry::CurveData>();
    EXPECT_EQ(moved->poles, (std::vector<double>{0, 0, 0, 1, 0, 3}));
}

TEST_F(Blend, SurvivesListsThatDoNotFit)
{
    setItem(0, 6000, {{{1, 0, 0, 1}}}, {"vtx[0:4294967295]", "vtx[7]"});
    setItem(1, 6000, {{{1, 0, 0, 1}}, {{1, 0, 0, 1}}}, {"vtx[9]"});
    setItem(2, -2147483647, {}, {});
    for (const std::int32_t target : {0, 1, 2, 2147483647}) {
        context.setElement("weight", {target}, 1.0);
    }
    expectPoint(deformed(), 0, {1, 0, 0});
}

// --- cluster, softMod, ffd, nonLinear

TEST(Cluster, TakesPointsAlongByTheirWeights)
{
    ToyContext context(host::nodes::kCluster);
    context.setElement("inputGeometry", {1}, pointMesh({{1, 0, 0}, {2, 0, 0}}));
    context.values["matrix"] = turnAboutZ(pi / 2);
    const NumericArray half = numbers(NumberStorage::Float, {{1, 0.5}});
    context.inners["weights"][{1}] = &half;
    const Value result = context.compute("outputGeometry", 1);
    expectPoint(result, 0, {0, 1, 0});
    expectPoint(result, 1, {1, 1, 0});
}

// The mesh stands at (5, 0, 0) in the world: its origin turns a quarter about the world's, to
// (0, 5, 0), which is (-5, 5, 0) of the mesh.
TEST(Cluster, ActsInTheWorld)
{
    ToyContext context(host::nodes::kCluster);
    context.setElement("inputGeometry", {0}, pointMesh({{0, 0, 0}}));
    context.values["matrix"] = turnAboutZ(pi / 2);
    context.setElement("geomMatrix", {0}, Value::of(host::translation({5, 0, 0})));
    expectPoint(context.compute("outputGeometry", 0), 0, {-5, 5, 0});
}

// Radius 4 about the origin, weights falling straight: half at a distance of 2.
TEST(SoftMod, LosesWithTheDistance)
{
    ToyContext context(host::nodes::kSoftMod);
    context.setElement("inputGeometry", {0}, pointMesh({{0, 0, 0}, {2, 0, 0}, {5, 0, 0}}));
    context.values["matrix"] = Value::of(host::translation({0, 8, 0}));
    context.set("falloffRadius", 4);
    for (const std::int32_t end : {0, 1}) {
        context.setElement("falloffCurve_Position", {end}, double{1.0 * end});
        context.setElement("falloffCurve_FloatValue", {end}, double{1.0 * end});
        context.setElement("falloffCurve_Interp", {end}, 1.0);
    }
    const Value result = context.compute("outputGeometry", 0);
    expectPoint(result, 0, {0, 8, 0});
    expectPoint(result, 1, {2, 4, 0});
    expectPoint(result, 2, {5, 0, 0});
}

// A lattice twice as large as its box of rest, both about (3, 0, 0): distances from there double.
TEST(Ffd, CarriesFromTheBaseToTheLattice)
{
    using namespace host::geometry;
    ToyContext context(host::nodes::kFfd);
    context.setElement("inputGeometry", {0}, pointMesh({{3.25F, 0, 0}, {9, 0, 0}}));
    context.values["deformedLatticePoints"] = Value::of(restLattice(2, 2, 2));
    context.values["baseLatticeMatrix"] = Value::of(host::translation({3, 0, 0}));
    context.values["deformedLatticeMatrix"] =
        Value::of(host::scaling({2, 2, 2}) * host::translation({3, 0, 0}));
    const Value result = context.compute("outputGeometry", 0);
    expectPoint(result, 0, {3.5F, 0, 0});
    expectPoint(result, 1, {9, 0, 0}); // outside
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(Ffd, PassesOnWithoutALattice)
{
    ToyContext context(host::nodes::kFfd);
    context.setElement("inputGeometry", {0}, pointMesh({{1, 2, 3}}));
    context.values["deformedLatticePoints"] = Value::of(host::geometry::LatticeData{9, 9, 9, {}});
    expectPoint(context.compute("outputGeometry", 0), 0, {1, 2, 3});
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(Lattice, IsWhatWasStoredOrAtRest)
{
    ToyContext context(host::nodes::kLattice);
    context.set("sDivisions", 2);
    context.set("tDivisions", 3);
    context.set("uDivisions", 2);
    auto lattice = context.compute("latticeOutput").data<host::geometry::LatticeData>();
    EXPECT_EQ(lattice->points.size(), 12U);
    host::geometry::LatticeData stored{2, 2, 2, std::vector<Vec3d>(8)};
    context.values["cached"] = Value::of(stored);
    context.set("tweak", 1);
    context.set("relativeTweak", 1);
    context.setElement("xValue", {3}, 2.0);
    lattice = context.compute("latticeOutput").data<host::geometry::LatticeData>();
    ASSERT_EQ(lattice->points.size(), 8U);
    EXPECT_EQ(lattice->points[3], (Vec3d{2, 0, 0}));
}

Value bendOf(double curvature)
{
    ToyContext handle(host::nodes::kDeformBend);
    handle.set("lowBound", -1);
    handle.set("highBound", 1);
    handle.set("curvature", curvature);
    return handle.compute("deformerData");
}

// The handle stands at (0, 4, 0): the point one above it bends a quarter turn, see the kernel's
// test.
TEST(NonLinear, WorksInTheSpaceOfItsHandle)
{
    ToyContext context(host::nodes::kNonLinear);
    context.setElement("inputGeometry", {0}, pointMesh({{0, 5, 0}, {0, 4, 0}}));
    context.values["deformerData"] = bendOf(pi / 2);
    context.values["matrix"] = Value::of(host::translation({0, 4, 0}));
    const Value result = context.compute("outputGeometry", 0);
    const auto radius = static_cast<float>(2 / pi);
    expectPoint(result, 0, {radius, 4 + radius, 0});
    expectPoint(result, 1, {0, 4, 0});
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(NonLinear, PassesOnWithoutAHandle)
{
    ToyContext context(host::nodes::kNonLinear);
    context.setElement("inputGeometry", {0}, pointMesh({{1, 2, 3}}));
    context.values["deformerData"] = Value::of(std::vector<double>{-1, 1, 0.5});
    expectPoint(context.compute("outputGeometry", 0), 0, {1, 2, 3});
    EXPECT_EQ(context.timesUncomputed, 1U);
}

} // namespace
