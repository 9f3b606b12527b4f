// Borders closed, merged and sewn; parts collapsed, taken off and added; triangles joined.
#include "host/geometry/mesh/edit/appendFace.h"
#include "host/geometry/mesh/edit/chipOffFaces.h"
#include "host/geometry/mesh/edit/closeBorders.h"
#include "host/geometry/mesh/edit/clusterVertices.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/joinEdges.h"
#include "host/geometry/mesh/edit/joinTriangles.h"
#include "host/geometry/mesh/edit/triangulateFaces.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <numbers>

namespace host::geometry::test {
namespace {

TEST(CloseBorders, anOpenCubeIsFilled)
{
    // Without its front 0 1 3 2 the cube's border runs over the edges 0-1 1-3 3-2 2-0 (0 1 2 3).
    // The filling begins with the lowest of the named edges.
    const MeshData whole = cube();
    const SharedMesh open = deleteFaces(whole, Numbers{0}, kCleanAll);
    ASSERT_NE(open, nullptr);
    const SharedMesh closed = closeBorders(*open, Numbers{1, 3});
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(loopsOf(*closed, 5), (std::vector<Loop>{{1, 3, 2, 0}}));
    EXPECT_EQ(edgesOf(*closed), edgesOf(whole));
    EXPECT_NEAR(sixVolumes(*closed), 6, 1e-6);
    EXPECT_EQ(eulerNumber(*closed), 2);
}

TEST(CloseBorders, eachHoleGetsAFace)
{
    const SharedMesh open = deleteFaces(cube(), Numbers{1, 3}, kCleanAll);
    ASSERT_NE(open, nullptr);
    Numbers all(12);
    for (std::uint32_t i = 0; i < 12; ++i) {
        all[i] = i;
    }
    const SharedMesh closed = closeBorders(*open, all);
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(closed->topology->faceCount(), 6u);
    EXPECT_NEAR(sixVolumes(*closed), 6, 1e-6);
    // edge 0-1 is of the hole below, edge 3-2 of the one above
    EXPECT_EQ(loopsOf(*closed, 4)[0].size(), 4u);
    EXPECT_EQ(outerLoops(*closeBorders(*open, Numbers{2})).back(), (Loop{2, 3, 5, 4}));
}

TEST(CloseBorders, innerAndUnknownEdgesFillNothing)
{
    const MeshData whole = cube();
    EXPECT_EQ(closeBorders(whole, Numbers{0, 5, 99})->topology->faceCount(), 6u);
}

TEST(CloseBorders, aCylinderOpenAtBothSidesKeepsItsNumbers)
{
    // A cylinder of 16 sides, with caps of triangles, of which 7 sides are taken away with their
    // triangles in two steps. By the layout of cylinders (rings 0..15 and 16..31, uprights 32..47,
    // spokes below 48..63 and above 64..79; faces 0..15, 16..31, 32..47) 43 edges are left, the
    // uprights of the gap being 16 and 24 and its spokes 25, 33, 34 and 42: a scene that was made
    // so names 24 and 42 to fill it, and 34 and 25 to divide the filling.
    constexpr std::uint32_t kSides = 16;
    std::vector<Vec3f> points;
    for (std::uint32_t ring = 0; ring < 2; ++ring) {
        for (std::uint32_t i = 0; i < kSides; ++i) {
            const double angle = 2 * std::numbers::pi * i / kSides;
            points.push_back({static_cast<float>(std::cos(angle)), static_cast<float>(ring),
                              static_cast<float>(-std::sin(angle))});
        }
    }
    points.push_back({0, 0, 0});
    points.push_back({0, 1, 0});
    Lists lists;
    const auto edge = [&](std::uint32_t a, std::uint32_t b) {
        lists.edges.insert(lists.edges.end(),
                           {static_cast<std::int32_t>(a), static_cast<std::int32_t>(b), 1});
    };
    const auto at = [](std::uint32_t i) { return i % kSides; };
    for (std::uint32_t i = 0; i < kSides; ++i) {
        edge(i, at(i + 1));
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        edge(16 + i, 16 + at(i + 1));
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        edge(i, 16 + i);
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        edge(32, i);
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        edge(16 + i, 33);
    }
    const auto face = [&](std::vector<std::int32_t> references) {
        lists.faceLoopCounts.push_back(1);
        lists.loopSizes.push_back(static_cast<std::uint32_t>(references.size()));
        lists.corners.insert(lists.corners.end(), references.begin(), references.end());
    };
    const auto there = [](std::uint32_t e) { return static_cast<std::int32_t>(e); };
    const auto back = [](std::uint32_t e) { return -static_cast<std::int32_t>(e) - 1; };
    for (std::uint32_t i = 0; i < kSides; ++i) {
        face({there(i), there(32 + at(i + 1)), back(16 + i), back(32 + i)});
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        face({back(i), back(48 + i), there(48 + at(i + 1))});
    }
    for (std::uint32_t i = 0; i < kSides; ++i) {
        face({there(16 + i), there(64 + at(i + 1)), back(64 + i)});
    }
    const MeshData cylinder = meshOfLists(points, lists);
    const SharedMesh lidded =
        deleteFaces(cylinder, Numbers{32, 33, 34, 35, 36, 37, 38, 47}, kCleanAll);
    ASSERT_NE(lidded, nullptr);
    EXPECT_EQ(lidded->topology->edges.size(), 73u);
    const SharedMesh open = deleteFaces(
        *lidded, Numbers{0, 1, 2, 3, 4, 5, 6, 15, 16, 17, 18, 19, 20, 21, 22, 31}, kCleanAll);
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->topology->edges.size(), 43u);
    const NumberLists corners = cornersOfEdges(*open->topology);
    Numbers borders;
    for (std::uint32_t e = 0; e < 43; ++e) {
        if (corners.of(e).size() == 1) {
            borders.push_back(e);
        }
    }
    EXPECT_EQ(borders, (Numbers{16, 24, 25, 33, 34, 42}));
    const SharedMesh closed = closeBorders(*open, Numbers{15, 24, 42});
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(closed->topology->faceCount(), 8u + 8 + 8 + 1);
    EXPECT_EQ(eulerNumber(*closed), 2);
    EXPECT_EQ(loopsOf(*closed, 24)[0].size(), 6u);
}

TEST(MergeEdges, twoBordersBecomeOneInnerEdge)
{
    // Squares with a gap: the right side of the first, 1-2 (number 1), and the left of the second,
    // 7-4 (number 7).
    const MeshData before = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {3, 0, 0}, {4, 0, 0}, {4, 1, 0}, {3, 1, 0}},
        {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    const auto merged = [&](EdgeMerging merging) { return mergeEdges(before, 1, 7, merging); };
    const SharedMesh between = merged(EdgeMerging::Between);
    ASSERT_NE(between, nullptr);
    EXPECT_EQ(outerLoops(*between), (std::vector<Loop>{{0, 1, 2, 3}, {1, 4, 5, 2}}));
    EXPECT_EQ(between->topology->edges.size(), 7u);
    EXPECT_EQ((*between->points)[1], (Vec3f{2, 0, 0}));
    EXPECT_EQ((*merged(EdgeMerging::AtFirst)->points)[2], (Vec3f{1, 1, 0}));
    EXPECT_EQ((*merged(EdgeMerging::AtSecond)->points)[2], (Vec3f{3, 1, 0}));
    EXPECT_EQ(mergeEdges(before, 1, 1, EdgeMerging::Between), nullptr);
    EXPECT_EQ(mergeEdges(before, 1, 8, EdgeMerging::Between), nullptr);
    EXPECT_EQ(mergeEdges(cube(), 0, 2, EdgeMerging::Between), nullptr); // inner ones
}

TEST(SewEdges, onlyEdgesWalkedInOppositeWaysAreSewn)
{
    // As above, side by side; with the second square turned over its left side is walked 4-7, as
    // the first walks 1-2.
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                    {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}};
    const MeshData alike = meshOf(points, {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    const MeshData turned = meshOf(points, {{{0, 1, 2, 3}}, {{4, 7, 6, 5}}});
    const Numbers all{0, 1, 2, 3, 4, 5, 6, 7};
    const auto vertices = [&](const MeshData& mesh, double distance) {
        return sewEdges(mesh, all, placesIn(mesh, {}), distance)->topology->vertexCount;
    };
    EXPECT_EQ(vertices(alike, 0), 6u);
    EXPECT_EQ(vertices(alike, 0.4), 6u);
    EXPECT_EQ(vertices(turned, 0), 8u);
}

TEST(CollapseEdges, anEdgeFallsIntoItsMiddle)
{
    // The edge 1-4 between two squares (number 1): both become triangles, 4 goes.
    const SharedMesh after = collapseEdges(grid(2, 1), Numbers{1});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 3}, {1, 2, 4}}));
    EXPECT_EQ((*after->points)[1], (Vec3f{1, 0.5F, 0}));
}

TEST(CollapseFaces, facesThatTouchFallIntoOnePoint)
{
    // The middle of three by three squares, 5 6 10 9, at (1.5, 1.5): the four faces at its sides
    // become triangles, those at its corners stay squares.
    const SharedMesh after = collapseFaces(grid(3, 3), Numbers{4});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 8u);
    EXPECT_EQ(after->topology->vertexCount, 13u);
    EXPECT_EQ((*after->points)[5], (Vec3f{1.5F, 1.5F, 0}));
    EXPECT_NEAR(totalArea(*after).z, 9, 1e-6);
    EXPECT_EQ(collapseFaces(cube(), Numbers{0, 1, 2, 3, 4, 5})->topology->faceCount(), 0u);
}

TEST(ChipOffFaces, theRestKeepsItsVertices)
{
    // The last of three squares, 2 3 7 6: vertices 2 and 6 stay with the second, the face gets 8
    // and 9; the edge between them (2-6) is new too, number 10. As the walk over its edges 2-3 3-7
    // 7-6 6-2 first meets them.
    ChipOff off;
    off.duplicates = false;
    const SharedMesh after = chipOffFaces(grid(3, 1), Numbers{2}, off);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 5, 4}, {1, 2, 6, 5}, {8, 3, 7, 9}}));
    EXPECT_EQ(after->topology->edges.size(), 11u);
    EXPECT_EQ(edgesOf(*after)[10], (std::pair<std::uint32_t, std::uint32_t>{8, 9}));
    EXPECT_EQ((*after->points)[9], (Vec3f{2, 1, 0}));
}

TEST(ChipOffFaces, allOfThemTogetherStayAsTheyAre)
{
    // A scene that does so goes on to name the same 21 vertices.
    ChipOff off;
    off.duplicates = false;
    const MeshData before = cube();
    const SharedMesh after = chipOffFaces(before, Numbers{0, 1, 2, 3, 4, 5}, off);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), outerLoops(before));
    EXPECT_EQ(edgesOf(*after), edgesOf(before));
}

TEST(ChipOffFaces, apartEachFaceHasItsOwn)
{
    ChipOff off;
    off.duplicates = false;
    off.isTogether = false;
    const SharedMesh after = chipOffFaces(cube(), Numbers{0, 1, 2, 3, 4, 5}, off);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->vertexCount, 24u);
    EXPECT_EQ(after->topology->edges.size(), 24u);
    EXPECT_EQ(outerLoops(*after)[0], (Loop{0, 1, 3, 2}));
    EXPECT_NEAR(sixVolumes(*after), 6, 1e-6);
}

TEST(ChipOffFaces, copiesComeLastAndAreMoved)
{
    // The front of the cube, moved by 2 along its normal, z.
    MeshData before = cube();
    addCornerUvs(before);
    ChipOff off;
    off.motion.localTranslate = {0, 0, 2};
    const SharedMesh after = chipOffFaces(before, Numbers{0}, off);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 7u);
    EXPECT_EQ(outerLoops(*after)[6], (Loop{8, 9, 10, 11}));
    EXPECT_EQ((*after->points)[8], (Vec3f{-.5F, -.5F, 2.5F}));
    EXPECT_EQ((*after->points)[0], (Vec3f{-.5F, -.5F, .5F}));
    EXPECT_EQ(after->topology->edges.size(), 16u);
    EXPECT_EQ(after->uvSets[0].points->size(), 28u);
}

TEST(ChipOffFaces, scaledAboutAPivotInTheSpace)
{
    ChipOff off;
    off.duplicates = false;
    off.motion.toSpace = translation({10, 0, 0});
    off.motion.pivot = {10, 0, 0};
    off.motion.scale = {2, 1, 1};
    off.motion.translate = {0, 0, 1};
    const SharedMesh after = chipOffFaces(grid(2, 1), Numbers{1}, off);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ((*after->points)[2], (Vec3f{4, 0, 1}));
    EXPECT_EQ((*after->points)[1], (Vec3f{1, 0, 0}));
    EXPECT_EQ((*after->points)[6], (Vec3f{2, 0, 1}));
}

FaceStep toVertex(std::uint32_t vertex)
{
    return {FaceStep::Kind::Vertex, vertex, {}};
}

FaceStep toPoint(const Vec3f& point)
{
    return {FaceStep::Kind::NewPoint, 0, point};
}

FaceStep along(std::uint32_t edge)
{
    return {FaceStep::Kind::Edge, edge, {}};
}

TEST(AppendFace, besideAnEdgeWithTwoNewPoints)
{
    // The right side of a square, 1-2 by its first corners (vertices 0 1 3 2): from 3 back to 1,
    // then two new points, 4 and 5; the new edges 1-4 4-5 5-3 are 4 5 6.
    MeshData before = grid(1, 1);
    addCornerUvs(before);
    before.currentUvSet = "map1";
    addGroup(before, 3, {0});
    const SharedMesh after = appendFace(
        before,
        std::vector<FaceStep>{toVertex(3), toVertex(1), toPoint({2, 0, 0}), toPoint({2, 1, 0})},
        FaceTexture::Unitized);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 3, 2}, {3, 1, 4, 5}}));
    EXPECT_EQ(edgesOf(*after), (Pairs{{0, 1}, {1, 3}, {2, 3}, {0, 2}, {1, 4}, {4, 5}, {3, 5}}));
    EXPECT_EQ(*after->groups[0].faces, (Numbers{0, 1}));
    EXPECT_EQ(*after->uvSets[0].corners, (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ((*after->uvSets[0].points)[6], (Vec2f{1, 1}));
}

TEST(AppendFace, betweenTwoBordersWithTwoNewEdges)
{
    // Two squares apart: along 1-2 (number 1) back from 2 to 1, then along 7-4 (number 7) from 4 to
    // 7; the edges 1-4 and 7-2 are new.
    const MeshData before = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {3, 0, 0}, {4, 0, 0}, {4, 1, 0}, {3, 1, 0}},
        {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    const SharedMesh after =
        appendFace(before, std::vector<FaceStep>{along(1), along(7)}, FaceTexture::Normalized);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after).back(), (Loop{2, 1, 4, 7}));
    EXPECT_EQ(after->topology->edges.size(), 10u);
    EXPECT_EQ(edgesOf(*after)[8], (std::pair<std::uint32_t, std::uint32_t>{1, 4}));
    EXPECT_NEAR(totalArea(*after).z, 4, 1e-6);
}

TEST(AppendFace, allBordersOfAHoleFillIt)
{
    const SharedMesh open = deleteFaces(cube(), Numbers{0}, kCleanAll);
    ASSERT_NE(open, nullptr);
    const SharedMesh closed = appendFace(
        *open, std::vector<FaceStep>{along(0), along(1), along(2), along(3)}, FaceTexture::None);
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(closed->topology->edges.size(), 12u);
    EXPECT_EQ(outerLoops(*closed).back(), (Loop{0, 1, 3, 2}));
    EXPECT_NEAR(sixVolumes(*closed), 6, 1e-6);
}

TEST(AppendFace, stepsThatDoNotExist)
{
    const MeshData before = grid(1, 1);
    const auto made = [&](const std::vector<FaceStep>& steps) {
        return appendFace(before, steps, FaceTexture::None);
    };
    EXPECT_EQ(made({toVertex(0), toVertex(1), toVertex(4)}), nullptr);
    EXPECT_EQ(made({along(0), along(4)}), nullptr);
    EXPECT_EQ(made({toVertex(0), toVertex(1)}), nullptr);
    EXPECT_EQ(made({along(0)}), nullptr);
    EXPECT_EQ(made({}), nullptr);
}

TEST(JoinTriangles, aTriangulatedSheetIsSquaresAgain)
{
    // All cuts are shorter than no side and the only pairs without a bad corner.
    const MeshData squares = meshOfLists(*grid(3, 2).points, listsOf({{{0, 1, 5, 4}},
                                                                      {{1, 2, 6, 5}},
                                                                      {{2, 3, 7, 6}},
                                                                      {{4, 5, 9, 8}},
                                                                      {{5, 6, 10, 9}},
                                                                      {{6, 7, 11, 10}}},
                                                                     1));
    const SharedMesh cut = triangulateFaces(squares, Numbers{0, 1, 2, 3, 4, 5});
    ASSERT_NE(cut, nullptr);
    Numbers all(12);
    for (std::uint32_t i = 0; i < 12; ++i) {
        all[i] = i;
    }
    const JoinedTriangles joined = joinTriangles(*cut, all, {.angle = 0.1});
    ASSERT_NE(joined.mesh, nullptr);
    EXPECT_EQ(edgesOf(*joined.mesh), edgesOf(squares));
    EXPECT_EQ(outerLoops(*joined.mesh).size(), 6u);
    EXPECT_FALSE(joined.isOnlyWay);
}

TEST(JoinTriangles, rulesKeepPairsApart)
{
    MeshData two =
        meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{{0, 1, 2}}, {{0, 2, 3}}}, 1);
    const auto faces = [&](const QuadRules& rules) {
        return joinTriangles(two, Numbers{0, 1}, rules).mesh->topology->faceCount();
    };
    EXPECT_EQ(faces({.angle = 0.1}), 1u);
    EXPECT_TRUE(joinTriangles(two, Numbers{0, 1}, {.angle = 0.1}).isOnlyWay);
    EXPECT_EQ(joinTriangles(two, Numbers{1}, {.angle = 0.1}).mesh->topology->faceCount(), 2u);
    addGroup(two, 5, {1});
    EXPECT_EQ(faces({.angle = 0.1}), 2u);
    EXPECT_EQ(faces({.angle = 0.1, .keepsGroupBorders = false}), 1u);
    two.groups.clear();
    addCornerUvs(two);
    EXPECT_EQ(faces({.angle = 0.1}), 2u);
    EXPECT_EQ(faces({.angle = 0.1, .keepsTextureBorders = false}), 1u);
    const MeshData bent =
        meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {{{0, 1, 2}}, {{0, 2, 3}}}, 1);
    EXPECT_EQ(joinTriangles(bent, Numbers{0, 1}, {.angle = 0.1}).mesh->topology->faceCount(), 2u);
    const MeshData hard =
        meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{{0, 1, 2}}, {{0, 2, 3}}}, 0);
    EXPECT_EQ(joinTriangles(hard, Numbers{0, 1}, {.angle = 0.1}).mesh->topology->faceCount(), 2u);
}

} // namespace
} // namespace host::geometry::test
