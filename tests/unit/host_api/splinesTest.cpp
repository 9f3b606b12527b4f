#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MPointArray.h>
#include <maya/MTrimBoundaryArray.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Numbers = std::vector<double>;

/// Degree 2 in u, 1 in v, three by two points with weights; `extra`: statements about the shape.
std::string patch(const std::string& extra = "")
{
    return "createNode transform -n \"patch\";\n\tsetAttr \".t\" -type \"double3\" 10 0 0;\n"
           "createNode nurbsSurface -n \"patchShape\" -p \"patch\";\n"
           "\tsetAttr \".cc\" -type \"nurbsSurface\" 2 1 0 0 yes 4 0 0 1 1 2 3 5\n"
           "\t\t6 0 0 0 1 0 1 0 2 1 0 5 0.5 1 1 5 0.5 2 0 0 1 2 1 0 1;\n" +
           extra;
}

/// A square hole of four straight edges in a boundary of four, in the unit square.
std::string curve2d(double u0, double v0, double u1, double v1)
{
    const auto number = [](double value) { return std::to_string(value) + " "; };
    const std::string line = number(u0) + number(v0) + number(u1) + number(v1);
    const std::string inSpace = number(u0) + number(v0) + "0 " + number(u1) + number(v1) + "0 ";
    return "1 1 1 0 no 3 2 4 5 2 " + inSpace + "0.001 0 -1 1 1 1 0 no 2 2 4 5 2 " + line +
           "0 0.001 ";
}

std::string trimmed()
{
    return "createNode transform -n \"t\";\ncreateNode nurbsSurface -n \"tShape\" -p \"t\";\n"
           "\tsetAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 2 0 1 2 0 1 4\n"
           "\t\t0 0 0 0 1 0 1 0 0 1 1 0;\n"
           "\tsetAttr \".tf[0]\" -type \"nurbsTrimface\" no 2 0 4 0 0 0 0 " +
           curve2d(0, 0, 1, 0) + curve2d(1, 0, 1, 1) + curve2d(1, 1, 0, 1) + curve2d(0, 1, 0, 0) +
           "1 2 0 0 " + curve2d(0.25, 0.25, 0.5, 0.75) + curve2d(0.5, 0.75, 0.25, 0.25) + ";\n";
}

Numbers numbers(const MDoubleArray& array)
{
    Numbers result;
    for (unsigned int i = 0; i < array.length(); ++i) {
        result.push_back(array[i]);
    }
    return result;
}

Numbers numbers(const MPoint& point)
{
    return {point.x, point.y, point.z, point.w};
}

TEST(NurbsSurface, AnswersWhatTheFileStores)
{
    const OpenedScene scene(patch());
    MStatus status;
    const MFnNurbsSurface surface(pathNamed("|patch|patchShape"), &status);
    ASSERT_TRUE(status);
    double startU = -1;
    double endU = -1;
    double startV = -1;
    double endV = -1;
    ASSERT_TRUE(surface.getKnotDomain(startU, endU, startV, endV));
    EXPECT_EQ(Numbers({startU, endU, startV, endV}), Numbers({0, 1, 3, 5}));
    EXPECT_EQ(surface.degreeU(), 2);
    EXPECT_EQ(surface.degreeV(), 1);
    EXPECT_EQ(surface.numSpansInU(), 1);
    EXPECT_EQ(surface.numSpansInV(), 1);
    EXPECT_EQ(surface.numKnotsInU(), 4); // spans + 2 * degree - 1
    EXPECT_EQ(surface.numKnotsInV(), 2);
    EXPECT_EQ(surface.numCVsInU(), 3);
    EXPECT_EQ(surface.numCVsInV(), 2);
    MDoubleArray knots;
    ASSERT_TRUE(surface.getKnotsInU(knots));
    EXPECT_EQ(numbers(knots), Numbers({0, 0, 1, 1}));
    ASSERT_TRUE(surface.getKnotsInV(knots));
    EXPECT_EQ(numbers(knots), Numbers({3, 5}));
    EXPECT_FALSE(surface.isTrimmedSurface(&status));
    EXPECT_TRUE(status);
    EXPECT_EQ(surface.numRegions(), 0U);
}

TEST(NurbsSurface, GivesPointsWithTheirWeightsApart)
{
    const OpenedScene scene(patch());
    const MFnNurbsSurface surface(pathNamed("|patch|patchShape"));
    MPointArray points;
    ASSERT_TRUE(surface.getCVs(points));
    ASSERT_EQ(points.length(), 6U);
    EXPECT_EQ(numbers(points[1]), Numbers({0, 1, 0, 2}));   // u 0, v 1
    EXPECT_EQ(numbers(points[2]), Numbers({1, 0, 5, 0.5})); // u 1, v 0
    ASSERT_TRUE(surface.getCVs(points, MSpace::kWorld));
    EXPECT_EQ(numbers(points[2]), Numbers({11, 0, 5, 0.5}));
}

TEST(NurbsSurface, GivesTrimBoundariesRegionByRegion)
{
    const OpenedScene scene(trimmed());
    const MFnNurbsSurface surface(pathNamed("|t|tShape"));
    EXPECT_TRUE(surface.isTrimmedSurface());
    ASSERT_EQ(surface.numRegions(), 1U);
    MTrimBoundaryArray boundaries;
    ASSERT_TRUE(surface.getTrimBoundaries(boundaries, 0));
    ASSERT_EQ(boundaries.length(), 2U);
    EXPECT_EQ(boundaries[0].length(), 4U);
    ASSERT_EQ(boundaries[1].length(), 2U);
    const MObject edge = boundaries[1][0];
    EXPECT_TRUE(edge.hasFn(MFn::kNurbsCurve));
    EXPECT_FALSE(edge.hasFn(MFn::kNurbsSurface));
    EXPECT_EQ(edge.apiType(), MFn::kNurbsCurveData);

    MStatus status;
    const MFnNurbsCurve curve(edge, &status);
    ASSERT_TRUE(status);
    double start = -1;
    double end = -1;
    ASSERT_TRUE(curve.getKnotDomain(start, end));
    EXPECT_EQ(Numbers({start, end}), Numbers({4, 5}));
    EXPECT_EQ(curve.degree(), 1);
    EXPECT_EQ(curve.numCVs(), 2);
    MPointArray points;
    ASSERT_TRUE(curve.getCVs(points));
    EXPECT_EQ(numbers(points[1]), Numbers({0.5, 0.75, 0, 1}));
    MDoubleArray knots;
    ASSERT_TRUE(curve.getKnots(knots));
    EXPECT_EQ(numbers(knots), Numbers({4, 5}));

    EXPECT_FALSE(surface.getTrimBoundaries(boundaries, 1)); // there is no such region
    EXPECT_EQ(boundaries.length(), 0U);
}

TEST(NurbsSurface, IsNotAttachedToAShapeWithoutGeometry)
{
    const OpenedScene scene("createNode transform -n \"e\";\n"
                            "createNode nurbsSurface -n \"eShape\" -p \"e\";\n"
                            "createNode nurbsSurface -n \"brokenShape\" -p \"e\";\n"
                            // knots that go back
                            "\tsetAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 2 1 0 2 0 1 4\n"
                            "\t\t0 0 0 0 1 0 1 0 0 1 1 0;\n");
    for (const char* name : {"|e|eShape", "|e|brokenShape"}) {
        MStatus status;
        const MFnNurbsSurface surface(pathNamed(name), &status);
        EXPECT_EQ(status.statusCode(), MStatus::kFailure) << name;
        double limits[4] = {1, 2, 3, 4};
        EXPECT_FALSE(surface.getKnotDomain(limits[0], limits[1], limits[2], limits[3]));
        EXPECT_EQ(limits[3], 4); // left as it was
        EXPECT_EQ(surface.degreeU(&status), 0);
        EXPECT_FALSE(status);
        EXPECT_FALSE(surface.isTrimmedSurface());
        MPointArray points;
        EXPECT_FALSE(surface.getCVs(points));
    }
}

TEST(NurbsSurface, IsNotAttachedToAnythingElse)
{
    const OpenedScene scene(patch());
    MStatus status;
    const MFnNurbsSurface surface(pathNamed("|patch"), &status);
    EXPECT_EQ(status.statusCode(), MStatus::kInvalidParameter);
    EXPECT_EQ(surface.numCVsInU(), 0);
}

TEST(NurbsCurve, OfAShapeHasItsPoints)
{
    const OpenedScene scene("createNode transform -n \"c\";\n"
                            "createNode nurbsCurve -n \"cShape\" -p \"c\";\n"
                            "\tsetAttr \".cc\" -type \"nurbsCurve\" 3 1 0 no 3 6 0 0 0 2 2 2 4\n"
                            "\t\t0 0 0 1 0 0 2 1 0 3 1 5;\n");
    MStatus status;
    const MFnNurbsCurve curve(pathNamed("|c|cShape"), &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(curve.degree(), 3);
    EXPECT_EQ(curve.numCVs(), 4);
    EXPECT_EQ(curve.numKnots(), 6);
    EXPECT_EQ(curve.numSpans(), 1);
    MPointArray points;
    ASSERT_TRUE(curve.getCVs(points));
    EXPECT_EQ(numbers(points[3]), Numbers({3, 1, 5, 1}));
    EXPECT_TRUE(nodeNamed("cShape").hasFn(MFn::kNurbsCurve));
}

} // namespace
