#include "host/geometry/mesh/edit/clusterVertices.h"
#include "host/geometry/mesh/edit/uniteMeshes.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <limits>

namespace host::geometry::test {
namespace {

Numbers allOf(std::size_t count)
{
    Numbers all(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        all[i] = i;
    }
    return all;
}

SharedMesh joined(const MeshData& mesh, const Numbers& vertices, double distance)
{
    return joinVertices(mesh, joinWithin(mesh, vertices, placesIn(mesh, {}), distance));
}

TEST(JoinVertices, twoSquaresSideBySideBecomeOneSheet)
{
    // The right side of the first square, 1 2, and the left of the second, 4 7, have the same
    // places. 4 and 7 go, the edge 7-4 (number 7: 4-5 5-6 6-7 7-4) becomes 1-2 (number 1).
    const MeshData before = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}},
        {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    const SharedMesh after = joined(before, allOf(8), 0);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2, 3}, {1, 4, 5, 2}}));
    EXPECT_EQ(edgesOf(*after), (Pairs{{0, 1}, {1, 2}, {2, 3}, {0, 3}, {1, 4}, {4, 5}, {2, 5}}));
    EXPECT_EQ((*after->points)[4], (Vec3f{2, 0, 0}));
}

TEST(JoinVertices, onlyNamedVerticesAreJoined)
{
    const MeshData before = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}},
        {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    const SharedMesh after = joined(before, {1, 4, 7}, 0);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->vertexCount, 7u);
    EXPECT_EQ(after->topology->edges.size(), 8u); // 1-2 and 7-1 differ
}

TEST(JoinVertices, aTriangleIsLeftOfASquareAndNothingOfATriangle)
{
    const MeshData before = meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 1, 0}},
                                   {{{0, 1, 2, 3}}, {{1, 4, 2}}});
    VertexJoin join = unjoined(before);
    join.target[2] = 1;
    const SharedMesh after = joinVertices(before, join);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 2}}));
    EXPECT_EQ(after->topology->vertexCount, 3u); // 4, of the triangle alone, goes too
}

TEST(JoinVertices, aWayThereAndBackLeavesAFace)
{
    // 0 and 2, opposite corners of the square 0 1 2 3, become one: nothing is left of it, and the
    // triangle 3 2 4 stays.
    const MeshData before = meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 2, 0}},
                                   {{{0, 1, 2, 3}}, {{3, 2, 4}}});
    VertexJoin join = unjoined(before);
    join.target[2] = 0;
    const SharedMesh after = joinVertices(before, join);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{1, 0, 2}})); // 1 of the square alone went
    EXPECT_TRUE(hasNothingLoose(*after));
}

TEST(JoinWithin, theMeanOfWhatALowestVertexReaches)
{
    // On a line at 0, 1, 2, 3: 0 takes 1, which then takes none; 2 takes 3.
    const MeshData before = meshOf({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {1, 5, 0}},
                                   {{{0, 1, 4}}, {{1, 2, 4}}, {{2, 3, 4}}});
    const VertexJoin join = joinWithin(before, Numbers{0, 1, 2, 3}, placesIn(before, {}), 1);
    EXPECT_EQ(join.target, (Numbers{0, 0, 2, 2, 4}));
    EXPECT_EQ(join.points[0].x, 0.5F);
    EXPECT_EQ(join.points[2].x, 2.5F);
    EXPECT_EQ(join.points[4], (Vec3f{1, 5, 0}));
}

TEST(JoinWithin, distancesAreMeasuredAmongThePlaces)
{
    const MeshData before = grid(1, 1);
    Matrix4 small = scaling({0.001, 1, 1});
    EXPECT_EQ(joinWithin(before, allOf(4), placesIn(before, small), 0.01).target,
              (Numbers{0, 0, 2, 2}));
}

TEST(JoinWithin, strangeDistancesAndPlaces)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const MeshData before = grid(2, 2);
    const Numbers all = allOf(9);
    const auto targets = [&](double distance) {
        return joinWithin(before, all, placesIn(before, {}), distance).target;
    };
    EXPECT_EQ(targets(nan), all);
    EXPECT_EQ(targets(-1), all);
    EXPECT_EQ(targets(1e-320), all);
    EXPECT_EQ(targets(1e300), Numbers(9, 0));
    EXPECT_EQ(targets(std::numeric_limits<double>::infinity()), Numbers(9, 0));
    std::vector<Vec3d> places = placesIn(before, {});
    places[1].x = nan;
    places[2].x = std::numeric_limits<double>::infinity();
    const Numbers found = joinWithin(before, all, places, 10).target;
    EXPECT_EQ(found, (Numbers{0, 1, 2, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(joinWithin(before, Numbers{0, 900}, places, 10).target, all);
}

/// The rule word by word, for every pair.
Numbers slowTargets(const MeshData& mesh, double distance)
{
    Numbers target = allOf(mesh.points->size());
    std::vector<bool> isTaken(target.size());
    for (std::uint32_t i = 0; i < target.size(); ++i) {
        for (std::uint32_t j = i; j < target.size() && !isTaken[i]; ++j) {
            const Vec3d way = toDouble((*mesh.points)[j]) - toDouble((*mesh.points)[i]);
            if (j != i && !isTaken[j] && length(way) <= distance) {
                target[j] = i;
                isTaken[j] = true;
            }
        }
        isTaken[i] = true;
    }
    return target;
}

TEST(JoinWithin, findsWhatLookingAtEveryPairFinds)
{
    std::mt19937 random(11);
    for (std::uint32_t round = 0; round < 60; ++round) {
        MeshData mesh = grid(9, 9);
        std::vector<Vec3f> points = *mesh.points;
        for (Vec3f& point : points) {
            const auto shift = [&] { return static_cast<float>(random() % 1000) / 500.0F - 1; };
            point = {point.x + shift(), point.y + shift(), shift()};
        }
        mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
        const double distance = 0.05 * (round % 30);
        const VertexJoin join =
            joinWithin(mesh, allOf(points.size()), placesIn(mesh, {}), distance);
        EXPECT_EQ(join.target, slowTargets(mesh, distance));
        const SharedMesh after = joinVertices(mesh, join);
        ASSERT_NE(after, nullptr);
        EXPECT_TRUE(hasNothingLoose(*after));
        for (const MeshEdge& edge : after->topology->edges) {
            EXPECT_NE(edge.start, edge.end);
        }
    }
}

TEST(JoinVertices, aBoxOfSixSheetsCloses)
{
    // The faces of the cube, each with corners of its own: 24 vertices become 8, 24 edges 12.
    std::vector<MeshData> sheets;
    for (const auto& face : kCubeFaces) {
        std::vector<Vec3f> points;
        for (const std::uint32_t vertex : face[0]) {
            points.push_back(kCubePoints[vertex]);
        }
        sheets.push_back(meshOf(points, {{{0, 1, 2, 3}}}));
    }
    std::vector<UnitedMesh> parts;
    for (const MeshData& sheet : sheets) {
        parts.push_back({&sheet, {}});
    }
    const SharedMesh open = uniteMeshes(parts, UvSetMerging::ByName);
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(eulerNumber(*open), 6);
    const SharedMesh closed = joined(*open, allOf(24), 1e-4);
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(closed->topology->vertexCount, 8u);
    EXPECT_EQ(closed->topology->edges.size(), 12u);
    EXPECT_EQ(eulerNumber(*closed), 2);
    EXPECT_NEAR(sixVolumes(*closed), 6, 1e-6);
}

} // namespace
} // namespace host::geometry::test
