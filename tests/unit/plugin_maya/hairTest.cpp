#include "plugins/maya/src/hairStrand.h"
#include "scene/BezierCurves.h"
#include "tests/support/hairScene.h"
#include "tests/unit/plugin_maya/DriverFixture.h"

#include <maya/MDoubleArray.h>
#include <maya/MVectorArray.h>

#include <algorithm>
#include <sstream>

namespace {

const std::string kHair =
    "createNode transform -n \"a\";\ncreateNode pfxHair -n \"hair\" -p \"a\";\n";

/// Points (k, 0, 0) of every k below `count`.
MVectorArray pointsOf(unsigned int count)
{
    MVectorArray points;
    for (unsigned int k = 0; k < count; ++k) {
        points.append(MVector(k, 0, 0));
    }
    return points;
}

/// The numbers of a list parameter, whatever stands between them.
std::vector<double> listIn(const std::string& text, const std::string& name)
{
    const std::string opening = "\"" + name + "\" [ ";
    const std::size_t begin = text.find(opening);
    std::vector<double> numbers;
    if (begin == std::string::npos) {
        return numbers;
    }
    std::string inside = text.substr(begin + opening.size());
    inside.erase(inside.find(']'));
    std::replace(inside.begin(), inside.end(), ',', ' ');
    std::istringstream stream(inside);
    for (double number = 0; stream >> number;) {
        numbers.push_back(number);
    }
    return numbers;
}

void expectNear(const std::vector<double>& actual, const std::vector<double>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual[i], expected[i], 1e-6) << i;
    }
}

std::string written(orv::BezierCurves& curves)
{
    WrittenScene scene;
    curves.write(scene.layer());
    return scene.text();
}

} // namespace

TEST_F(Driver, HairWithoutLinesIsAnEmptyBatch)
{
    const std::string text = exported(kHair);
    EXPECT_TRUE(has(text, "object \"\" {\n"
                          "geometry \"orv_curves\" {\n"
                          "\"radius\" 1,\n"
                          "\"order\" 2,\n"
                          "\"fitToCubic\" off,\n"
                          "\"p\" [ ] ,\n"
                          "\"nvertices\" [ ] ,\n"
                          "}\n"
                          "material \"diffuse\" {\n"))
        << text;
    EXPECT_TRUE(logs("INFO:  0 lines in this hair\n"));
    // the object lies in the group of its parent, not in one of its own
    EXPECT_FALSE(has(text, "group \"hair\""));
    EXPECT_FALSE(has(text, "Unhandled node"));
}

TEST_F(Driver, HairTakesItsColourFromThePoints)
{
    const std::string text = exported(kHair);
    const std::string material = text.substr(text.find("material \"diffuse\" {\n"));
    EXPECT_TRUE(has(material, "0.75 0.5 0.5")) << material; // the colour beneath
    EXPECT_EQ(count(text, "material \"diffuse\""), 1u);
}

TEST_F(Driver, HairHasTheRadiusAndSmoothnessAskedFor)
{
    args.setDouble(CURVERADIUS, 0.25);
    args.setBool(SMOOTH_CURVES, true);
    EXPECT_TRUE(
        has(exported(kHair), "\"radius\" 0.25,\n\"order\" 2,\n\"fitToCubic\" on,\n\"p\" [ ] ,\n"));
}

TEST_F(Driver, HiddenHairIsLeftOut)
{
    EXPECT_FALSE(has(exported(kHair + "setAttr \"a.v\" no;\n"), "orv_curves"));
}

// One hair on a wall, of two points, and one on the ground, of three; the shape stands at (0 0 5).
TEST_F(Driver, HairIsWrittenInItsOwnSpaceStrandByStrand)
{
    args.setDouble(CURVERADIUS, 3);
    const std::string text = exported(test::hairScene());
    EXPECT_TRUE(logs("INFO:  2 lines in this hair\n"));
    EXPECT_TRUE(logs("TRACE CHECK: renderLine\n"));
    const std::string batch = text.substr(text.find("object \"\" {\n"));
    EXPECT_TRUE(has(batch, "\"radius\" 3,\n\"order\" 2,\n\"fitToCubic\" off,\n")) << batch;
    EXPECT_TRUE(has(batch, "\"nvertices\" [ 2,3 ] ,\n")) << batch;
    expectNear(listIn(batch, "p"),
               {2, 1, -5, 2, 1, -3.5, 9.5, 0, -5.5, 9.5, 1, -5.5, 9.5, 3, -5.5});
    // Widths and colours run along each hair: those of the ground's points at 0, 1/2 and 1, the
    // wall's like the first and the last of them.
    expectNear(listIn(batch, "pr"), {0.2, 0.1, 0.2, 0.15, 0.1});
    expectNear(listIn(batch, "pcol"),
               {0.5, 0.25, 1, 0, 0.25, 0.5, 0.5, 0.25, 1, 0.25, 0.25, 0.75, 0, 0.25, 0.5});
    EXPECT_FALSE(has(text, "#define object \"\""));
}

TEST(Strand, OfNPointsAddsNOfEachAndOneCount)
{
    orv::BezierCurves curves("");
    MDoubleArray widths;
    widths.append(0.5);
    widths.append(0.25);
    MVectorArray colors;
    colors.append(MVector(1, 0, 0));
    colors.append(MVector(0, 0.5, 0));
    addStrand(pointsOf(2), widths, colors, 9, curves);
    // widths are radii as they are, not halved
    EXPECT_TRUE(has(written(curves), "\"p\" [ 0 0 0,1 0 0 ] ,\n"
                                     "\"nvertices\" [ 2 ] ,\n"
                                     "\"pr\" [ 0.5,0.25 ] ,\n"
                                     "\"pcol\" [ 1 0 0,0 0.5 0 ] ,\n"))
        << written(curves);
}

TEST(Strand, MissingWidthsAndColoursDoNotMoveThoseOfLaterStrands)
{
    orv::BezierCurves curves("");
    MDoubleArray widths;
    widths.append(0.5);
    addStrand(pointsOf(2), widths, MVectorArray(), 9, curves);
    MVectorArray colors;
    colors.append(MVector(0, 0, 1));
    addStrand(pointsOf(1), widths, colors, 9, curves);
    addStrand(pointsOf(0), widths, colors, 9, curves);
    EXPECT_TRUE(has(written(curves), "\"nvertices\" [ 2,1,0 ] ,\n"
                                     "\"pr\" [ 0.5,9,0.5 ] ,\n"
                                     "\"pcol\" [ 1 1 1,1 1 1,0 0 1 ] ,\n"))
        << written(curves);
}

TEST(Strand, NarrowsValuesToFloats)
{
    orv::BezierCurves curves("");
    MVectorArray points;
    points.append(MVector(0.1, 1e300, 0));
    addStrand(points, MDoubleArray(), MVectorArray(), 1, curves);
    EXPECT_EQ(curves.points()[0], 0.1F);
    EXPECT_EQ(curves.pointCounts(), (std::vector<std::int32_t>{1}));
}
