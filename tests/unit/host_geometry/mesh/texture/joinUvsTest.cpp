// Texture coordinates that become one.
#include "host/geometry/mesh/texture/joinUvs.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace host::geometry {
namespace {

using test::expectCorner;
using test::expectUv;
using test::Ids;
using test::idsOf;
using Numbers = std::vector<std::uint32_t>;

/// The number of the edge between two vertices.
std::uint32_t edgeBetween(const MeshData& mesh, std::uint32_t a, std::uint32_t b)
{
    const auto& edges = mesh.topology->edges;
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        if (std::minmax(edges[edge].start, edges[edge].end) == std::minmax(a, b)) {
            return edge;
        }
    }
    ADD_FAILURE() << "no edge";
    return 0;
}

/// Three unit squares in a row, seen from +z: vertices 0..3 below, 4..7 above. The first two share
/// coordinates; the third is apart, turned by a quarter and twice as large.
MeshData threeSquares()
{
    MeshData mesh = test::meshOf(
        {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}, {3, 1, 0}},
        {{{0, 1, 5, 4}}, {{1, 2, 6, 5}}, {{2, 3, 7, 6}}});
    test::addUvSet(
        mesh, "map1",
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {2, 0}, {2, 1}, {12, 5}, {12, 7}, {10, 7}, {10, 5}},
        {0, 1, 2, 3, 1, 4, 5, 2, 6, 7, 8, 9});
    return mesh;
}

TEST(MoveAndSewUvs, TheSmallerPieceIsTurnedAndScaledToTheLargerOne)
{
    const MeshData mesh = threeSquares();
    const auto result = moveAndSewUvs(mesh, 0, Numbers{edgeBetween(mesh, 2, 6)});
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 1, 4, 5, 2, 4, 6, 7, 5}));
    expectCorner(*result, 9, 3, 0);
    expectCorner(*result, 10, 3, 1);
    expectUv(*result, 4, 2, 0);
    EXPECT_EQ(result->points, mesh.points);
}

TEST(MoveAndSewUvs, APieceThatIsTooLargeStays)
{
    const MeshData mesh = threeSquares();
    const Numbers edge{edgeBetween(mesh, 2, 6)};
    EXPECT_EQ(idsOf(*moveAndSewUvs(mesh, 0, edge, 0)), idsOf(mesh));
    EXPECT_NE(idsOf(*moveAndSewUvs(mesh, 0, edge, 1)), idsOf(mesh));
}

TEST(MoveAndSewUvs, WithinOnePieceItOnlySews)
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    // joined at vertex 1 only: at vertex 4 the faces have (1 1) and (3 1)
    test::addUvSet(mesh, "map1", {{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}, {3, 1}},
                   {0, 1, 4, 3, 1, 2, 5, 6});
    const auto result = moveAndSewUvs(mesh, 0, Numbers{edgeBetween(mesh, 1, 4)});
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 4, 3, 1, 2, 5, 4}));
    expectUv(*result, 4, 2, 1);
    expectUv(*result, 1, 1, 0);
}

TEST(MoveAndSewUvs, ALongRowGrowsFromEdgeToEdge)
{
    // Squares that all lie on top of each other become a row, whichever of two pieces is larger.
    constexpr std::uint32_t kCount = 9;
    std::vector<Vec3f> points;
    std::vector<std::vector<test::Loop>> faces;
    std::vector<Vec2f> uvs;
    std::vector<std::int32_t> corners(4 * kCount);
    for (std::uint32_t i = 0; i <= kCount; ++i) {
        points.push_back({static_cast<float>(i), 0, 0});
        points.push_back({static_cast<float>(i), 1, 0});
    }
    for (std::uint32_t i = 0; i < kCount; ++i) {
        faces.push_back({{2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1}});
        uvs.insert(uvs.end(), {{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    }
    std::iota(corners.begin(), corners.end(), 0);
    MeshData mesh = test::meshOf(points, faces);
    test::addUvSet(mesh, "map1", uvs, corners);
    Numbers edges;
    for (const std::uint32_t i : {3U, 4U, 1U, 2U, 6U, 8U, 7U, 5U}) {
        edges.push_back(edgeBetween(mesh, 2 * i, 2 * i + 1));
    }
    std::sort(edges.begin(), edges.end());
    const auto result = moveAndSewUvs(mesh, 0, edges);
    EXPECT_EQ(result->uvSets[0].points->size(), 2U * kCount + 2);
    const auto& ids = idsOf(*result);
    const Vec2f origin = (*result->uvSets[0].points)[static_cast<std::size_t>(ids[0])];
    for (std::uint32_t i = 0; i < kCount; ++i) {
        expectCorner(*result, 4 * i, origin.x + static_cast<float>(i), origin.y);
        expectCorner(*result, 4 * i + 2, origin.x + static_cast<float>(i) + 1, origin.y + 1);
    }
}

/// Two squares that share nothing; at vertex 1 the coordinates are 0.1 apart, at vertex 4 0.5.
MeshData nearlyJoined()
{
    MeshData mesh = test::twoSquares();
    mesh.uvSets.clear();
    test::addUvSet(mesh, "map1",
                   {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {1.1F, 0}, {2, 0}, {2, 1}, {1.5F, 1}},
                   {0, 1, 2, 3, 4, 5, 6, 7});
    return mesh;
}

TEST(MergeUvs, JoinsWhatIsNearAtOneVertex)
{
    const MeshData mesh = nearlyJoined();
    const Numbers all{0, 1, 2, 3, 4, 5, 6, 7};
    const auto result = mergeUvs(mesh, 0, all, 0.2);
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 1, 4, 5, 6}));
    expectUv(*result, 1, 1.05, 0);
    // other vertices' coordinates stay apart however far the distance reaches
    EXPECT_EQ(idsOf(*mergeUvs(mesh, 0, all, 10000)), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    EXPECT_EQ(idsOf(*mergeUvs(mesh, 0, Numbers{0, 1, 2, 3}, 10000)), idsOf(mesh));
}

TEST(MergeUvs, NumbersThatAreNoneDoNoHarm)
{
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    MeshData mesh = nearlyJoined();
    mesh.uvSets.clear();
    test::addUvSet(mesh, "map1",
                   {{0, 0}, {kNan, 0}, {1, 1}, {0, 1}, {1, kNan}, {2, 0}, {2, 1}, {1, 1}},
                   {0, 1, 2, 3, 4, 5, 6, 7});
    const Numbers all{0, 1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(idsOf(*mergeUvs(mesh, 0, all, 1)), (Ids{0, 1, 2, 3, 4, 5, 6, 2}));
    EXPECT_EQ(idsOf(*mergeUvs(mesh, 0, all, kNan)), idsOf(mesh));
    EXPECT_TRUE(isConsistent(*moveAndSewUvs(mesh, 0, Numbers{edgeBetween(mesh, 1, 4)})));
}

TEST(MergeUvs, ManyCoordinatesOfOneVertexTakeNoLongTime)
{
    // A fan of triangles about vertex 0, each with coordinates of its own: pairs would be 4.5e8.
    constexpr std::uint32_t kCount = 30000;
    std::vector<Vec3f> points{{0, 0, 0}};
    std::vector<std::vector<test::Loop>> faces;
    for (std::uint32_t i = 0; i < kCount; ++i) {
        points.push_back({1, static_cast<float>(i), 0});
        points.push_back({2, static_cast<float>(i), 0});
        faces.push_back({{0, 2 * i + 1, 2 * i + 2}});
    }
    MeshData mesh = test::meshOf(points, faces);
    std::vector<std::int32_t> corners(3 * std::size_t{kCount});
    std::iota(corners.begin(), corners.end(), 0);
    test::addUvSet(mesh, "map1", std::vector<Vec2f>(corners.size(), Vec2f{0, 0}), corners);
    const Numbers all(corners.begin(), corners.end());
    EXPECT_EQ(mergeUvs(mesh, 0, all, 1)->uvSets[0].points->size(), 2U * kCount + 1);
}

} // namespace
} // namespace host::geometry
