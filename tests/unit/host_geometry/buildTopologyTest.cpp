#include "tests/unit/host_geometry/meshMaker.h"

#include <limits>

namespace host::geometry {
namespace {

using test::Lists;

// Two triangles, 0 1 2 and 0 2 3, with the edges 0-1, 1-2, 2-0, 2-3, 3-0.
Lists twoTriangles()
{
    return {.edges = {0, 1, 0, 1, 2, 1, 2, 0, 1, 2, 3, 0, 3, 0, 0},
            .corners = {0, 1, 2, -3, 3, 4},
            .loopSizes = {3, 3},
            .faceLoopCounts = {1, 1}};
}

BuiltTopology build(const Lists& lists, std::uint32_t vertexCount = 4)
{
    return buildTopology(vertexCount, lists.edges,
                         {lists.corners, lists.loopSizes, lists.faceLoopCounts});
}

MeshData meshFrom(const BuiltTopology& built)
{
    MeshData mesh;
    mesh.topology = std::make_shared<const MeshTopology>(built.topology);
    mesh.edgeSmooth = shareEdgeFlags(EdgeFlags(built.edgeSmooth));
    mesh.points = std::make_shared<const std::vector<Vec3f>>(built.topology.vertexCount);
    return mesh;
}

TEST(BuildTopology, TakesGoodListsAsTheyAre)
{
    const BuiltTopology built = build(twoTriangles());
    EXPECT_TRUE(built.damage.isNone());
    const MeshTopology& t = built.topology;
    EXPECT_EQ(t.faceCount(), 2U);
    EXPECT_TRUE(t.faceLoop.empty());
    EXPECT_EQ(t.loopStart, (std::vector<std::uint32_t>{0, 3, 6}));
    EXPECT_EQ(built.edgeSmooth, (std::vector<std::uint8_t>{0, 1, 1, 0, 0}));
    EXPECT_EQ(t.cornerVertex(3), 0U); // -3: edge 2 (2-0) backwards
    EXPECT_EQ(t.cornerVertex(4), 2U);
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

TEST(EdgeLists, TellFlagsFromTheFirstHardEdgeOn)
{
    EdgeLists lists;
    lists.append(std::vector<std::int32_t>{0, 1, 1, 1, 2, 7, 9}); // the 9 is left over
    ASSERT_EQ(lists.edges.size(), 2U);
    EXPECT_TRUE(lists.smooth.empty());
    lists.append(std::vector<std::int32_t>{2, 3, 0, 3, 0, 1});
    lists.append(std::vector<std::int32_t>{5, 6, 1});
    EXPECT_EQ(lists.edges[1].end, 2U);
    EXPECT_EQ(lists.edges[4].start, 5U);
    EXPECT_EQ(lists.smooth, (EdgeFlags{1, 1, 0, 1, 1}));
    EXPECT_EQ(lists.triples(),
              (std::vector<std::int32_t>{0, 1, 1, 1, 2, 1, 2, 3, 0, 3, 0, 1, 5, 6, 1}));
}

TEST(BuildTopology, MovesTheCornersWithoutACopy)
{
    Lists lists = twoTriangles();
    const std::int32_t* const block = lists.corners.data();
    const BuiltTopology built = buildTopology(
        4, lists.edges, {std::move(lists.corners), lists.loopSizes, lists.faceLoopCounts});
    EXPECT_EQ(built.topology.corners.data(), block);
}

TEST(BuildTopology, FacesAreTheLoopsWithoutLoopCounts)
{
    Lists lists = twoTriangles();
    lists.faceLoopCounts.clear();
    EXPECT_EQ(build(lists).topology.faceCount(), 2U);
}

TEST(BuildTopology, OpenLoopEmptiesItsFaceAndKeepsTheNumbers)
{
    Lists lists = twoTriangles();
    lists.corners[1] = 3; // 0-1 then 2-3
    const BuiltTopology built = build(lists);
    EXPECT_EQ(built.damage.badFaces, 1U);
    EXPECT_EQ(built.damage.droppedCorners, (std::vector<CornerRun>{{0, 3}}));
    EXPECT_EQ(built.topology.faceCount(), 2U);
    EXPECT_EQ(built.topology.firstCorner(0), built.topology.endCorner(0));
    EXPECT_EQ(built.topology.corners, (std::vector<std::int32_t>{-3, 3, 4}));
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

TEST(BuildTopology, LoopThatDoesNotReturnToItsStartIsOpen)
{
    Lists lists = twoTriangles();
    lists.corners[5] = -5; // 0-2, 2-3, then 0-3 instead of 3-0
    const BuiltTopology built = build(lists);
    EXPECT_EQ(built.damage.badFaces, 1U);
    EXPECT_EQ(built.damage.droppedCorners, (std::vector<CornerRun>{{3, 6}}));
}

TEST(BuildTopology, EdgeReferencesOutOfRangeEmptyTheirFaces)
{
    for (const std::int32_t reference : {5, -6, 0x7fffffff, -0x7fffffff - 1}) {
        Lists lists = twoTriangles();
        lists.corners[4] = reference;
        const BuiltTopology built = build(lists);
        EXPECT_EQ(built.damage.badFaces, 1U) << reference;
        EXPECT_EQ(built.topology.corners, (std::vector<std::int32_t>{0, 1, 2}));
        EXPECT_TRUE(isConsistent(meshFrom(built)));
    }
}

TEST(BuildTopology, EdgeOnAMissingVertexKeepsItsNumberButHasNoFace)
{
    for (const std::int32_t vertex : {4, -1, 0x7fffffff}) {
        Lists lists = twoTriangles();
        lists.edges[9] = vertex; // edge 3
        const BuiltTopology built = build(lists);
        EXPECT_EQ(built.damage.badEdges, 1U);
        EXPECT_EQ(built.damage.badFaces, 1U);
        EXPECT_EQ(built.topology.edges.size(), 5U);
        EXPECT_EQ(built.topology.edges[4].start, 3U);
        EXPECT_TRUE(isConsistent(meshFrom(built)));
    }
}

TEST(BuildTopology, MeshWithoutVerticesKeepsItsEmptyFaces)
{
    const BuiltTopology built = build(twoTriangles(), 0);
    EXPECT_EQ(built.damage.badFaces, 2U);
    EXPECT_EQ(built.damage.badEdges, 5U);
    EXPECT_EQ(built.topology.faceCount(), 2U);
    EXPECT_TRUE(built.topology.corners.empty());
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

TEST(BuildTopology, LoopLongerThanTheCornersIsBad)
{
    Lists lists = twoTriangles();
    lists.loopSizes[1] = 0xffffffff;
    const BuiltTopology built = build(lists);
    EXPECT_EQ(built.damage.badFaces, 1U);
    EXPECT_EQ(built.topology.corners.size(), 3U);
}

TEST(BuildTopology, LeftOverCornersAndLoopsAreDropped)
{
    Lists lists = twoTriangles();
    lists.faceLoopCounts = {1};
    const BuiltTopology built = build(lists);
    EXPECT_EQ(built.topology.faceCount(), 1U);
    EXPECT_EQ(built.damage.looseLoops, 1U);
    EXPECT_EQ(built.damage.droppedCorners, (std::vector<CornerRun>{{3, 6}}));
}

TEST(BuildTopology, FaceWithoutLoopsIsEmpty)
{
    Lists lists = twoTriangles();
    lists.faceLoopCounts = {0, 1, 1, 7};
    const BuiltTopology built = build(lists);
    EXPECT_EQ(built.topology.faceCount(), 4U);
    EXPECT_EQ(built.damage.badFaces, 2U);
    EXPECT_EQ(built.topology.firstCorner(1), 0U);
    EXPECT_EQ(built.topology.endCorner(2), 6U);
    EXPECT_EQ(built.topology.endCorner(3), 6U);
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

// A square 0 1 2 3 with two triangular holes 4 5 6 and 7 8 9.
Lists squareWithHoles()
{
    return test::listsOf({{{0, 1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, 0);
}

TEST(BuildTopology, HolesStayWithTheirFace)
{
    const BuiltTopology built = build(squareWithHoles(), 10);
    EXPECT_TRUE(built.damage.isNone());
    EXPECT_EQ(built.topology.faceCount(), 1U);
    EXPECT_EQ(built.topology.loopCount(), 3U);
    EXPECT_EQ(built.topology.faceLoop, (std::vector<std::uint32_t>{0, 3}));
    EXPECT_EQ(built.topology.endCorner(0), 10U);
}

TEST(BuildTopology, BadHoleIsClosedAndTheFaceKept)
{
    Lists lists = squareWithHoles();
    lists.corners[5] = 99;
    const BuiltTopology built = build(lists, 10);
    EXPECT_EQ(built.damage.badHoles, 1U);
    EXPECT_EQ(built.damage.badFaces, 0U);
    EXPECT_EQ(built.damage.droppedCorners, (std::vector<CornerRun>{{4, 7}}));
    EXPECT_EQ(built.topology.loopCount(), 2U);
    EXPECT_EQ(built.topology.endCorner(0), 7U);
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

TEST(BuildTopology, BadOuterLoopTakesItsHolesAlong)
{
    Lists lists = squareWithHoles();
    lists.corners[0] = 99;
    const BuiltTopology built = build(lists, 10);
    EXPECT_EQ(built.damage.badFaces, 1U);
    EXPECT_EQ(built.damage.badHoles, 0U);
    EXPECT_EQ(built.damage.droppedCorners, (std::vector<CornerRun>{{0, 10}}));
    EXPECT_EQ(built.topology.faceCount(), 1U);
    EXPECT_EQ(built.topology.loopCount(), 1U);
    EXPECT_TRUE(isConsistent(meshFrom(built)));
}

TEST(RemoveCorners, TakesOutTheDroppedRuns)
{
    std::vector<std::int32_t> ids{10, 11, 12, 13, 14, 15, 16};
    const std::vector<CornerRun> dropped{{1, 3}, {5, 6}};
    removeCorners(ids, dropped, 4);
    EXPECT_EQ(ids, (std::vector<std::int32_t>{10, 13, 14, 16}));
}

TEST(RemoveCorners, FillsAShortListWithNone)
{
    std::vector<std::int32_t> ids{10, 11};
    removeCorners(ids, {}, 4);
    EXPECT_EQ(ids, (std::vector<std::int32_t>{10, 11, -1, -1}));
    std::vector<std::int32_t> shorter{10, 11};
    const std::vector<CornerRun> dropped{{1, 3}};
    removeCorners(shorter, dropped, 2);
    EXPECT_EQ(shorter, (std::vector<std::int32_t>{10, -1}));
}

TEST(IsConsistent, TellsEveryKindOfMisfit)
{
    const auto broken = [](auto&& damage) {
        MeshTopology topology = build(twoTriangles()).topology;
        MeshData mesh;
        mesh.points = std::make_shared<const std::vector<Vec3f>>(4);
        mesh.uvSets.push_back({"map1", std::make_shared<const std::vector<Vec2f>>(3),
                               std::make_shared<const std::vector<std::int32_t>>(6, -1)});
        damage(mesh, topology);
        mesh.topology = std::make_shared<const MeshTopology>(topology);
        return !isConsistent(mesh);
    };
    EXPECT_FALSE(broken([](MeshData&, MeshTopology&) {}));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) {
        m.points = std::make_shared<const std::vector<Vec3f>>(3);
    }));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) { m.points = nullptr; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.edges[0].end = 4; }));
    EXPECT_FALSE(broken([](MeshData& m, MeshTopology&) {
        m.edgeSmooth = std::make_shared<const EdgeFlags>(5, std::uint8_t{1});
    }));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) {
        m.edgeSmooth = std::make_shared<const EdgeFlags>(4, std::uint8_t{1});
    }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.corners[0] = 5; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.corners[0] = -6; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.corners[0] = 1; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.loopStart.back() = 5; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.loopStart[1] = 7; }));
    EXPECT_TRUE(broken([](MeshData&, MeshTopology& t) { t.faceLoop = {0, 1}; }));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) {
        m.uvSets[0].corners = std::make_shared<const std::vector<std::int32_t>>(6, 3);
    }));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) {
        m.uvSets[0].corners = std::make_shared<const std::vector<std::int32_t>>(5, 0);
    }));
    EXPECT_TRUE(broken([](MeshData& m, MeshTopology&) {
        m.uvSets[0].corners = std::make_shared<const std::vector<std::int32_t>>(6, -2);
    }));
    for (const std::vector<std::uint32_t>& faces :
         {std::vector<std::uint32_t>{2}, {1, 0}, {0, 0}}) {
        const auto list = std::make_shared<const std::vector<std::uint32_t>>(faces);
        EXPECT_TRUE(broken([&](MeshData& m, MeshTopology&) { m.invisibleFaces = list; }));
        EXPECT_TRUE(broken([&](MeshData& m, MeshTopology&) { m.groups.push_back({1, list}); }));
    }
    EXPECT_FALSE(isConsistent(MeshData{}));
}

/// A row of quads: points 0..n below, n+1..2n+1 above; edges below, above and between by turns.
Lists rowOfQuads(std::int32_t n)
{
    Lists lists;
    const auto addEdge = [&](std::int32_t start, std::int32_t end) {
        lists.edges.insert(lists.edges.end(), {start, end, 1});
    };
    for (std::int32_t i = 0; i <= n; ++i) {
        addEdge(i, n + 1 + i); // edge 3 i stands at point i
        if (i < n) {
            addEdge(i, i + 1);
            addEdge(n + 1 + i, n + 2 + i);
            const std::int32_t up = 3 * (i + 1);
            lists.corners.insert(lists.corners.end(),
                                 {3 * i + 1, up, -1 - (3 * i + 2), -1 - 3 * i});
            lists.loopSizes.push_back(4);
            lists.faceLoopCounts.push_back(1);
        }
    }
    return lists;
}

TEST(BuildTopology, ManyQuadsAreTakenAtOnceAndDamageIsFoundAnywhere)
{
    constexpr std::int32_t kFaces = 3000; // more than are looked at together
    const std::uint32_t points = 2 * (kFaces + 1);
    const Lists good = rowOfQuads(kFaces);
    const BuiltTopology built = build(good, points);
    EXPECT_TRUE(built.damage.isNone());
    EXPECT_EQ(built.topology.faceCount(), 3000U);
    EXPECT_EQ(built.topology.loopStart[2999], 4U * 2999);
    EXPECT_TRUE(built.edgeSmooth.empty());
    EXPECT_TRUE(isConsistent(meshFrom(built)));

    for (const std::size_t face : {0, 1023, 1024, 2999}) {
        Lists open = good;
        open.corners[4 * face + 1] = -1 - open.corners[4 * face + 1]; // down instead of up
        const BuiltTopology damaged = build(open, points);
        EXPECT_EQ(damaged.damage.badFaces, 1U) << face;
        EXPECT_EQ(damaged.topology.corners.size(), 4U * (kFaces - 1));
        EXPECT_TRUE(isConsistent(meshFrom(damaged)));

        Lists beyond = good;
        beyond.corners[4 * face] = 3 * kFaces + 1; // one more than there are edges
        EXPECT_EQ(build(beyond, points).damage.badFaces, 1U) << face;
        beyond.corners[4 * face] = std::numeric_limits<std::int32_t>::min();
        EXPECT_EQ(build(beyond, points).damage.badFaces, 1U) << face;
    }
    Lists badEdge = good;
    badEdge.edges[1] = static_cast<std::int32_t>(points); // of the first face alone
    const BuiltTopology lame = build(badEdge, points);
    EXPECT_EQ(lame.damage.badEdges, 1U);
    EXPECT_EQ(lame.damage.badFaces, 1U);
    EXPECT_EQ(lame.edgeSmooth[0], 0);
    EXPECT_EQ(lame.edgeSmooth[1], 1);
}

} // namespace
} // namespace host::geometry
