// Faces, edges and vertices taken out of meshes.
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "host/geometry/mesh/edit/dissolveVertices.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::geometry::test {
namespace {

TEST(DeleteFaces, whatIsLeftOfACubeClosesUpInOrder)
{
    // Without its front the cube keeps all vertices and edges: each has another face. Without
    // front and left the edge 0-2 (number 3: the front walks 0-1 1-3 3-2 2-0) has none.
    const MeshData before = cube();
    const SharedMesh open = deleteFaces(before, Numbers{0}, kCleanAll);
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->topology->edges.size(), 12u);
    EXPECT_EQ(
        outerLoops(*open),
        (std::vector<Loop>{{2, 3, 5, 4}, {4, 5, 7, 6}, {6, 7, 1, 0}, {1, 7, 5, 3}, {6, 0, 2, 4}}));
    const SharedMesh more = deleteFaces(before, Numbers{0, 5}, kCleanAll);
    ASSERT_NE(more, nullptr);
    EXPECT_EQ(more->topology->vertexCount, 8u);
    Pairs edges = edgesOf(before);
    edges.erase(edges.begin() + 3);
    EXPECT_EQ(edgesOf(*more), edges);
}

TEST(DeleteFaces, verticesAndUvsOfGoneFacesGo)
{
    MeshData before = grid(3, 1); // vertices 0..3 below, 4..7 above
    addCornerUvs(before);
    addGroup(before, 7, {0, 2});
    const SharedMesh after = deleteFaces(before, Numbers{0}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 4, 3}, {1, 2, 5, 4}}));
    EXPECT_EQ((*after->points)[3], (Vec3f{1, 1, 0})); // 0 and 4 went, 5 is now 3
    EXPECT_EQ(after->uvSets[0].points->front().x, 4); // those of corners 0..3 went
    EXPECT_EQ(*after->groups[0].faces, (Numbers{1}));
}

TEST(DeleteFaces, allOfThemLeaveAnEmptyMesh)
{
    const MeshData before = cube();
    const SharedMesh after = deleteFaces(before, Numbers{0, 1, 2, 3, 4, 5}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->vertexCount, 0u);
    EXPECT_EQ(after->topology->faceCount(), 0u);
}

TEST(DeleteFaces, numbersBeyondTheMeshHaveNoEffect)
{
    const SharedMesh after = deleteFaces(cube(), Numbers{4, 6, 900}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 5u);
}

TEST(DissolveEdges, twoSquaresBecomeOneFaceOfSixCorners)
{
    // Faces 0 and 1 of a row of three share the edge 1-5 (number 1: 0-1 1-5 5-4 4-0, then 1-2 ...).
    // The joined face has the lower number and begins at its first corner, 0; the vertices 1 and 5
    // stay. Edges behind move down by one.
    const MeshData before = grid(3, 1);
    const SharedMesh after = dissolveEdges(before, Numbers{1}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2, 6, 5, 4}, {2, 3, 7, 6}}));
    EXPECT_EQ(after->topology->vertexCount, 8u);
    Pairs edges = edgesOf(before);
    edges.erase(edges.begin() + 1);
    EXPECT_EQ(edgesOf(*after), edges);
}

TEST(DissolveEdges, cleaningTakesTheVerticesBetweenTwoEdges)
{
    // As above, but 1 and 5 have two edges left, 0-1 and 1-2, 4-5 and 5-6: they become 0-2 with the
    // number of 0-1 (0) and 4-6 with that of 5-4 (2). 2 and 6, which no gone edge had, stay.
    const MeshData before = grid(3, 1);
    const SharedMesh after = deleteEdges(before, Numbers{1}, true);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 4, 3}, {1, 2, 5, 4}}));
    EXPECT_EQ((*after->points)[1], (Vec3f{2, 0, 0}));
    // before: 0-1 1-5 5-4 4-0 1-2 2-6 6-5 2-3 3-7 7-6
    EXPECT_EQ(edgesOf(*after), (Pairs{{0, 1}, {3, 4}, {0, 3}, {1, 4}, {1, 2}, {2, 5}, {4, 5}}));
    EXPECT_EQ(deleteEdges(before, Numbers{1}, false)->topology->vertexCount, 8u);
}

TEST(DissolveEdges, bordersStay)
{
    const MeshData before = grid(2, 1);
    const SharedMesh after = dissolveEdges(before, Numbers{0, 2, 3, 500}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), outerLoops(before));
    EXPECT_EQ(edgesOf(*after), edgesOf(before));
}

TEST(DissolveEdges, allEdgesOfAVertexTakeItWithThem)
{
    // The middle of two by two squares, vertex 4, with its edges 1-4 3-4 4-5 4-7.
    const MeshData before = grid(2, 2);
    Numbers spokes;
    for (std::uint32_t edge = 0; edge < before.topology->edges.size(); ++edge) {
        if (edgesOf(before)[edge].first == 4 || edgesOf(before)[edge].second == 4) {
            spokes.push_back(edge);
        }
    }
    ASSERT_EQ(spokes.size(), 4u);
    const SharedMesh after = deleteEdges(before, spokes, false);
    ASSERT_NE(after, nullptr);
    // 5..8 are 4..7 now
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2, 4, 7, 6, 5, 3}}));
    // With cleaning only the corners are left.
    EXPECT_EQ(outerLoops(*deleteEdges(before, spokes, true)), (std::vector<Loop>{{0, 1, 3, 2}}));
}

TEST(DissolveEdges, aRingBecomesAFaceWithAHole)
{
    // Three by three squares without the edges between the eight outer ones: face 0 goes round
    // the middle square, whose corners are 5 6 10 9.
    const MeshData before = grid(3, 3);
    const auto isCorner = [](std::uint32_t v) { return v == 5 || v == 6 || v == 9 || v == 10; };
    const auto isRim = [](std::uint32_t v) { return v % 4 == 0 || v % 4 == 3 || v < 4 || v > 11; };
    Numbers between;
    for (std::uint32_t edge = 0; edge < before.topology->edges.size(); ++edge) {
        const auto [a, b] = edgesOf(before)[edge];
        if ((isCorner(a) && isRim(b)) || (isRim(a) && isCorner(b))) {
            between.push_back(edge);
        }
    }
    ASSERT_EQ(between.size(), 8u);
    const SharedMesh after = dissolveEdges(before, between, kCleanAll);
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(after->topology->faceCount(), 2u);
    const std::vector<Loop> ring = loopsOf(*after, 0);
    ASSERT_EQ(ring.size(), 2u);
    EXPECT_EQ(ring[0].size(), 12u);
    // Face 1 (1 2 6 5) is the first that has a side of it, which it walks from 6 to 5.
    EXPECT_EQ(ring[1], (Loop{6, 5, 9, 10}));
    EXPECT_EQ(loopsOf(*after, 1), (std::vector<Loop>{{5, 6, 10, 9}}));
}

TEST(DissolveEdges, anEdgeOfFacesTurnedAgainstEachOtherStays)
{
    // Both triangles walk 1 to 2.
    const MeshData before =
        meshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}, {{{0, 1, 2}}, {{3, 1, 2}}});
    const SharedMesh after = dissolveEdges(before, Numbers{0, 1, 2, 3, 4}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), outerLoops(before));
}

TEST(DissolveEdges, aClosedMeshWithoutEdgesIsNoMesh)
{
    const MeshData before = cube();
    Numbers all(12);
    for (std::uint32_t i = 0; i < 12; ++i) {
        all[i] = i;
    }
    const SharedMesh after = dissolveEdges(before, all, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 0u);
    EXPECT_EQ(after->topology->vertexCount, 0u);
}

TEST(DissolveEdges, areaStaysWhicheverEdgesGo)
{
    std::mt19937 random(5);
    for (std::uint32_t round = 0; round < 60; ++round) {
        const MeshData before = grid(5 + round % 4, 6);
        const Numbers gone = someOf(before.topology->edges.size(), 1 + round % 5, random);
        const SharedMesh after = deleteEdges(before, gone, false);
        ASSERT_NE(after, nullptr);
        EXPECT_NEAR(totalArea(*after).z, 6.0 * (5 + round % 4), 1e-9);
        EXPECT_TRUE(hasNothingLoose(*after));
        for (const Loop& loop : outerLoops(*after)) {
            EXPECT_GE(loop.size(), 3u);
        }
    }
}

TEST(DissolveVertices, onlyThoseBetweenTwoEdgesGo)
{
    // A row of two squares: 0 and 3 have two edges each, 1 and 4 three. A square becomes a
    // triangle by one of its corners, no triangle becomes less.
    const MeshData before = grid(2, 1);
    const SharedMesh after = dissolveVertices(before, Numbers{0, 1, 3, 4}, kCleanAll);
    ASSERT_NE(after, nullptr);
    // 0 goes: 0-1 (number 0) is 3-1 now, 3-0 is gone; 3 stays.
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 3, 2}, {0, 1, 4, 3}}));
    EXPECT_EQ((*after->points)[2], (Vec3f{0, 1, 0}));
    EXPECT_EQ(edgesOf(*after), (Pairs{{0, 2}, {0, 3}, {2, 3}, {0, 1}, {1, 4}, {3, 4}}));
}

TEST(DissolveVertices, aChainBecomesOneEdge)
{
    // A square whose lower side has the vertices 1 2 3 on it, and a square below, 0 4 7 8, that
    // shares all of that side.
    const MeshData before = meshOf({{0, 0, 0},
                                    {1, 0, 0},
                                    {2, 0, 0},
                                    {3, 0, 0},
                                    {4, 0, 0},
                                    {4, 4, 0},
                                    {0, 4, 0},
                                    {0, -4, 0},
                                    {4, -4, 0}},
                                   {{{0, 1, 2, 3, 4, 5, 6}}, {{7, 8, 4, 3, 2, 1, 0}}});
    const SharedMesh after = dissolveVertices(before, Numbers{1, 2, 3}, kCleanAll);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2, 3}, {4, 5, 1, 0}}));
    EXPECT_EQ(edgesOf(*after).front(), (std::pair<std::uint32_t, std::uint32_t>{0, 1}));
    EXPECT_EQ(after->topology->edges.size(), 7u);
    EXPECT_NEAR(totalArea(*after).z, 32, 1e-9);
}

TEST(DissolveVertices, uvsOfTheCornersThatStayAreKept)
{
    MeshData before = grid(1, 1);
    addCornerUvs(before);
    const SharedMesh after = dissolveVertices(before, Numbers{1}, kCleanAll);
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(after->uvSets[0].points->size(), 3u);
    EXPECT_EQ((*after->uvSets[0].points)[1].x, 2); // that of corner 1 went
    EXPECT_EQ(*after->uvSets[0].corners, (std::vector<std::int32_t>{0, 1, 2}));
}

TEST(DeleteEdges, anyEdgesOfAClosedMeshLeaveAMesh)
{
    std::mt19937 random(9);
    const MeshData before = cube();
    for (std::uint32_t round = 0; round < 200; ++round) {
        const Numbers gone = someOf(12, 1 + round % 4, random);
        const SharedMesh after = deleteEdges(before, gone, round % 2 == 0);
        ASSERT_NE(after, nullptr);
        EXPECT_TRUE(hasNothingLoose(*after));
    }
}

} // namespace
} // namespace host::geometry::test
