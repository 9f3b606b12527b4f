// The strands of hair systems and the lines of strokes.
#include "tests/support/OpenScene.h"
#include "tests/support/hairScene.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using host::DiagnosticKind;
using host::Vec3d;
using host::geometry::RenderLine;
using host::geometry::RenderLines;

void expectPoints(const RenderLine& line, const std::vector<Vec3d>& expected)
{
    ASSERT_EQ(line.points.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(line.points[i].x, expected[i].x, 1e-9);
        EXPECT_NEAR(line.points[i].y, expected[i].y, 1e-9);
        EXPECT_NEAR(line.points[i].z, expected[i].z, 1e-9);
    }
}

class Hair : public test::OpenScene {
protected:
    std::shared_ptr<const RenderLines> lines(std::string_view name)
    {
        return session.renderLines(node(name));
    }
    /// The lines of the scene's hair; none at all fails.
    std::vector<RenderLine> strands()
    {
        const auto found = lines("strandsShape");
        EXPECT_NE(found, nullptr);
        return found != nullptr ? found->main : std::vector<RenderLine>();
    }
};

/// In the space of the shape, which stands at (0 0 5).
const std::vector<Vec3d> kGroundHair{{9.5, 0, -5.5}, {9.5, 1, -5.5}, {9.5, 3, -5.5}};
const std::vector<Vec3d> kWallHair{{2, 1, -5}, {2, 1, -3.5}};

TEST_F(Hair, FolliclesMoveTheirTransforms)
{
    open(test::hairScene());
    const host::Matrix4 world = session.inclusiveMatrix(path("groundFollicle"));
    EXPECT_NEAR(world.m[3][0], 9.5, 1e-12);
    EXPECT_NEAR(world.m[3][2], -0.5, 1e-12);
    EXPECT_NEAR(world.m[2][1], 1, 1e-9); // its z is the ground's normal
    EXPECT_NEAR(world.m[0][0], 1, 1e-9);
    EXPECT_EQ(number("groundFollicleShape", "validUv"), 1);
}

TEST_F(Hair, StrandsComeInTheOrderOfTheirFollicles)
{
    open(test::hairScene());
    const auto all = strands();
    ASSERT_EQ(all.size(), 2U);
    expectPoints(all[0], kWallHair);
    expectPoints(all[1], kGroundHair);
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 0U);
}

// Over the three points of the ground's hair: widths 0.2 * (1 0.75 0.5), colours (0.5 0.25 1) times
// white, (0.5 1 0.75) and (0 1 0.5).
TEST_F(Hair, RampsRunAlongTheStrands)
{
    open(test::hairScene());
    const auto all = strands();
    ASSERT_EQ(all.size(), 2U);
    const RenderLine& line = all[1];
    ASSERT_EQ(line.widths.size(), 3U);
    EXPECT_NEAR(line.widths[0], 0.2, 1e-9);
    EXPECT_NEAR(line.widths[1], 0.15, 1e-9);
    EXPECT_NEAR(line.widths[2], 0.1, 1e-9);
    ASSERT_EQ(line.colors.size(), 3U);
    EXPECT_EQ(line.colors[0], (Vec3d{0.5, 0.25, 1}));
    EXPECT_EQ(line.colors[1], (Vec3d{0.25, 0.25, 0.75}));
    EXPECT_EQ(line.colors[2], (Vec3d{0, 0.25, 0.5}));
}

TEST_F(Hair, CurvesOfOldScenesAreInTheWorld)
{
    open(test::hairSurfaces() + test::groundFollicle(true) + test::hairSystem() +
         test::joined("groundFollicleShape", 0));
    const auto all = strands();
    ASSERT_EQ(all.size(), 1U);
    expectPoints(all[0], kGroundHair);
}

TEST_F(Hair, OutputCurvesFollowTheHair)
{
    open(test::hairScene() + R"(
        createNode transform -n "out";
        createNode nurbsCurve -n "outShape" -p "out";
        connectAttr "groundFollicleShape.ocr" "outShape.cr";
    )");
    const auto curve = session.curve(node("outShape"));
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->degree, 2);
    ASSERT_EQ(curve->poles.size(), 9U);
    EXPECT_NEAR(curve->poles[0], 9.5, 1e-9);
    EXPECT_NEAR(curve->poles[7], 3, 1e-9);
}

// 40 hairs within 0.4 of the curve at the root and 0.1 at the tip.
TEST_F(Hair, ClumpsStayWithinTheirWidth)
{
    open(test::hairScene("setAttr \".hpc\" 40; setAttr \".cwd\" 0.4;"
                         "setAttr -s 2 \".cws[0:1]\"  0 1 1 1 0.25 1;"));
    const auto all = strands();
    ASSERT_EQ(all.size(), 80U);
    double widest = 0;
    for (std::size_t hair = 40; hair < 80; ++hair) {
        ASSERT_EQ(all[hair].points.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            const double out = length(all[hair].points[i] - kGroundHair[i]);
            EXPECT_LE(out, 0.4 * (1 - 0.375 * static_cast<double>(i)) + 1e-9);
            EXPECT_NEAR(all[hair].points[i].y, kGroundHair[i].y, 1e-9);
            widest = std::max(widest, out);
        }
    }
    EXPECT_GT(widest, 0.3);
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 1U);
    const auto again = strands();
    ASSERT_EQ(again.size(), 80U);
    EXPECT_EQ(again[63].points, all[63].points);
}

TEST_F(Hair, FolliclesOverrideTheirSystem)
{
    open(test::hairScene("setAttr \".cwd\" 3;") + R"(
        setAttr "groundFollicleShape.dml" 5;
        setAttr "groundFollicleShape.cwm" 0;
        setAttr "groundFollicleShape.cbl" 0.5;
        setAttr "groundFollicleShape.cl" -type "float3" 0 0.25 0 ;
        setAttr "groundFollicleShape.sdn" 2;
        setAttr "wallFollicleShape.ovd" yes;
        setAttr "wallFollicleShape.cw" 0;
    )");
    const auto all = strands();
    ASSERT_EQ(all.size(), 6U);
    expectPoints(all[0], kWallHair);
    for (std::size_t hair = 1; hair < 6; ++hair) {
        // Six points over the three of the curve: every 0.4 of its segments of 1 and 2.
        expectPoints(all[hair], {{9.5, 0, -5.5},
                                 {9.5, 0.4, -5.5},
                                 {9.5, 0.8, -5.5},
                                 {9.5, 1.4, -5.5},
                                 {9.5, 2.2, -5.5},
                                 {9.5, 3, -5.5}});
        EXPECT_EQ(all[hair].colors[0], (Vec3d{0.25, 0.25, 0.5}));
    }
}

TEST_F(Hair, SimulationMethodsHideHairs)
{
    open(test::hairScene("setAttr \".sim\" 2;"));
    ASSERT_EQ(strands().size(), 1U); // the passive one is hidden
    open(test::hairScene("setAttr \".sim\" 0;"));
    EXPECT_TRUE(strands().empty());
    open(test::hairScene("setAttr \".sim\" 1;"));
    EXPECT_EQ(strands().size(), 2U);
}

// After the start frame a simulation would have moved the hairs; before it and without one not.
TEST_F(Hair, SaysWhenASimulationIsMissing)
{
    for (const auto& [method, frame, times] :
         {std::tuple("3", 5, 1U), std::tuple("3", 1, 0U), std::tuple("1", 5, 0U)}) {
        open(test::hairScene("setAttr \".sim\" " + std::string(method) + ";"));
        session.setCurrentTime(frame * session.units().ticksPerFrame);
        EXPECT_EQ(strands().size(), 2U);
        EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), times);
    }
}

TEST_F(Hair, SaysWhenSettingsAreNotCarriedOut)
{
    open(test::hairScene("setAttr \".cin\" 0.5;"));
    strands();
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 1U);
    open(test::hairScene() + "setAttr \"wallFollicleShape.brd\" yes;\n");
    strands();
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 1U);
    open(test::hairScene() + "disconnectAttr \"wallShape.l\" \"wallFollicleShape.is\";\n");
    EXPECT_EQ(strands().size(), 1U); // the other follicle stands nowhere
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 1U);
    open(test::hairScene() + "setAttr \"groundFollicleShape.pu\" 2;\n");
    EXPECT_EQ(strands().size(), 2U); // the ground has no such place
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "hairSystem"), 1U);
    open(test::hairScene("setAttr \".hpc\" 1000000000;"));
    EXPECT_LE(strands().size(), 200000U);
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "points of strands"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "hairs of a clump"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "points of a hair"), 0U);
    open(test::hairScene("setAttr \".ssg\" 1000;")); // subSegments
    strands();
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "points of a hair"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "points of strands"), 0U);
}

TEST_F(Hair, ShapesWithoutASystemHaveNoStrands)
{
    open(test::hairScene() + "createNode transform -n \"t\";"
                             "createNode pfxHair -n \"bald\" -p \"t\";"
                             "createNode pfxToon -n \"toon\" -p \"t\";");
    EXPECT_EQ(lines("bald"), nullptr);
    EXPECT_EQ(lines("ground"), nullptr);
    EXPECT_EQ(lines("toon"), nullptr);
    EXPECT_EQ(session.renderLines(999999), nullptr);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingGeometry, "pfxToon"), 1U);
}

TEST_F(Hair, SystemsWithoutFolliclesHaveNoStrands)
{
    open(test::hairSurfaces() + test::hairSystem("setAttr -s 3 \".ih\";"));
    EXPECT_TRUE(strands().empty());
}

// The curve has three points; five samples of it, twice as many points, from the other end, as wide
// as 0.5 * 3.
TEST_F(Hair, StrokesFollowTheirPaths)
{
    const std::string scene = R"(
        createNode transform -n "path";
            setAttr ".t" -type "double3" 0 7 0 ;
        createNode nurbsCurve -n "pathShape" -p "path";
            setAttr ".cc" -type "nurbsCurve" 1 2 0 no 3
                3 0 1 2
                3 0 0 0  1 0 0  2 0 0;
        createNode transform -n "painted";
        createNode stroke -n "paintedShape" -p "painted";
            setAttr ".pcv[0].smp" 5;
            setAttr ".pcv[0].opp" yes;
        createNode brush -n "brush1";
            setAttr ".gsc" 3;
            setAttr ".bwd" 0.5;
            setAttr ".cl1" -type "float3" 0.25 0.5 1 ;
        connectAttr "brush1.obr" "paintedShape.brs";
        connectAttr "pathShape.ws" "paintedShape.pcv[0].crv";
    )";
    open(scene);
    const auto painted = lines("paintedShape");
    ASSERT_NE(painted, nullptr);
    ASSERT_EQ(painted->main.size(), 1U);
    expectPoints(painted->main[0], {{2, 7, 0}, {1.5, 7, 0}, {1, 7, 0}, {0.5, 7, 0}, {0, 7, 0}});
    EXPECT_EQ(painted->main[0].widths, std::vector<double>(5, 1.5));
    EXPECT_EQ(painted->main[0].colors, std::vector<Vec3d>(5, Vec3d{0.25, 0.5, 1}));
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "stroke"), 1U);

    open(scene + "setAttr \"brush1.tub\" yes;\n");
    EXPECT_EQ(lines("paintedShape"), nullptr);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingGeometry, "stroke"), 1U);
}

} // namespace
