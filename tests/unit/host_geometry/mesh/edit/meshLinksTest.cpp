#include "host/geometry/mesh/edit/MeshLinks.h"
#include "tests/unit/host_geometry/meshMaker.h"

namespace host::geometry::test {
namespace {

using Numbers = std::vector<std::uint32_t>;

Numbers listOf(std::span<const std::uint32_t> numbers)
{
    return {numbers.begin(), numbers.end()};
}

/// Two squares side by side: 0 1 2 3 and 1 4 5 2. Edges 0-1 1-2 2-3 3-0, then 1-4 4-5 5-2; the
/// second face walks edge 1 from its end to its start, as its fourth corner.
MeshData twoSquares()
{
    return meshOfLists({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}},
                       listsOf({{{0, 1, 2, 3}}, {{1, 4, 5, 2}}}, 1));
}

TEST(MeshLinks, cornersKnowTheirFaceAndNeighbours)
{
    const MeshData mesh = twoSquares();
    const CornerLinks links(*mesh.topology);
    EXPECT_EQ(links.face(3), 0u);
    EXPECT_EQ(links.face(4), 1u);
    EXPECT_EQ(links.next(3), 0u);
    EXPECT_EQ(links.next(4), 5u);
    EXPECT_EQ(links.previous(4), 7u);
    EXPECT_EQ(links.previous(1), 0u);
}

TEST(MeshLinks, holesAreLoopsOfTheirOwn)
{
    const MeshData mesh =
        meshOfLists({{0, 0, 0}, {9, 0, 0}, {0, 9, 0}, {1, 1, 0}, {1, 2, 0}, {2, 1, 0}},
                    listsOf({{{0, 1, 2}, {3, 4, 5}}}, 1));
    const CornerLinks links(*mesh.topology);
    EXPECT_EQ(links.face(5), 0u);
    EXPECT_EQ(links.next(5), 3u);
    EXPECT_EQ(links.next(2), 0u);
}

TEST(MeshLinks, listsByEdgeAndVertex)
{
    const MeshData mesh = twoSquares();
    EXPECT_EQ(listOf(cornersOfEdges(*mesh.topology).of(1)), (Numbers{1, 7})); // shared
    EXPECT_EQ(listOf(cornersOfEdges(*mesh.topology).of(0)), (Numbers{0}));    // border
    EXPECT_EQ(listOf(cornersOfVertices(*mesh.topology).of(1)), (Numbers{1, 4}));
    EXPECT_EQ(listOf(cornersOfVertices(*mesh.topology).of(5)), (Numbers{6}));
    EXPECT_EQ(listOf(edgesOfVertices(*mesh.topology).of(1)), (Numbers{0, 1, 4}));
    EXPECT_EQ(listOf(edgesOfVertices(*mesh.topology).of(4)), (Numbers{4, 5}));
}

TEST(MeshLinks, referencesTurnRound)
{
    EXPECT_EQ(reversed(0), -1);
    EXPECT_EQ(reversed(-1), 0);
    EXPECT_EQ(edgeOf(-8), 7u);
    EXPECT_EQ(referenceTo(7, true), -8);
    EXPECT_EQ(referenceTo(7, false), 7);
}

} // namespace
} // namespace host::geometry::test
