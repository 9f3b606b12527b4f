#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <chrono>

namespace host::geometry::test {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Ids = std::vector<std::int32_t>;

/// Three squares in a row along x: vertices 0 1 2 3, then 4 5, then 6 7 at the right ends. Edges
/// 0-1 1-2 2-3 3-0, 1-4 4-5 5-2, 4-6 6-7 7-5. Each face has uvs of its own; face 1 is in group 5
/// and edges 1 and 8 are creased.
MeshData threeSquares()
{
    MeshData mesh = meshOfLists(
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}, {3, 0, 0}, {3, 1, 0}},
        listsOf({{{0, 1, 2, 3}}, {{1, 4, 5, 2}}, {{4, 6, 7, 5}}}, 1));
    std::vector<Vec2f> uvs(12);
    Ids ids(12);
    for (std::size_t i = 0; i < 12; ++i) {
        uvs[i] = {static_cast<float>(i), 0};
        ids[i] = static_cast<std::int32_t>(i);
    }
    mesh.uvSets.push_back({"map1", std::make_shared<const std::vector<Vec2f>>(uvs),
                           std::make_shared<const Ids>(ids)});
    mesh.groups.push_back({5, std::make_shared<const Numbers>(Numbers{1})});
    mesh.creases = std::make_shared<const MeshCreases>(MeshCreases{{1, 8}, {2, 3}, {6}, {4}});
    return mesh;
}

TEST(MeshRewriter, copiedFacesAreTheMeshBefore)
{
    const MeshData before = threeSquares();
    MeshRewriter rewriter(before);
    rewriter.copyFaces(0, 3);
    const auto after = rewriter.finish();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->corners, before.topology->corners);
    EXPECT_EQ(after->topology->loopStart, before.topology->loopStart);
    EXPECT_TRUE(after->topology->faceLoop.empty());
    EXPECT_EQ(*after->points, *before.points);
    EXPECT_EQ(*after->uvSets[0].corners, *before.uvSets[0].corners);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{1}));
    EXPECT_EQ(after->creases->edges, (Numbers{1, 8}));
}

TEST(MeshRewriter, whatNoFaceUsesClosesUpInOrder)
{
    // without the first square: points 0 and 3 and edges 0, 2, 3 go, all else moves down
    const MeshData before = threeSquares();
    MeshRewriter rewriter(before);
    rewriter.copyFaces(1, 3);
    const auto after = rewriter.finish({.edges = true, .points = true, .uvs = true});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->vertexCount, 6u);
    EXPECT_EQ((*after->points)[0].x, 1); // was point 1
    EXPECT_EQ((*after->points)[2].x, 2); // was point 4
    EXPECT_EQ(after->topology->edges.size(), 7u);
    EXPECT_EQ(after->topology->corners, (Ids{1, 2, 3, -1, 4, 5, 6, -3}));
    EXPECT_EQ(after->uvSets[0].points->size(), 8u);
    EXPECT_EQ((*after->uvSets[0].corners)[0], 0);
    EXPECT_EQ((*after->uvSets[0].points)[0].x, 4);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{0}));
    EXPECT_EQ(after->creases->edges, (Numbers{0, 5})); // edges 1 and 8
    EXPECT_EQ(after->creases->edgeValues, (std::vector<float>{2, 3}));
    EXPECT_EQ(after->creases->vertices, (Numbers{4})); // point 6
}

TEST(MeshRewriter, newPartsComeBehindTheOldOnes)
{
    // the third square is cut by an edge from 4 to 7
    const MeshData before = threeSquares();
    MeshRewriter rewriter(before);
    const std::uint32_t edge = rewriter.addEdge(4, 7, false);
    EXPECT_EQ(edge, 10u);
    rewriter.copyFaces(0, 2);
    rewriter.beginFace(2);
    rewriter.addCorner(7, 8U);    // 4-6
    rewriter.addCorner(8, 9U);    // 6-7
    rewriter.addCorner(-11, 10U); // back to 4
    rewriter.endFace();
    rewriter.beginFace(2);
    rewriter.addCorner(10, 8U);
    rewriter.addCorner(9, 10U);  // 7-5
    rewriter.addCorner(-6, 11U); // 5-4
    rewriter.endFace();
    const auto after = rewriter.finish();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 4u);
    EXPECT_EQ(after->edgeFlags()[10], 0);
    EXPECT_EQ((*after->uvSets[0].corners)[11], 8);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{1}));
}

TEST(MeshRewriter, aHoleIsASecondLoop)
{
    MeshData before =
        meshOfLists({{0, 0, 0}, {9, 0, 0}, {0, 9, 0}, {1, 1, 0}, {1, 2, 0}, {2, 1, 0}},
                    listsOf({{{0, 1, 2}, {3, 4, 5}}}, 1));
    before.invisibleFaces = std::make_shared<const Numbers>(Numbers{0});
    MeshRewriter rewriter(before);
    rewriter.copyFace(0);
    rewriter.copyFace(0);
    const auto after = rewriter.finish();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceLoop, (Numbers{0, 2, 4}));
    EXPECT_EQ(*after->invisibleFaces, (Numbers{0, 1}));
}

TEST(MeshRewriter, facesOutOfOrderAreListedInOrder)
{
    // face 2 becomes faces 0 and 3, face 0 becomes face 1, face 1 becomes face 2
    MeshData before = threeSquares();
    before.groups = {{5, std::make_shared<const Numbers>(Numbers{0, 2})},
                     {6, std::make_shared<const Numbers>(Numbers{1})},
                     {7, nullptr}};
    MeshRewriter rewriter(before);
    for (const std::uint32_t face : {2U, 0U, 1U, 2U}) {
        rewriter.copyFace(face);
    }
    const auto after = rewriter.finish();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{0, 1, 3}));
    EXPECT_EQ(*after->groups[1].faces, (Numbers{2}));
    EXPECT_EQ(after->groups[2].faces, nullptr);
}

TEST(MeshRewriter, manyGroupsCostTheirFacesOnly)
{
    // Looking at all faces for each group takes 4 * 10^9 steps.
    constexpr std::uint32_t kCount = 1 << 16;
    MeshData before;
    MeshTopology topology;
    topology.loopStart.assign(kCount + 1, 0); // faces without corners
    before.topology = std::make_shared<const MeshTopology>(topology);
    before.points = std::make_shared<const std::vector<Vec3f>>();
    for (std::uint32_t group = 0; group < kCount; ++group) {
        before.groups.push_back({static_cast<std::int32_t>(group),
                                 std::make_shared<const Numbers>(Numbers{kCount - 1 - group})});
    }
    MeshRewriter rewriter(before);
    rewriter.copyFaces(1, kCount);
    const auto start = std::chrono::steady_clock::now();
    const auto after = rewriter.finish();
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    EXPECT_LT(spent.count(), 2);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{kCount - 2}));
    EXPECT_TRUE(after->groups[kCount - 1].faces->empty()); // of face 0
}

TEST(MeshRewriter, pointsStayInTheirGroups)
{
    // without the first square points 0 and 3 go; 1 2 4 5 6 7 become 0 1 2 3 4 5
    MeshData before = threeSquares();
    before.pointGroups = {{9, std::make_shared<const Numbers>(Numbers{0, 2, 7})},
                          {8, std::make_shared<const Numbers>(Numbers{3})},
                          {7, nullptr}};
    MeshRewriter rewriter(before);
    rewriter.copyFaces(1, 3);
    const auto after = rewriter.finish({.edges = true, .points = true});
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(after->pointGroups.size(), 3u);
    EXPECT_EQ(after->pointGroups[0].id, 9);
    EXPECT_EQ(*after->pointGroups[0].points, (Numbers{1, 5}));
    EXPECT_TRUE(after->pointGroups[1].points->empty());
    EXPECT_EQ(after->pointGroups[2].points, nullptr);
}

TEST(MeshRewriter, aPointThatComesOfOneIsInItsGroups)
{
    MeshData before = threeSquares();
    before.pointGroups = {{9, std::make_shared<const Numbers>(Numbers{2, 5})}};
    MeshRewriter rewriter(before);
    rewriter.addPoint({0, 0, 1}, 5);
    rewriter.addPoint({0, 0, 1});
    rewriter.addPoint({0, 0, 1}, 1);
    rewriter.addPoint({0, 0, 1}, 2);
    rewriter.copyFaces(0, 3);
    const auto after = rewriter.finish();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(*after->pointGroups[0].points, (Numbers{2, 5, 8, 11}));
}

TEST(MeshRewriter, aGroupOfPointsThatAreNotThereIsNoMesh)
{
    MeshData mesh = threeSquares();
    mesh.pointGroups = {{9, std::make_shared<const Numbers>(Numbers{1, 7})}};
    EXPECT_TRUE(isConsistent(mesh));
    mesh.pointGroups = {{9, std::make_shared<const Numbers>(Numbers{1, 8})}};
    EXPECT_FALSE(isConsistent(mesh));
    mesh.pointGroups = {{9, std::make_shared<const Numbers>(Numbers{3, 3})}};
    EXPECT_FALSE(isConsistent(mesh));
}

TEST(MeshRewriter, anOpenFaceGivesNoMesh)
{
    const MeshData before = threeSquares();
    MeshRewriter rewriter(before);
    rewriter.beginFace(0);
    rewriter.addCorner(0);
    rewriter.addCorner(2);
    rewriter.endFace();
    EXPECT_EQ(rewriter.finish(), nullptr);
}

} // namespace
} // namespace host::geometry::test
