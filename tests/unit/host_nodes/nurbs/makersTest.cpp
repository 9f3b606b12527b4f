#include "host/nodes/nurbs/nurbsTypes.h"
#include "tests/unit/host_nodes/nurbs/splines.h"

#include <numbers>

namespace {

using host::NodeCompute;
using host::Value;
using host::Vec3d;
using host::geometry::CurveData;
using host::geometry::SplineForm;
using host::geometry::SurfaceData;
using std::numbers::pi;
using test::curveFrom;
using test::expectNear;
using test::lineValue;
using test::pointOf;
using test::squareValue;
using test::surfaceFrom;
using test::ToyContext;

TEST(MakeNurbSphere, IsTheDefaultSphereOfScenesThatOnlyNameTheAxis)
{
    ToyContext context(host::nodes::kMakeNurbSphere);
    context.setVector("axis", 0, 1, 0);
    const SurfaceData sphere = surfaceFrom(context.compute("outputSurface"));
    EXPECT_EQ(sphere.knotsU.size(), 9U); // four spans
    EXPECT_EQ(sphere.knotsV.size(), 13U);
    EXPECT_NEAR(sphere.poles[11 * 3], 0.19991679083637276, 1e-14); // as stored
    context.setVector("pivot", 5, 6, 7);
    context.set("radius", 3);
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 2, 0), {8, 6, 7});
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("useTolerance", 1);
    context.compute("outputSurface");
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(MakeNurbTorus, TakesItsRatioAsTheTubes)
{
    ToyContext context(host::nodes::kMakeNurbTorus);
    context.setVector("axis", 0, 1, 0);
    context.set("spans", 4);
    context.set("heightRatio", 0.5);
    const SurfaceData torus = surfaceFrom(context.compute("outputSurface"));
    expectNear(pointOf(torus, 0, 0), {1, -0.5, 0});
    expectNear(pointOf(torus, 1, 0), {1.5, 0, 0});
    expectNear(pointOf(torus, 2, 2), {0, 0.5, 1});
}

TEST(MakeNurbCylinderAndCone, SweepPartsOfATurn)
{
    for (const NodeCompute* row : {&host::nodes::kMakeNurbCylinder, &host::nodes::kMakeNurbCone}) {
        ToyContext context(*row);
        context.setVector("axis", 0, 1, 0);
        context.set("startSweep", pi / 2);
        context.set("endSweep", pi);
        context.set("degree", 1);
        context.set("sections", 1);
        const SurfaceData surface = surfaceFrom(context.compute("outputSurface"));
        EXPECT_EQ(surface.formV, SplineForm::Open);
        expectNear(pointOf(surface, 0, 0), {0, -1, 1});
        expectNear(pointOf(surface, 0, 1), {-1, -1, 0});
    }
}

TEST(MakeNurbCylinder, GivesTheCirclesOfItsCaps)
{
    ToyContext context(host::nodes::kMakeNurbCylinder);
    context.setVector("axis", 0, 1, 0);
    context.set("radius", 3);
    expectNear(pointOf(curveFrom(context.compute("bottomCapCurve")), 2), {0, -3, 3});
    expectNear(pointOf(curveFrom(context.compute("topCapCurve")), 4), {-3, 3, 0});
}

TEST(Makers, CutCountsToTheirLimit)
{
    // 1000 spans of degree 3: 1003 control points along the profile and around.
    const auto poles = [](const NodeCompute& row, const char* one, const char* other) {
        ToyContext context(row);
        context.setVector("axis", 0, 1, 0);
        context.set(one, 1e9);
        context.set(other, 1e9);
        const std::size_t count = surfaceFrom(context.compute("outputSurface")).poles.size();
        EXPECT_EQ(context.timesUncomputed, 2U);
        return count / 3;
    };
    EXPECT_EQ(poles(host::nodes::kMakeNurbSphere, "sections", "spans"), 1003U * 1003);
    EXPECT_EQ(poles(host::nodes::kMakeNurbPlane, "patchesU", "patchesV"), 1003U * 1003);
}

TEST(MakeNurbPlaneAndCube, HaveTheirSizes)
{
    ToyContext plane(host::nodes::kMakeNurbPlane);
    plane.setVector("axis", 0, 1, 0);
    plane.set("width", 10);
    plane.set("lengthRatio", 0.2);
    expectNear(pointOf(surfaceFrom(plane.compute("outputSurface")), 0, 0), {-5, 0, 1});
    ToyContext cube(host::nodes::kMakeNurbCube);
    cube.setVector("axis", 0, 1, 0);
    Vec3d sum;
    for (const char* output : {"outputSurface", "outputSurface1", "outputSurface2",
                               "outputSurface3", "outputSurface4", "outputSurface5"}) {
        sum = sum + pointOf(surfaceFrom(cube.compute(output)), 0.5, 0.5);
    }
    expectNear(sum, {0, 0, 0});
}

TEST(MakeNurbCircle, RunsAboutItsNormalAsStoredCirclesDo)
{
    // Stored circles with the normal +z begin at +y and go on to -x; with +y at -z, then -x.
    ToyContext context(host::nodes::kMakeNurbCircle);
    const CurveData about = curveFrom(context.compute("outputCurve"));
    EXPECT_EQ(about.form, SplineForm::Periodic);
    ASSERT_EQ(about.poles.size(), 33U);
    expectNear({about.poles[0], about.poles[1], about.poles[2]},
               {0.7836116248912, 0.7836116248912, 0}, 1e-12);
    expectNear({about.poles[3], about.poles[4], about.poles[5]}, {0, 1.1081941875543879, 0}, 1e-14);
    expectNear(pointOf(about, 2), {-1, 0, 0});
    context.setVector("normal", 0, 1, 0);
    context.setVector("center", 1, 1, 1);
    context.set("radius", 2);
    const CurveData flat = curveFrom(context.compute("outputCurve"));
    expectNear(pointOf(flat, 0), {1, 1, -1});
    expectNear(pointOf(flat, 2), {-1, 1, 1});
}

TEST(MakeNurbsSquare, MakesFourSidesThatFollowOneAnother)
{
    ToyContext context(host::nodes::kMakeNurbsSquare);
    context.set("sideLength1", 4);
    context.set("sideLength2", 2);
    context.set("spansPerSide", 3);
    const std::array<const char*, 4> outputs{"outputCurve1", "outputCurve2", "outputCurve3",
                                             "outputCurve4"};
    for (std::size_t i = 0; i < 4; ++i) {
        const CurveData side = curveFrom(context.compute(outputs[i]));
        const CurveData next = curveFrom(context.compute(outputs[(i + 1) % 4]));
        EXPECT_EQ(side.spans, 3);
        expectNear(pointOf(side, 3), pointOf(next, 0));
        const Vec3d length = pointOf(side, 3) - pointOf(side, 0);
        EXPECT_NEAR(host::length(length), i % 2 == 0 ? 4 : 2, 1e-12);
    }
}

TEST(CircularArcs, GoThroughTheirPoints)
{
    ToyContext three(host::nodes::kMakeThreePointCircularArc);
    three.setVector("point1", 1, 0, 0);
    three.setVector("point2", 0, 1, 0);
    three.setVector("point3", -1, 0, 0);
    three.set("sections", 4);
    const CurveData arc = curveFrom(three.compute("outputCurve"));
    expectNear(pointOf(arc, 0), {1, 0, 0});
    expectNear(pointOf(arc, 2), {0, 1, 0});
    expectNear(pointOf(arc, 4), {-1, 0, 0});
    three.setVector("point2", 0, 0, 0); // on a line
    expectNear(pointOf(curveFrom(three.compute("outputCurve")), 1), {0, 0, 0});
    ToyContext two(host::nodes::kMakeTwoPointCircularArc);
    two.setVector("point1", 1, 0, 0);
    two.setVector("point2", 0, 1, 0);
    two.set("radius", 1);
    two.setVector("directionVector", 0, 0, 1);
    const CurveData quarter = curveFrom(two.compute("outputCurve"));
    expectNear(pointOf(quarter, 0), {1, 0, 0});
    expectNear(pointOf(quarter, 8), {0, 1, 0});
}

TEST(Revolve, TurnsAProfileAboutItsAxis)
{
    ToyContext context(host::nodes::kRevolve);
    EXPECT_TRUE(context.compute("outputSurface").isEmpty());
    context.values["inputCurve"] = lineValue({3, 0, 0}, {2, 5, 0});
    context.setVector("axis", 0, 1, 0);
    context.setVector("pivot", 1, 0, 0);
    const SurfaceData surface = surfaceFrom(context.compute("outputSurface"));
    EXPECT_EQ(surface.degreeU, 1);
    EXPECT_EQ(surface.formV, SplineForm::Periodic);
    // Two away from the axis at x = 1; a quarter turn on it stands towards +z.
    expectNear(pointOf(surface, 0, 0), {3, 0, 0});
    expectNear(pointOf(surface, 0, 2), {1, 0, 2});
    expectNear(pointOf(surface, 1, 4), {0, 5, 0});
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("endSweep", 0);
    EXPECT_TRUE(host::geometry::isValidSurface(surfaceFrom(context.compute("outputSurface"))));
}

TEST(LoftNode, SkinsItsCurvesInOrder)
{
    ToyContext context(host::nodes::kLoft);
    context.setElement("inputCurve", {0}, lineValue({0, 0, 0}, {1, 0, 0}));
    EXPECT_TRUE(context.compute("outputSurface").isEmpty());
    context.setElement("inputCurve", {4}, lineValue({1, 2, 0}, {0, 2, 0})); // runs backwards
    context.set("uniform", 1);
    const SurfaceData turned = surfaceFrom(context.compute("outputSurface"));
    expectNear(pointOf(turned, 0, 0.5), {0, 1, 0});
    context.set("autoReverse", 0);
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 0, 1), {1, 2, 0});
    context.set("autoReverse", 1);
    context.set("reverseSurfaceNormals", 1); // u and v exchanged
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 0.5, 0), {0, 1, 0});
}

TEST(LoftNode, SaysThatTwoCurvesAreNotClosed)
{
    ToyContext context(host::nodes::kLoft);
    context.setElement("inputCurve", {0}, lineValue({0, 0, 0}, {1, 0, 0}));
    context.setElement("inputCurve", {1}, lineValue({0, 2, 0}, {1, 2, 0}));
    EXPECT_FALSE(context.compute("outputSurface").isEmpty());
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("close", 1);
    EXPECT_FALSE(context.compute("outputSurface").isEmpty());
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(ExtrudeNode, FollowsADistanceAndAPath)
{
    ToyContext context(host::nodes::kExtrude);
    context.values["profile"] = lineValue({0, 0, 0}, {1, 0, 0});
    context.set("extrudeType", 0);
    context.set("length", 4);
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 1, 1), {1, 4, 0});
    context.set("extrudeType", 1);
    EXPECT_TRUE(context.compute("outputSurface").isEmpty()); // no path
    context.values["path"] = lineValue({0, 0, 0}, {0, 0, 7});
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 1, 1), {1, 0, 7});
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("extrudeType", 2);
    expectNear(pointOf(surfaceFrom(context.compute("outputSurface")), 1, 1), {1, 0, 7});
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(PlanarTrimNode, FillsAClosedCurve)
{
    ToyContext context(host::nodes::kPlanarTrimSurface);
    EXPECT_TRUE(context.compute("outputSurface").isEmpty());
    context.setElement(
        "inputCurve", {0},
        Value::of(test::curveData(1, {0, 1, 2, 3}, {0, 0, 0, 4, 0, 0, 0, 2, 0, 0, 0, 0})));
    const SurfaceData surface = surfaceFrom(context.compute("outputSurface"));
    ASSERT_EQ(surface.trims.size(), 1U);
    expectNear(pointOf(surface, 1, 1), {4, 2, 0});
}

TEST(PlanarTrimNode, SaysThatItLeavesCurvesOut)
{
    const Value triangle =
        Value::of(test::curveData(1, {0, 1, 2, 3}, {0, 0, 0, 4, 0, 0, 0, 2, 0, 0, 0, 0}));
    ToyContext context(host::nodes::kPlanarTrimSurface);
    for (std::int32_t i = 0; i < 512; ++i) {
        context.setElement("inputCurve", {i}, triangle);
    }
    EXPECT_EQ(surfaceFrom(context.compute("outputSurface")).trims.size(), 1U);
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.setElement("inputCurve", {512}, triangle);
    context.compute("outputSurface");
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(CurvesOfSurfaces, RunAlongIsoparms)
{
    ToyContext context(host::nodes::kCurveFromSurfaceIso);
    context.values["inputSurface"] = squareValue();
    context.set("isoparmValue", 0.25);
    context.set("relativeValue", 1);
    const CurveData across = curveFrom(context.compute("outputCurve"));
    expectNear(pointOf(across, 2), {0.5, 0, 2});
    context.set("isoparmDirection", 1);
    context.set("minValue", 0.5);
    context.set("maxValue", 1);
    context.set("relative", 1);
    const CurveData part = curveFrom(context.compute("outputCurve"));
    EXPECT_EQ(part.knots, (std::vector<double>{1, 2}));
    expectNear(pointOf(part, 1), {1, 0, 0.5});
}

} // namespace
