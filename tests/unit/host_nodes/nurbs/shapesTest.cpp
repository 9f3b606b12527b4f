#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/primitives.h"
#include "host/nodes/matrixValue.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "tests/unit/host_nodes/nurbs/splines.h"

namespace {

using host::Value;
using host::geometry::CurveData;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using host::nodes::kNurbsCurve;
using host::nodes::kNurbsSurface;
using host::nodes::kTransformGeometry;
using test::curveFrom;
using test::expectNear;
using test::lineValue;
using test::pointOf;
using test::squareValue;
using test::surfaceFrom;
using test::ToyContext;

/// Two axes of one control point.
void setPoint(ToyContext& context, std::int32_t index, double x, double y)
{
    context.setElement("xValue", {index}, x);
    context.setElement("yValue", {index}, y);
}

TEST(NurbsCurve, PrefersWhatComesInToWhatIsStored)
{
    ToyContext context(kNurbsCurve);
    EXPECT_TRUE(context.compute("local").isEmpty());
    context.values["cached"] = lineValue({0, 0, 0}, {1, 0, 0});
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {1, 0, 0});
    context.values["create"] = lineValue({0, 0, 0}, {5, 0, 0});
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {5, 0, 0});
}

TEST(NurbsCurve, AddsTweaksAndTakesPositions)
{
    ToyContext context(kNurbsCurve);
    context.values["create"] = lineValue({0, 0, 0}, {5, 0, 3});
    setPoint(context, 1, 1, 2);
    setPoint(context, 9, 1, 2); // no such point
    context.set("tweak", 1);
    context.set("relativeTweak", 1);
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {6, 2, 3});
    context.set("relativeTweak", 0);
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {1, 2, 3});
    context.set("tweak", 0); // not tweaks at all: the points themselves
    context.set("relativeTweak", 1);
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {1, 2, 3});
}

TEST(NurbsCurve, KeepsARingClosedWhenItsFirstPointMoves)
{
    CurveData ring = test::curveData(2, {-1, 0, 1, 2, 3, 4, 5},
                                     {1, 1, 0, -1, 1, 0, -1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0});
    ring.form = SplineForm::Periodic;
    ToyContext context(kNurbsCurve);
    context.values["create"] = Value::of(ring);
    context.set("tweak", 1);
    context.set("relativeTweak", 1);
    setPoint(context, 0, 10, 0);
    const CurveData moved = curveFrom(context.compute("local"));
    EXPECT_EQ(moved.poles[0], 11);
    EXPECT_EQ(moved.poles[12], 11); // the fifth repeats the first
    expectNear(pointOf(moved, 0), pointOf(moved, 4));
}

TEST(NurbsCurve, GivesWorldSpaceAndItsNumbers)
{
    ToyContext context(kNurbsCurve);
    context.values["create"] = lineValue({0, 0, 0}, {5, 0, 0});
    context.parent = host::scaling({2, 2, 2}) * host::translation({1, 1, 1});
    expectNear(pointOf(curveFrom(context.compute("worldSpace", 0)), 1), {11, 1, 1});
    expectNear(pointOf(curveFrom(context.compute("local")), 1), {5, 0, 0});
    EXPECT_EQ(context.compute("maxValue").number(), 1);
    EXPECT_EQ(context.compute("degree").number(), 1);
    EXPECT_EQ(context.compute("spans").number(), 1);
}

TEST(NurbsSurface, TakesStoredTrimsAndTweaks)
{
    auto region = std::make_shared<host::geometry::TrimRegion>();
    region->flipNormal = true;
    ToyContext context(kNurbsSurface);
    context.values["cached"] = squareValue();
    context.setElement("trimFace", {3},
                       Value(std::shared_ptr<const host::geometry::TrimRegion>(region)));
    context.set("tweak", 1);
    context.set("relativeTweak", 1);
    setPoint(context, 2, 0, 7); // u = 1, v = 0
    const SurfaceData surface = surfaceFrom(context.compute("local"));
    ASSERT_EQ(surface.trims.size(), 1U);
    EXPECT_TRUE(surface.trims[0]->flipNormal);
    expectNear(pointOf(surface, 2, 0), {2, 7, 0});
    EXPECT_EQ(context.compute("maxValueU").number(), 2);
    context.parent = host::translation({0, 0, 9});
    expectNear(pointOf(surfaceFrom(context.compute("worldSpace", 0)), 2, 0), {2, 7, 9});
}

TEST(NurbsSurface, CountsControlPointsWithTheOverlap)
{
    // A sphere of four sections: seven control points around, of which the last three repeat the
    // first; point 7 is the first of the second ring.
    host::geometry::RoundPrimitive primitive;
    primitive.sections = 4;
    primitive.spans = 2;
    const SurfaceData sphere = host::geometry::sphereSurface(primitive);
    ASSERT_EQ(sphere.cvCountV(), 7U);
    ToyContext context(kNurbsSurface);
    context.values["create"] = Value::of(sphere);
    context.set("tweak", 1);
    context.set("relativeTweak", 1);
    setPoint(context, 7, 0, 100);
    const SurfaceData moved = surfaceFrom(context.compute("local"));
    EXPECT_EQ(moved.poles[7 * 3 + 1], sphere.poles[7 * 3 + 1] + 100);
    EXPECT_EQ(moved.poles[11 * 3 + 1], sphere.poles[11 * 3 + 1] + 100);
    EXPECT_EQ(moved.poles[8 * 3 + 1], sphere.poles[8 * 3 + 1]);
}

TEST(NurbsSurface, GivesNoDamagedRecords)
{
    SurfaceData damaged = surfaceFrom(squareValue());
    damaged.poles.resize(5);
    ToyContext context(kNurbsSurface);
    context.values["cached"] = Value::of(damaged);
    context.set("tweak", 1);
    setPoint(context, 2, 0, 7);
    for (const char* output : {"local", "maxValueV"}) { // an error, which is told of once
        EXPECT_THROW(context.compute(output), std::logic_error) << output;
    }
}

TEST(TransformGeometry, MovesCurvesSurfacesAndMeshes)
{
    ToyContext context(kTransformGeometry);
    context.values["transform"] = host::nodes::matrixValue(host::scaling({2, 4, 8}));
    context.values["inputGeometry"] = lineValue({1, 1, 1}, {5, 0, 0});
    expectNear(pointOf(curveFrom(context.compute("outputGeometry")), 0), {2, 4, 8});
    context.values["inputGeometry"] = squareValue();
    expectNear(pointOf(surfaceFrom(context.compute("outputGeometry")), 2, 2), {4, 0, 16});
    context.set("invertTransform", 1);
    expectNear(pointOf(surfaceFrom(context.compute("outputGeometry")), 2, 2), {1, 0, 0.25});
    context.set("nodeState", 1);
    expectNear(pointOf(surfaceFrom(context.compute("outputGeometry")), 2, 2), {2, 0, 2});
}

host::Shared<host::geometry::MeshData> twoPoints()
{
    auto mesh = std::make_shared<host::geometry::MeshData>();
    mesh->topology = std::make_shared<const host::geometry::MeshTopology>();
    mesh->points = std::make_shared<const std::vector<host::Vec3f>>(
        std::vector<host::Vec3f>{{1, 1, 1}, {2, 2, 2}});
    return mesh;
}

TEST(Tweak, MovesPointsOfTheGeometryWithItsIndex)
{
    ToyContext context(host::nodes::kTweak);
    context.setElement("inputGeometry", {0}, lineValue({0, 0, 0}, {1, 0, 0}));
    context.setElement("inputGeometry", {1}, squareValue());
    context.setElement("inputGeometry", {2}, Value(twoPoints()));
    context.setElement("yValue", {0, 1}, 5.0);
    context.setElement("xValue", {0, 1}, 0.0);
    context.setElement("xValue", {1, 3}, 7.0);
    context.setElement("xVertex", {2, 1}, 0.5);
    context.setElement("xVertex", {2, 9}, 0.5); // no such vertex
    expectNear(pointOf(curveFrom(context.compute("outputGeometry", 0)), 1), {1, 5, 0});
    expectNear(pointOf(surfaceFrom(context.compute("outputGeometry", 1)), 2, 2), {9, 0, 2});
    const auto mesh = context.compute("outputGeometry", 2).data<host::geometry::MeshData>();
    EXPECT_EQ((*mesh->points)[1], (host::Vec3f{2.5F, 2, 2}));
    EXPECT_EQ((*mesh->points)[0], (host::Vec3f{1, 1, 1}));
    context.set("relativeTweak", 0);
    expectNear(pointOf(surfaceFrom(context.compute("outputGeometry", 1)), 2, 2), {7, 0, 2});
    context.set("envelope", 0);
    expectNear(pointOf(curveFrom(context.compute("outputGeometry", 0)), 1), {1, 0, 0});
    EXPECT_EQ(context.timesUncomputed, 0U);
}

} // namespace
