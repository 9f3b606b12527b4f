// Pieces of texture coordinates side by side.
#include "host/geometry/mesh/texture/layOutUvs.h"
#include "host/geometry/mesh/texture/uvPieces.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <cmath>
#include <limits>

namespace host::geometry {
namespace {

using test::expectUv;

/// A piece of two coordinates for each box: its low and its high corner.
struct Boxes {
    std::vector<Vec2f> points;
    std::vector<std::uint32_t> pieceOfId;

    void add(float lowU, float lowV, float width, float height)
    {
        points.push_back({lowU, lowV});
        points.push_back({lowU + width, lowV + height});
        pieceOfId.insert(pieceOfId.end(), 2, count++);
    }
    void layOut(const UvLayout& layout) { geometry::layOut(points, pieceOfId, count, layout); }
    void expectBox(std::size_t piece, double lowU, double lowV, double highU, double highV) const
    {
        EXPECT_NEAR(points[2 * piece].x, lowU, 1e-6) << piece;
        EXPECT_NEAR(points[2 * piece].y, lowV, 1e-6) << piece;
        EXPECT_NEAR(points[2 * piece + 1].x, highU, 1e-6) << piece;
        EXPECT_NEAR(points[2 * piece + 1].y, highV, 1e-6) << piece;
    }
    std::uint32_t count = 0;
};

TEST(LayOut, ASinglePieceGetsHalfTheSpaceAboutIt)
{
    // A piece of three quarters with a space of 0.2 percent is known to come to 0.00075.
    Boxes boxes;
    boxes.add(0.125F, 0, 0.75F, 0.75F);
    boxes.layOut({UvArrangement::Square, UvFit::None, 0.002, false});
    boxes.expectBox(0, 0.00075, 0.00075, 0.75075, 0.75075);
}

TEST(LayOut, RowsStartWithTheHighestAndFillTheSquare)
{
    // Heights 3, 2 and 1. In a row of 3 nothing lies beside another: 6 high. In one of at least 4
    // the second stands beside the first, in one of 5 also the third: the square is 4 or 5 large.
    Boxes boxes;
    boxes.add(7, 7, 1, 1);
    boxes.add(-1, -1, 3, 3);
    boxes.add(0, 0, 1, 2);
    boxes.layOut({UvArrangement::Square, UvFit::Uniform, 0, false});
    boxes.expectBox(1, 0, 0, 0.75, 0.75);
    boxes.expectBox(2, 0.75, 0, 1, 0.5);
    boxes.expectBox(0, 0, 0.75, 0.25, 1);
}

TEST(LayOut, ARowAlongUFitsUniformlyOrStretched)
{
    Boxes boxes;
    boxes.add(5, 5, 3, 2);
    boxes.add(0, 0, 1, 1);
    Boxes stretched = boxes;
    boxes.layOut({UvArrangement::AlongU, UvFit::Uniform, 0, false});
    boxes.expectBox(0, 0, 0, 0.75, 0.5);
    boxes.expectBox(1, 0.75, 0, 1, 0.25);
    stretched.layOut({UvArrangement::AlongU, UvFit::Stretched, 0, false});
    stretched.expectBox(0, 0, 0, 0.75, 1);
    stretched.expectBox(1, 0.75, 0, 1, 0.5);
}

TEST(LayOut, WithoutArrangementAllFitTogether)
{
    Boxes boxes;
    boxes.add(2, 1, 2, 2);
    boxes.add(5, 2, 1, 1);
    boxes.layOut({UvArrangement::None, UvFit::Uniform, 0, false});
    boxes.expectBox(0, 0, 0, 0.5, 0.5);
    boxes.expectBox(1, 0.75, 0.25, 1, 0.5);
}

TEST(LayOut, UprightPiecesMayBeLaidDown)
{
    Boxes boxes;
    boxes.add(0, 0, 1, 4);
    boxes.layOut({UvArrangement::AlongU, UvFit::Uniform, 0, true});
    // turned by a quarter counter-clockwise: the low corner comes to the right
    boxes.expectBox(0, 1, 0, 0, 0.25);
}

TEST(LayOut, StrayNumbersStayWhereTheyAre)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Boxes boxes;
    boxes.add(3, 3, kInfinity, 1);
    boxes.add(4, 4, 2, 2);
    boxes.points.push_back({9, 9});
    boxes.pieceOfId.push_back(kNone);
    boxes.layOut({UvArrangement::Square, UvFit::Uniform, std::nan(""), false});
    EXPECT_EQ(boxes.points[0].x, 3);
    EXPECT_EQ(boxes.points[1].x, kInfinity);
    boxes.expectBox(1, 0, 0, 1, 1);
    EXPECT_EQ(boxes.points[4].x, 9);
}

TEST(LayOutUvs, TakesThePiecesOfTheNamedFacesOnly)
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    // the second face apart from the first, and with its back up
    test::addUvSet(mesh, "map1", {{1, 1}, {2, 1}, {2, 2}, {1, 2}, {8, 0}, {6, 0}, {6, 2}, {8, 2}},
                   {0, 1, 2, 3, 4, 5, 6, 7});
    const UvLayout layout{UvArrangement::Square, UvFit::Uniform, 0, false};
    const auto flipped = layOutUvs(mesh, 0, std::vector<std::uint32_t>{1}, layout, true);
    expectUv(*flipped, 0, 1, 1);
    expectUv(*flipped, 4, 0, 0);
    expectUv(*flipped, 6, 1, 1);
    const auto reversed = layOutUvs(mesh, 0, std::vector<std::uint32_t>{1}, layout, false);
    expectUv(*reversed, 4, 1, 0);
    expectUv(*reversed, 6, 0, 1);
    EXPECT_EQ(reversed->points, mesh.points);
}

TEST(UvPieces, AreNumberedByTheirLowestFaces)
{
    MeshData mesh = test::twoSquares();
    const auto& corners = *mesh.uvSets[0].corners;
    const UvPieces one = uvPieces(*mesh.topology, corners, 7);
    EXPECT_EQ(one.count, 1U);
    EXPECT_EQ(one.ofId[5], 0U);
    EXPECT_EQ(one.ofId[6], kNone);
    const std::vector<std::int32_t> apart{4, 5, 6, 7, -1, 1, 2, 3};
    const UvPieces two = uvPieces(*mesh.topology, apart, 8);
    EXPECT_EQ(two.count, 2U);
    EXPECT_EQ(two.ofId[4], 0U);
    EXPECT_EQ(two.ofId[1], 1U);
    EXPECT_EQ(two.ofFace, (std::vector<std::uint32_t>{0, 1}));
}

} // namespace
} // namespace host::geometry
