#include "tests/support/hairScene.h"
#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnPfxGeometry.h>
#include <maya/MRenderLine.h>
#include <maya/MRenderLineArray.h>
#include <maya/MVectorArray.h>

#include <gtest/gtest.h>

namespace {

/// What `getLineData` hands out.
struct LineData {
    MRenderLineArray main, leaves, flowers;
    MStatus get(const MFnPfxGeometry& shape, bool lines, bool widths, bool colors, bool worldSpace)
    {
        return shape.getLineData(main, leaves, flowers, lines, false, widths, false, false, colors,
                                 false, false, worldSpace);
    }
};

void expectNear(const MVector& vector, double x, double y, double z)
{
    EXPECT_NEAR(vector.x, x, 1e-9);
    EXPECT_NEAR(vector.y, y, 1e-9);
    EXPECT_NEAR(vector.z, z, 1e-9);
}

const char* const kShape = "|strands|strandsShape";

TEST(PfxGeometry, HandsOutLinesInObjectSpace)
{
    const OpenedScene scene(test::hairScene());
    ASSERT_TRUE(scene.status);
    MStatus status;
    const MFnPfxGeometry shape(nodeNamed("strandsShape"), &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(shape.type(), MFn::kPfxGeometry);
    LineData data;
    ASSERT_TRUE(data.get(shape, true, true, true, false));
    EXPECT_EQ(data.leaves.length(), 0);
    EXPECT_EQ(data.flowers.length(), 0);
    ASSERT_EQ(data.main.length(), 2);

    const MRenderLine line = data.main.renderLine(1, &status);
    EXPECT_TRUE(status);
    const MVectorArray points = line.getLine();
    ASSERT_EQ(points.length(), 3U);
    expectNear(points[0], 9.5, 0, -5.5);
    expectNear(points[1], 9.5, 1, -5.5);
    expectNear(points[2], 9.5, 3, -5.5);
    const MDoubleArray widths = line.getWidth();
    ASSERT_EQ(widths.length(), 3U);
    EXPECT_NEAR(widths[1], 0.15, 1e-9);
    const MVectorArray colors = line.getColor();
    ASSERT_EQ(colors.length(), 3U);
    expectNear(colors[1], 0.25, 0.25, 0.75);
    EXPECT_EQ(data.main.renderLine(0).getLine().length(), 2U);
}

TEST(PfxGeometry, HandsOutLinesInWorldSpaceToPaths)
{
    const OpenedScene scene(test::hairScene());
    LineData data;
    ASSERT_TRUE(data.get(MFnPfxGeometry(pathNamed(kShape)), true, false, false, true));
    ASSERT_EQ(data.main.length(), 2);
    expectNear(data.main.renderLine(1).getLine()[2], 9.5, 3, -0.5);
    EXPECT_FALSE(data.get(MFnPfxGeometry(nodeNamed("strandsShape")), true, false, false, true));
}

TEST(PfxGeometry, GivesWhatIsAskedFor)
{
    const OpenedScene scene(test::hairScene());
    const MFnPfxGeometry shape(pathNamed(kShape));
    LineData data;
    ASSERT_TRUE(data.get(shape, false, true, false, false));
    EXPECT_EQ(data.main.renderLine(1).getLine().length(), 0U);
    EXPECT_EQ(data.main.renderLine(1).getWidth().length(), 3U);
    EXPECT_EQ(data.main.renderLine(1).getColor().length(), 0U);
    ASSERT_TRUE(data.get(shape, true, false, true, false));
    EXPECT_EQ(data.main.renderLine(1).getLine().length(), 3U);
    EXPECT_EQ(data.main.renderLine(1).getWidth().length(), 0U);
    EXPECT_EQ(data.main.renderLine(1).getColor().length(), 3U);
}

TEST(PfxGeometry, LinesStayUntilTheyAreDeleted)
{
    LineData data;
    MRenderLine kept;
    MRenderLineArray copy;
    {
        const OpenedScene scene(test::hairScene());
        ASSERT_TRUE(data.get(MFnPfxGeometry(pathNamed(kShape)), true, true, true, false));
        kept = data.main.renderLine(1);
        copy = data.main;
    } // the session is over
    EXPECT_EQ(copy.length(), 2);
    data.main.deleteArray();
    EXPECT_EQ(data.main.length(), 0);
    EXPECT_EQ(copy.length(), 0);
    EXPECT_EQ(kept.getLine().length(), 3U);
    copy.deleteArray();
}

TEST(PfxGeometry, FailsForIndicesOutside)
{
    const OpenedScene scene(test::hairScene());
    LineData data;
    ASSERT_TRUE(data.get(MFnPfxGeometry(pathNamed(kShape)), true, true, true, false));
    for (const int index : {-1, 2, 1000}) {
        MStatus status;
        const MRenderLine line = data.main.renderLine(index, &status);
        EXPECT_EQ(status, MStatus::kInvalidParameter);
        EXPECT_EQ(line.getLine().length(), 0U);
    }
    EXPECT_EQ(MRenderLineArray().length(), 0);
    MRenderLineArray().deleteArray();
    EXPECT_EQ(MRenderLine().getWidth().length(), 0U);
}

TEST(PfxGeometry, TakesPaintEffectsShapesOnly)
{
    const OpenedScene scene(test::hairScene() + "createNode transform -n \"t\";\n"
                                                "createNode pfxHair -n \"bald\" -p \"t\";\n");
    MStatus status;
    const MFnPfxGeometry mesh(nodeNamed("groundShape"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    LineData data;
    EXPECT_FALSE(data.get(mesh, true, true, true, false));
    EXPECT_FALSE(data.get(MFnPfxGeometry(), true, true, true, false));
    // A shape without hair has no lines, and that is no failure.
    EXPECT_TRUE(data.get(MFnPfxGeometry(nodeNamed("bald")), true, true, true, false));
    EXPECT_EQ(data.main.length(), 0);
}

} // namespace
