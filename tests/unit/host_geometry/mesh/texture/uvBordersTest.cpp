// Cuts, seams, sets and creases: ids worked out from the rules in the headers.
#include "host/geometry/mesh/texture/cutUvs.h"
#include "host/geometry/mesh/texture/setCreases.h"
#include "host/geometry/mesh/texture/uvSets.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

namespace host::geometry {
namespace {

using test::expectUv;
using test::Ids;
using test::idsOf;
using Numbers = std::vector<std::uint32_t>;

/// Four unit squares round vertex 4, numbered row by row like the nine vertices; ids as vertices.
MeshData fourSquares()
{
    std::vector<Vec3f> points;
    std::vector<Vec2f> uvs;
    for (int i = 0; i < 9; ++i) {
        const Vec2f uv{static_cast<float>(i % 3), static_cast<float>(i / 3)};
        points.push_back({uv.x, uv.y, 0});
        uvs.push_back(uv);
    }
    MeshData mesh =
        test::meshOf(points, {{{0, 1, 4, 3}}, {{1, 2, 5, 4}}, {{3, 4, 7, 6}}, {{4, 5, 8, 7}}});
    test::addUvSet(mesh, "map1", uvs, {0, 1, 4, 3, 1, 2, 5, 4, 3, 4, 7, 6, 4, 5, 8, 7});
    return mesh;
}

std::uint32_t edgeBetween(const MeshData& mesh, std::uint32_t a, std::uint32_t b)
{
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        const MeshEdge& ends = mesh.topology->edges[edge];
        if (std::minmax(ends.start, ends.end) == std::minmax(a, b)) {
            return edge;
        }
    }
    ADD_FAILURE() << a << " " << b;
    return 0;
}

TEST(CutUvs, BothEndsOnTheBorderPartTheFaces)
{
    const MeshData mesh = test::twoSquares();
    const std::uint32_t middle = edgeBetween(mesh, 1, 4);
    const auto cut = cutUvs(mesh, 0, Numbers{middle});
    // Vertex 1 comes first, where the edge starts; the lower face keeps its ids.
    ASSERT_EQ(mesh.topology->edges[middle].start, 1U);
    EXPECT_EQ(idsOf(*cut), (Ids{0, 1, 4, 3, 6, 2, 5, 7}));
    expectUv(*cut, 6, 1, 0);
    expectUv(*cut, 7, 1, 1);
    EXPECT_TRUE(isConsistent(*cut));
    EXPECT_EQ(cut->points, mesh.points);
}

TEST(CutUvs, AnEndInsideStaysWhole)
{
    const MeshData mesh = fourSquares();
    const auto slit = cutUvs(mesh, 0, Numbers{edgeBetween(mesh, 1, 4)});
    EXPECT_EQ(idsOf(*slit), (Ids{0, 1, 4, 3, 9, 2, 5, 4, 3, 4, 7, 6, 4, 5, 8, 7}));
}

TEST(CutUvs, ACornerIsCutOut)
{
    const MeshData mesh = fourSquares();
    Numbers edges{edgeBetween(mesh, 1, 4), edgeBetween(mesh, 3, 4)};
    std::sort(edges.begin(), edges.end());
    const auto cut = cutUvs(mesh, 0, edges);
    // The first face keeps 1, 4 and 3, the others get new ones in the order 1, 4, 3.
    ASSERT_EQ(mesh.topology->edges[edges[0]].start, 1U);
    EXPECT_EQ(idsOf(*cut), (Ids{0, 1, 4, 3, 9, 2, 5, 10, 11, 10, 7, 6, 10, 5, 8, 7}));
}

TEST(CutUvs, CornersWithoutCoordinatesStayWithout)
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    test::addUvSet(mesh, "map1", {}, {});
    const auto cut = cutUvs(mesh, 0, Numbers{edgeBetween(mesh, 1, 4)});
    EXPECT_EQ(idsOf(*cut), Ids(8, -1));
}

TEST(SewUvs, TheMiddleTakesTheLowestId)
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    test::addUvSet(mesh, "map1", {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {3, 0}, {4, 0}, {4, 1}, {3, 3}},
                   {0, 1, 2, 3, 4, 5, 6, 7});
    const auto sewn = sewUvs(mesh, 0, Numbers{edgeBetween(mesh, 1, 4)});
    EXPECT_EQ(idsOf(*sewn), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    expectUv(*sewn, 1, 2, 0); // of (1 0) and (3 0)
    expectUv(*sewn, 2, 2, 2); // of (1 1) and (3 3)
    expectUv(*sewn, 4, 4, 0);
}

TEST(SewUvs, UndoesACut)
{
    const MeshData mesh = fourSquares();
    const Numbers edges{edgeBetween(mesh, 1, 4), edgeBetween(mesh, 4, 7)};
    const auto cut = cutUvs(mesh, 0, edges);
    EXPECT_EQ(cut->uvSets[0].points->size(), 12U);
    const auto sewn = sewUvs(*cut, 0, edges);
    EXPECT_EQ(idsOf(*sewn), idsOf(mesh));
    EXPECT_EQ(*sewn->uvSets[0].points, *mesh.uvSets[0].points);
}

TEST(DeleteUvs, WhatTheOthersHaveClosesUp)
{
    const auto left = deleteUvs(test::twoSquares(), 0, Numbers{0});
    // 1, 2, 4 and 5 stay.
    EXPECT_EQ(idsOf(*left), (Ids{-1, -1, -1, -1, 0, 1, 3, 2}));
    expectUv(*left, 3, 2, 1);
}

TEST(UvSets, AreMadeCopiedAndTakenAway)
{
    const MeshData mesh = test::twoSquares();
    const auto made = withUvSet(mesh, "light");
    ASSERT_EQ(made->uvSets.size(), 2U);
    EXPECT_EQ(made->currentUvSet, "map1");
    EXPECT_EQ(withUvSet(*made, "light")->uvSets.size(), 2U);
    const auto filled = withCopiedUvSet(*made, 0, "light");
    EXPECT_EQ(filled->uvSets[1].points, mesh.uvSets[0].points);
    EXPECT_EQ(filled->uvSets[1].name, "light");
    const auto one = withoutUvSet(*filled, 0);
    ASSERT_EQ(one->uvSets.size(), 1U);
    EXPECT_EQ(one->currentUvSet, "light");
    EXPECT_EQ(withoutUvSet(*one, 0)->currentUvSet, "");
}

TEST(UvSets, FacesAreCopiedWithIdsOfTheirOwn)
{
    const auto copied = withCopiedUvs(test::twoSquares(), 0, "light", Numbers{1});
    ASSERT_EQ(copied->uvSets.size(), 2U);
    EXPECT_EQ(idsOf(*copied, 1), (Ids{-1, -1, -1, -1, 0, 1, 2, 3}));
    expectUv(*copied, 2, 2, 1, 1);
    EXPECT_TRUE(isConsistent(*copied));
}

TEST(SetCreases, NewOnesWinAndZeroTakesAway)
{
    MeshData mesh = test::twoSquares(); // 7 edges, 6 vertices
    const auto first = setCreases(mesh, std::vector<Crease>{{1, 2}, {3, 4}, {5, 6}, {7, 1}},
                                  std::vector<Crease>{{2, 9}});
    EXPECT_EQ(first->creases->edges, (Numbers{1, 3, 5}));
    const auto second =
        setCreases(*first, std::vector<Crease>{{0, 1}, {3, 0}, {5, 7}}, std::vector<Crease>{});
    EXPECT_EQ(second->creases->edges, (Numbers{0, 1, 5}));
    EXPECT_EQ(second->creases->edgeValues, (std::vector<float>{1, 2, 7}));
    EXPECT_EQ(second->creases->vertices, (Numbers{2}));
    EXPECT_EQ(second->creases->vertexValues, (std::vector<float>{9}));
    EXPECT_TRUE(isConsistent(*second));
}

} // namespace
} // namespace host::geometry
