#include "host/geometry/mesh/edit/triangulateFaces.h"

#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::geometry::test {
namespace {

TEST(TriangulateFaces, aCubeTakesTwoTrianglesForEachFace)
{
    // A square is cut from corner 1 to corner 3, and the second triangle begins along the cut. The
    // triangles of the front (0 1 3 2) are 0 1 2 and 2 1 3, those of the top 2 3 4 and 4 3 5: as
    // exported triangulated cubes have them. Cuts are the edges 12..17.
    const SharedMesh after = triangulateFaces(cube(), Numbers{0, 1, 2, 3, 4, 5});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2},
                                                     {2, 1, 3},
                                                     {2, 3, 4},
                                                     {4, 3, 5},
                                                     {4, 5, 6},
                                                     {6, 5, 7},
                                                     {6, 7, 0},
                                                     {0, 7, 1},
                                                     {1, 7, 3},
                                                     {3, 7, 5},
                                                     {6, 0, 4},
                                                     {4, 0, 2}}));
    ASSERT_EQ(after->topology->edges.size(), 18u);
    const Pairs edges = edgesOf(*after);
    EXPECT_EQ(Pairs(edges.begin() + 12, edges.end()),
              (Pairs{{1, 2}, {3, 4}, {5, 6}, {0, 7}, {3, 7}, {0, 4}}));
    EXPECT_EQ(after->edgeFlags()[11], 0);
    EXPECT_EQ(after->edgeFlags()[12], 1);
}

TEST(TriangulateFaces, laterFacesMoveUp)
{
    MeshData before = grid(3, 1);
    addCornerUvs(before);
    addGroup(before, 4, {1, 2});
    const SharedMesh after = triangulateFaces(before, Numbers{1});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after),
              (std::vector<Loop>{{0, 1, 5, 4}, {1, 2, 5}, {5, 2, 6}, {2, 3, 7, 6}}));
    EXPECT_EQ(*after->groups[0].faces, (Numbers{1, 2, 3}));
    // corners 4 5 7 and 7 5 6 of the face
    const std::vector<std::int32_t>& ids = *after->uvSets[0].corners;
    EXPECT_EQ(std::vector<std::int32_t>(ids.begin() + 4, ids.begin() + 10),
              (std::vector<std::int32_t>{4, 5, 7, 7, 5, 6}));
    EXPECT_EQ(after->uvSets[0].points->size(), 12u);
}

TEST(TriangulateFaces, trianglesAndUnknownFacesStay)
{
    const MeshData before = meshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{{0, 1, 2}}});
    const SharedMesh after = triangulateFaces(before, Numbers{0, 3});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), outerLoops(before));
    EXPECT_EQ(after->topology->edges.size(), 3u);
}

TEST(TriangulateFaces, faceNumbersAndEdgeCountsOfAWallWithHoles)
{
    // A wall with one hole of 20 corners gives 4 + 20 + 2 - 2 = 24 triangles with 24 new edges
    // (half of what 72 sides leave beside the 24 that the wall has).
    std::vector<Vec3f> points{{-10, -10, 0}, {10, -10, 0}, {10, 10, 0}, {-10, 10, 0}};
    Loop hole;
    for (std::uint32_t i = 0; i < 20; ++i) {
        const double angle = -0.314159265358979 * i; // against the wall's direction
        points.push_back(
            {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), 0});
        hole.push_back(4 + i);
    }
    const MeshData before = meshOf(points, {{{0, 1, 2, 3}, hole}});
    const SharedMesh after = triangulateFaces(before, Numbers{0});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 24u);
    EXPECT_EQ(after->topology->edges.size(), 48u);
    EXPECT_NEAR(totalArea(*after).z, totalArea(before).z, 1e-6);
}

TEST(TriangulateFaces, areaAndEulerNumberStay)
{
    std::mt19937 random(3);
    for (std::uint32_t round = 0; round < 40; ++round) {
        const MeshData squares = grid(6, 5);
        const SharedMesh before =
            deleteEdges(squares, someOf(squares.topology->edges.size(), 6, random), false);
        ASSERT_NE(before, nullptr);
        const std::uint32_t faceCount = before->topology->faceCount();
        const SharedMesh after = triangulateFaces(*before, someOf(faceCount, 1, random));
        ASSERT_NE(after, nullptr);
        EXPECT_NEAR(totalArea(*after).z, 30, 1e-6);
        EXPECT_TRUE(hasNothingLoose(*after));
        if (before->topology->faceLoop.empty()) {
            EXPECT_EQ(eulerNumber(*after), eulerNumber(*before));
        }
        for (const Loop& loop : outerLoops(*after)) {
            EXPECT_EQ(loop.size(), 3u);
        }
    }
}

} // namespace
} // namespace host::geometry::test
