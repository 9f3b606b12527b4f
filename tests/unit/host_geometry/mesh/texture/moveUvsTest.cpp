// Texture coordinates by offsets, about pivots and into boxes.
#include "host/geometry/mesh/texture/moveUvs.h"
#include "host/geometry/mesh/texture/UvEditor.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include <limits>
#include <numbers>

namespace host::geometry {
namespace {

using test::expectUv;

TEST(AddUvOffsets, RunsAreAddedAndStopAtTheEnds)
{
    const std::vector<Vec2f> points{{0, 0}, {1, 1}, {2, 2}};
    const std::vector<float> block{0.5F, -1, 9, 8, 7};
    const std::vector<OffsetRun> runs{{0, 1, 0}, {2, 4, 2}, {5, 1, 0}, {1, 1, 4}, {0, 1, 99}};
    const auto moved = addUvOffsets(points, runs, block);
    EXPECT_EQ(moved, (std::vector<Vec2f>{{0.5F, -1}, {1, 1}, {11, 10}}));
}

TEST(MoveUvs, ScalesTurnsAndShiftsInThisOrder)
{
    UvMotion motion;
    motion.pivotU = 1;
    motion.scaleU = 3;
    motion.angle = std::numbers::pi / 2;
    motion.translateV = 10;
    const MeshData mesh = test::twoSquares();
    const auto moved = moveUvs(mesh, 0, std::vector<std::uint32_t>{2, 5}, motion);
    // (2 0) is (1 0) from the pivot, (3 0) scaled, (0 3) turned; (2 1) is (1 1), (3 1), (-1 3).
    expectUv(*moved, 2, 1, 13);
    expectUv(*moved, 5, 0, 13);
    expectUv(*moved, 1, 1, 0);
    EXPECT_EQ(moved->uvSets[0].corners, mesh.uvSets[0].corners);
}

TEST(MoveUvs, KeepsWhatHasNoPlace)
{
    UvMotion motion;
    motion.translateU = std::numeric_limits<double>::infinity();
    const auto moved = moveUvs(test::twoSquares(), 0, std::vector<std::uint32_t>{2}, motion);
    expectUv(*moved, 2, 2, 0);
}

TEST(FitIntoUnit, FillsTheSquareOrKeepsTheRatio)
{
    const MeshData mesh = test::twoSquares();
    const std::vector<std::uint32_t> all{0, 1, 2, 3, 4, 5};
    const UvBounds bounds = uvBounds(mesh.uvSets[0], all);
    const auto kept = moveUvs(mesh, 0, all, fitIntoUnit(bounds, true, false));
    expectUv(*kept, 5, 1, 0.5);
    expectUv(*kept, 0, 0, 0);
    const auto filled = moveUvs(mesh, 0, all, fitIntoUnit(bounds, false, false));
    expectUv(*filled, 5, 1, 1);
    const auto middle = moveUvs(mesh, 0, all, fitIntoUnit(bounds, true, true));
    expectUv(*middle, 0, 0, 0.25);
    expectUv(*middle, 5, 1, 0.75);
}

TEST(FitIntoUnit, ABoxWithoutWidthStaysNarrow)
{
    const MeshData mesh = test::twoSquares();
    const std::vector<std::uint32_t> column{1, 4};
    const UvBounds bounds = uvBounds(mesh.uvSets[0], column);
    const auto filled = moveUvs(mesh, 0, column, fitIntoUnit(bounds, false, false));
    expectUv(*filled, 1, 0, 0);
    expectUv(*filled, 4, 0, 1);
}

TEST(FindUvSet, GoesByNameElseByTheCurrentOne)
{
    MeshData mesh = test::twoSquares();
    test::addUvSet(mesh, "second", {}, {});
    EXPECT_EQ(findUvSet(mesh, "second"), std::size_t{1});
    EXPECT_EQ(findUvSet(mesh, "third"), std::nullopt);
    mesh.currentUvSet = "second";
    EXPECT_EQ(findUvSet(mesh, ""), std::size_t{1});
    mesh.currentUvSet = "gone";
    EXPECT_EQ(findUvSet(mesh, ""), std::size_t{0});
    mesh.uvSets.clear();
    EXPECT_EQ(findUvSet(mesh, ""), std::nullopt);
}

} // namespace
} // namespace host::geometry
