// Smoothing: points by the masks, numbers as the cube and the cylinder have them.
#include "host/geometry/mesh/shape/smoothMesh.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/smoothFaces.h"
#include "host/math/angle.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <set>

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;
using References = std::vector<std::int32_t>;
using test::meshOf;
using test::meshOfLists;

/// The cube as its creator makes it, with all edges hard and its cross of texture coordinates.
MeshData cube()
{
    test::Lists lists;
    lists.edges = {0, 1, 0, 2, 3, 0, 4, 5, 0, 6, 7, 0, 0, 2, 0, 1, 3, 0,
                   2, 4, 0, 3, 5, 0, 4, 6, 0, 5, 7, 0, 6, 0, 0, 7, 1, 0};
    lists.corners = {0, 5,  -2, -5,  1,   7,   -3, -7, 2,  9, -4, -9,
                     3, 11, -1, -11, -12, -10, -8, -6, 10, 4, 6,  8};
    lists.loopSizes.assign(6, 4);
    lists.faceLoopCounts.assign(6, 1);
    MeshData mesh = meshOfLists(test::kCubePoints, lists);
    const std::vector<Vec2f> uvs{{.375F, 0},   {.625F, 0},   {.375F, .25F}, {.625F, .25F},
                                 {.375F, .5F}, {.625F, .5F}, {.375F, .75F}, {.625F, .75F},
                                 {.375F, 1},   {.625F, 1},   {.875F, 0},    {.875F, .25F},
                                 {.125F, 0},   {.125F, .25F}};
    mesh.uvSets.push_back(
        {"map1", std::make_shared<const std::vector<Vec2f>>(uvs),
         std::make_shared<const References>(References{0, 1, 3, 2, 2, 3,  5,  4, 4,  5, 7, 6,
                                                       6, 7, 9, 8, 1, 10, 11, 3, 12, 0, 2, 13})});
    return mesh;
}

void expectNear(const Vec3f& point, const Vec3d& expected, const std::string& what)
{
    EXPECT_NEAR(point.x, expected.x, 2e-7) << what;
    EXPECT_NEAR(point.y, expected.y, 2e-7) << what;
    EXPECT_NEAR(point.z, expected.z, 2e-7) << what;
}

References cornersOf(const MeshData& mesh, std::uint32_t face)
{
    const auto& corners = mesh.topology->corners;
    return {corners.begin() + mesh.topology->firstCorner(face),
            corners.begin() + mesh.topology->endCorner(face)};
}

References uvsOf(const MeshData& mesh, std::uint32_t face)
{
    const auto& ids = *mesh.uvSets[0].corners;
    return {ids.begin() + mesh.topology->firstCorner(face),
            ids.begin() + mesh.topology->endCorner(face)};
}

Numbers loopOf(const MeshData& mesh, std::uint32_t face)
{
    Numbers vertices;
    for (std::uint32_t corner = mesh.topology->firstCorner(face);
         corner < mesh.topology->endCorner(face); ++corner) {
        vertices.push_back(mesh.topology->cornerVertex(corner));
    }
    return vertices;
}

std::pair<std::uint32_t, std::uint32_t> edge(const MeshData& mesh, std::size_t number)
{
    return {mesh.topology->edges[number].start, mesh.topology->edges[number].end};
}

TEST(SmoothMesh, PointsOfACube)
{
    // With three faces and edges a corner p has p/3, and a ninth of its neighbours' sum p and of
    // its faces' points' sum p: 5/9 p. Middles of edges: half a face's distance and a quarter.
    const auto smooth = smoothMesh(cube(), 1, {});
    ASSERT_EQ(smooth->topology->vertexCount, 26U);
    for (std::uint32_t vertex = 0; vertex < 8; ++vertex) {
        expectNear((*smooth->points)[vertex], toDouble(test::kCubePoints[vertex]) * (5.0 / 9),
                   std::to_string(vertex));
    }
    // The edges in the order in which the faces meet them: 0 5 1 4, 7 2 6, 9 3 8, 11 10; the points
    // for the last six come first.
    const std::vector<Vec3d> middles{{-.375, .375, 0},  {.375, 0, -.375}, {0, -.375, -.375},
                                     {-.375, 0, -.375}, {.375, -.375, 0}, {-.375, -.375, 0},
                                     {0, -.375, .375},  {.375, 0, .375},  {0, .375, .375},
                                     {-.375, 0, .375},  {.375, .375, 0},  {0, .375, -.375}};
    const std::vector<Vec3d> faces{{0, 0, .5},  {0, .5, 0}, {0, 0, -.5},
                                   {0, -.5, 0}, {.5, 0, 0}, {-.5, 0, 0}};
    for (std::size_t i = 0; i < 12; ++i) {
        expectNear((*smooth->points)[8 + i], middles[i], std::to_string(8 + i));
    }
    for (std::size_t i = 0; i < 6; ++i) {
        expectNear((*smooth->points)[20 + i], faces[i], std::to_string(20 + i));
    }
}

TEST(SmoothMesh, EdgesAndFacesOfACube)
{
    const auto smooth = smoothMesh(cube(), 1, {});
    ASSERT_EQ(smooth->topology->edges.size(), 48U);
    ASSERT_EQ(smooth->topology->faceCount(), 24U);
    // Halves of each edge in turn, from its start.
    EXPECT_EQ(edge(*smooth, 0), std::pair(0U, 14U));
    EXPECT_EQ(edge(*smooth, 1), std::pair(14U, 1U));
    EXPECT_EQ(edge(*smooth, 20), std::pair(6U, 13U));
    EXPECT_EQ(edge(*smooth, 21), std::pair(13U, 0U));
    // Then as the first walk meets them.
    EXPECT_EQ(edge(*smooth, 24), std::pair(14U, 20U));
    EXPECT_EQ(edge(*smooth, 25), std::pair(20U, 17U));
    EXPECT_EQ(edge(*smooth, 26), std::pair(15U, 20U));
    EXPECT_EQ(edge(*smooth, 27), std::pair(16U, 20U));
    EXPECT_EQ(edge(*smooth, 47), std::pair(8U, 25U));
    // The former corner keeps its place in the loop.
    EXPECT_EQ(cornersOf(*smooth, 0), (References{0, 24, 25, -9}));
    EXPECT_EQ(cornersOf(*smooth, 1), (References{1, 10, 26, -25}));
    EXPECT_EQ(cornersOf(*smooth, 2), (References{-27, 11, -4, 27}));
    EXPECT_EQ(cornersOf(*smooth, 3), (References{-26, -28, -3, -10}));
    EXPECT_EQ(cornersOf(*smooth, 20), (References{20, 44, 45, 17}));
    EXPECT_EQ(cornersOf(*smooth, 23), (References{-46, -48, 13, 16}));
    const auto& flags = smooth->edgeFlags();
    EXPECT_EQ(std::count(flags.begin(), flags.end(), 1), 48);
}

TEST(SmoothMesh, TextureCoordinatesOfACube)
{
    const auto smooth = smoothMesh(cube(), 1, {});
    const auto& uvs = *smooth->uvSets[0].points;
    ASSERT_EQ(uvs.size(), 39U);
    // By vertices: 0 has two, on the front and where the cross closes below; 2 has one.
    EXPECT_EQ(uvs[0], (Vec2f{.375F, 0}));
    EXPECT_EQ(uvs[1], (Vec2f{.375F, 1}));
    EXPECT_EQ(uvs[4], (Vec2f{.375F, .25F}));
    EXPECT_EQ(uvs[5], (Vec2f{.625F, .25F}));
    // Then six of faces, then of edges; edge 0 has two.
    EXPECT_EQ(uvs[14], (Vec2f{.5F, .125F}));
    EXPECT_EQ(uvs[20], (Vec2f{.5F, 0}));
    EXPECT_EQ(uvs[21], (Vec2f{.5F, 1}));
    EXPECT_EQ(uvs[38], (Vec2f{.25F, 0}));
    EXPECT_EQ(uvsOf(*smooth, 0), (References{0, 20, 14, 24}));
    EXPECT_EQ(uvsOf(*smooth, 2), (References{14, 22, 5, 23}));
    EXPECT_EQ(uvsOf(*smooth, 23), (References{34, 19, 29, 7}));
}

TEST(SmoothMesh, ASecondStepAddsItsPointsInTurn)
{
    const auto smooth = smoothMesh(cube(), 2, {});
    ASSERT_EQ(smooth->topology->vertexCount, 98U);
    // 8 middles of the first step's faces are corners of the second: the first face's point is the
    // mean of (-5 -5 5)/18, (0 -3 3)/8, (0 0 1)/2 and (-3 0 3)/8.
    const double side = (5.0 / 18 + 3.0 / 8) / 4;
    const double front = (5.0 / 18 + 3.0 / 8 + 1.0 / 2 + 3.0 / 8) / 4;
    expectNear((*smooth->points)[26], {-side, -side, front}, "first face");
    // From the middle of edge 0 to that of the front: two points and the two faces beside them.
    expectNear((*smooth->points)[50], {0, (-3.0 / 8 - 2 * side) / 4, (7.0 / 8 + 2 * front) / 4},
               "first spoke");
    // Edge 0 falls into 0-74-14-75-1, edge 1 (walked from its end first) into 2-79-16-78-3.
    EXPECT_EQ(edge(*smooth, 0), std::pair(0U, 74U));
    EXPECT_EQ(edge(*smooth, 1), std::pair(74U, 14U));
    EXPECT_EQ(edge(*smooth, 2), std::pair(14U, 75U));
    EXPECT_EQ(edge(*smooth, 3), std::pair(75U, 1U));
    EXPECT_EQ(edge(*smooth, 4), std::pair(2U, 79U));
    EXPECT_EQ(edge(*smooth, 7), std::pair(78U, 3U));
    EXPECT_EQ(edge(*smooth, 48), std::pair(74U, 26U));
    EXPECT_EQ(edge(*smooth, 50), std::pair(14U, 50U));
    EXPECT_EQ(edge(*smooth, 53), std::pair(20U, 53U));
    EXPECT_EQ(cornersOf(*smooth, 2), (References{-52, 52, 53, 54}));
    EXPECT_EQ(cornersOf(*smooth, 95), (References{-190, -192, 27, 32}));
    EXPECT_EQ(uvsOf(*smooth, 0), (References{0, 87, 39, 96}));
}

/// A closed cylinder of n sides with triangles about the middles of its ends: rings 0..n-1 and
/// n..2n-1, middles 2n and 2n + 1.
MeshData cylinder(std::uint32_t n)
{
    std::vector<Vec3f> points;
    for (const float y : {-1.0F, 1.0F}) {
        for (std::uint32_t i = 0; i < n; ++i) {
            const SineCosine turn = sineCosine(2 * std::numbers::pi * i / n);
            points.push_back({static_cast<float>(turn.cosine), y, static_cast<float>(-turn.sine)});
        }
    }
    points.push_back({0, -1, 0});
    points.push_back({0, 1, 0});
    std::vector<std::vector<test::Loop>> faces;
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::uint32_t next = (i + 1) % n;
        faces.push_back({{i, next, n + next, n + i}});
    }
    for (std::uint32_t i = 0; i < n; ++i) {
        faces.push_back({{(i + 1) % n, i, 2 * n}});
    }
    for (std::uint32_t i = 0; i < n; ++i) {
        faces.push_back({{n + i, n + (i + 1) % n, 2 * n + 1}});
    }
    return meshOf(points, faces, 1);
}

TEST(SmoothMesh, FacesOfOtherThanFourCornersBeginAtTheFormerCorner)
{
    // 42 vertices, 60 faces, 100 edges: the points for edges are 42..141, the first forty that a
    // walk meets last. The first cap triangle is 1 0 40 in faces 80..82, its middle 162.
    const auto smooth = smoothMesh(cylinder(20), 1, {});
    ASSERT_EQ(smooth->topology->vertexCount, 202U);
    EXPECT_EQ(loopOf(*smooth, 0), (Numbers{0, 102, 142, 105}));
    EXPECT_EQ(loopOf(*smooth, 80), (Numbers{1, 102, 162, 63}));
    EXPECT_EQ(loopOf(*smooth, 81), (Numbers{0, 62, 162, 102}));
    EXPECT_EQ(loopOf(*smooth, 82), (Numbers{40, 63, 162, 62}));
}

TEST(SmoothMesh, TextureCoordinatesInsideMoveAndBordersStay)
{
    // A fan of 20 triangles: the middle has 18/20 of itself, and 20/400 of the mean of the ring and
    // of the mean of the faces.
    const std::uint32_t n = 20;
    std::vector<Vec3f> points;
    std::vector<Vec2f> uvs;
    std::vector<std::vector<test::Loop>> faces;
    References ids;
    for (std::uint32_t i = 0; i < n; ++i) {
        const SineCosine turn = sineCosine(2 * std::numbers::pi * i / n);
        points.push_back({static_cast<float>(turn.cosine), static_cast<float>(turn.sine), 0});
        uvs.push_back({static_cast<float>(.5 + turn.cosine * .15625),
                       static_cast<float>(.15625 + turn.sine * .15625)});
        faces.push_back({{i, (i + 1) % n, n}});
        ids.insert(ids.end(), {static_cast<std::int32_t>(i), static_cast<std::int32_t>((i + 1) % n),
                               static_cast<std::int32_t>(n)});
    }
    points.push_back({0, 0, 0});
    uvs.push_back({.5F, .15F});
    MeshData mesh = meshOf(points, faces, 1);
    mesh.uvSets.push_back({"map1", std::make_shared<const std::vector<Vec2f>>(uvs),
                           std::make_shared<const References>(ids)});
    const auto after = [&mesh](UvRule rule, std::size_t id) {
        SmoothingRules rules;
        rules.uvs = rule;
        return (*smoothMesh(mesh, 1, rules)->uvSets[0].points)[id];
    };
    const double expected = .9 * .15 + .05 * .15625 + .05 * (.15 + 2 * .15625) / 3;
    EXPECT_NEAR(after(UvRule::FixedBorders, n).y, expected, 1e-7); // 0.15052083
    EXPECT_EQ(after(UvRule::FixedBorders, 3), uvs[3]);
    EXPECT_EQ(after(UvRule::Linear, n), uvs[n]);
    EXPECT_NEAR(after(UvRule::Edges, 0).x, uvs[0].x * .75 + (uvs[1].x + uvs[19].x) * .125, 1e-7);
}

TEST(SmoothMesh, Tetrahedron)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const auto smooth =
        smoothMesh(meshOf(points, {{{0, 2, 1}}, {{0, 1, 3}}, {{1, 2, 3}}, {{2, 0, 3}}}), 1, {});
    EXPECT_EQ(smooth->topology->vertexCount, 4U + 6U + 4U);
    EXPECT_EQ(smooth->topology->edges.size(), 24U);
    EXPECT_EQ(smooth->topology->faceCount(), 12U);
    // The origin: neighbours sum to (1 1 1), its faces' points to (2/3 2/3 2/3); a ninth of both.
    const double moved = (1 + 2.0 / 3) / 9;
    expectNear((*smooth->points)[0], {moved, moved, moved}, "origin");
    // The edge 0-2 is met first: half (0 1 0), and its faces' points (1 1 0)/3 and (0 1 1)/3.
    const std::size_t last = smooth->topology->edges[0].end;
    expectNear((*smooth->points)[last], {1.0 / 12, (1 + 2.0 / 3) / 4, 1.0 / 12}, "edge 0-2");
}

/// A square of two by two faces; the vertex in the middle of its near side is lifted.
MeshData sheet()
{
    std::vector<Vec3f> points;
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            points.push_back({static_cast<float>(x), static_cast<float>(y), 0});
        }
    }
    points[1].z = 1;
    return meshOf(points, {{{0, 1, 4, 3}}, {{1, 2, 5, 4}}, {{3, 4, 7, 6}}, {{4, 5, 8, 7}}}, 1);
}

TEST(SmoothMesh, TrianglesCanWeighMore)
{
    // 47 hundredths of each face's point and three of each end instead of a quarter of all four.
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    SmoothingRules rules;
    rules.hasSmoothTriangles = true;
    const auto smooth =
        smoothMesh(meshOf(points, {{{0, 2, 1}}, {{0, 1, 3}}, {{1, 2, 3}}, {{2, 0, 3}}}), 1, rules);
    const std::size_t middle = smooth->topology->edges[0].end; // of 0-2
    expectNear((*smooth->points)[middle], {.47 / 3, .03 + .47 * 2 / 3, .47 / 3}, "edge 0-2");
}

TEST(SmoothMesh, BordersByTheirRule)
{
    const auto pointAfter = [](BorderRule rule, std::size_t vertex) {
        SmoothingRules rules;
        rules.border = rule;
        return (*smoothMesh(sheet(), 1, rules)->points)[vertex];
    };
    expectNear(pointAfter(BorderRule::Fixed, 1), {1, 0, 1}, "fixed");
    expectNear(pointAfter(BorderRule::EdgesAndCorners, 1), {1, 0, .75}, "curve");
    expectNear(pointAfter(BorderRule::EdgesAndCorners, 0), {0, 0, 0}, "corner");
    expectNear(pointAfter(BorderRule::Edges, 0), {.125, .125, .125}, "rounded corner");
    // Inside: half of itself, and a sixteenth of its neighbours and of its faces' points.
    expectNear(pointAfter(BorderRule::EdgesAndCorners, 4), {1, 1, 1.0 / 16 + 2 * .25 / 16},
               "inside");
}

MeshData creasedCube(float sharpness)
{
    MeshData mesh = cube();
    // The edges round the top: 1 7 2 6.
    mesh.creases = std::make_shared<const MeshCreases>(
        MeshCreases{{1, 2, 6, 7}, std::vector<float>(4, sharpness), {}, {}});
    return mesh;
}

TEST(SmoothMesh, CreasesStaySharpAsLongAsTheySay)
{
    // A corner of two sharp edges: three quarters, and an eighth of their ends.
    const Vec3d sharp{.375, .5, .375};
    const Vec3d round{5.0 / 18, 5.0 / 18, 5.0 / 18};
    const auto corner = [](float sharpness, std::uint32_t steps) {
        return (*smoothMesh(creasedCube(sharpness), steps, {})->points)[3];
    };
    expectNear(corner(10, 1), sharp, "infinitely sharp");
    expectNear(corner(2, 1), sharp, "sharp for two steps");
    expectNear(corner(.5F, 1), (sharp + round) * .5, "half sharp");
    expectNear(corner(0, 1), round, "not sharp");
    // In a further step the curve goes on: its neighbours are the middles (0 .5 .5), (.5 .5 0).
    expectNear(corner(10, 2), {.375 * .75 + .5 * .125, .5, .375 * .75 + .5 * .125}, "twice");
    EXPECT_LT(corner(1, 2).y, .5F);
    EXPECT_EQ(smoothMesh(creasedCube(2), 1, {})->creases, nullptr);
}

TEST(SmoothMesh, SharpVerticesStay)
{
    MeshData mesh = cube();
    mesh.creases = std::make_shared<const MeshCreases>(MeshCreases{{}, {}, {3, 5}, {10, .25F}});
    const auto smooth = smoothMesh(mesh, 1, {});
    expectNear((*smooth->points)[3], {.5, .5, .5}, "sharp");
    const double blended = 5.0 / 18 + .25 * (.5 - 5.0 / 18);
    expectNear((*smooth->points)[5], {blended, blended, -blended}, "a quarter");
}

TEST(SmoothMesh, HardEdgesByTheirRules)
{
    SmoothingRules rules;
    rules.keepsHardEdges = true;
    rules.propagatesHardEdges = true;
    const auto smooth = smoothMesh(cube(), 1, rules);
    expectNear((*smooth->points)[3], {.5, .5, .5}, "vertex of hard edges");
    expectNear((*smooth->points)[14], {0, -.5, .5}, "middle of a hard edge");
    const auto& flags = smooth->edgeFlags();
    EXPECT_EQ(std::count(flags.begin(), flags.begin() + 24, 0), 24);
    EXPECT_EQ(std::count(flags.begin() + 24, flags.end(), 1), 24);
}

TEST(SmoothMesh, ContinuityBlendsWithPlainDivision)
{
    SmoothingRules rules;
    rules.continuity = 0;
    const auto plain = smoothMesh(cube(), 1, rules);
    expectNear((*plain->points)[3], {.5, .5, .5}, "plain");
    expectNear((*plain->points)[14], {0, -.5, .5}, "plain middle");
    rules.continuity = .5;
    const auto half = smoothMesh(cube(), 1, rules);
    expectNear((*half->points)[14], {0, -.4375, .4375}, "half way");
}

TEST(SmoothMesh, GroupsAndInvisibleFacesAreCarried)
{
    MeshData mesh = cylinder(4); // faces of four, then triangles
    mesh.groups.push_back({7, std::make_shared<const Numbers>(Numbers{1, 4})});
    mesh.invisibleFaces = std::make_shared<const Numbers>(Numbers{11});
    mesh.pointGroups.push_back({3, std::make_shared<const Numbers>(Numbers{0, 9})});
    const auto once = smoothMesh(mesh, 1, {});
    EXPECT_EQ(*once->groups[0].faces, (Numbers{4, 5, 6, 7, 16, 17, 18}));
    EXPECT_EQ(*once->invisibleFaces, (Numbers{37, 38, 39}));
    EXPECT_EQ(*once->pointGroups[0].points, (Numbers{0, 9})); // which keep their numbers
    const auto twice = smoothMesh(mesh, 2, {});
    EXPECT_EQ(twice->groups[0].faces->size(), 28U);
    EXPECT_EQ(twice->groups[0].faces->front(), 16U);
}

TEST(SmoothMesh, LimitsAndFacesWithHoles)
{
    EXPECT_EQ(possibleDivisions(cube(), 3), 3U);
    EXPECT_EQ(possibleDivisions(cube(), 200), kMostDivisions); // 24 * 4^7 faces are few enough
    EXPECT_EQ(smoothMesh(cube(), 9, {}), nullptr);
    const MeshData holed = meshOf(
        {{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0}, {1, 1, 0}, {1, 2, 0}, {2, 2, 0}, {2, 1, 0}},
        {{{0, 1, 2, 3}, {4, 5, 6, 7}}});
    EXPECT_EQ(smoothMesh(holed, 1, {}), nullptr);
}

/// A torus of m by n faces with random points, some faces missing.
MeshData randomTorus(std::mt19937& random, std::uint32_t m, std::uint32_t n)
{
    std::uniform_real_distribution<float> place(-1, 1);
    std::vector<Vec3f> points(std::size_t{m} * n);
    for (Vec3f& point : points) {
        point = {place(random), place(random), place(random)};
    }
    std::vector<std::vector<test::Loop>> faces;
    for (std::uint32_t i = 0; i < m; ++i) {
        for (std::uint32_t j = 0; j < n; ++j) {
            const std::uint32_t right = (i + 1) % m;
            const std::uint32_t up = (j + 1) % n;
            const test::Loop quad{i * n + j, right * n + j, right * n + up, i * n + up};
            const auto kind = random() % 8;
            if (kind == 0) {
                faces.push_back({{quad[0], quad[1], quad[2]}});
                faces.push_back({{quad[0], quad[2], quad[3]}});
            } else if (kind > 1) {
                faces.push_back({quad});
            }
        }
    }
    return meshOf(points, faces, 1);
}

std::int64_t eulerNumber(const MeshTopology& topology)
{
    std::set<std::uint32_t> used;
    for (std::uint32_t corner = 0; corner < topology.corners.size(); ++corner) {
        used.insert(topology.cornerVertex(corner));
    }
    return static_cast<std::int64_t>(used.size()) -
           static_cast<std::int64_t>(topology.edges.size()) + topology.faceCount();
}

std::size_t mostFacesOfAnEdge(const MeshTopology& topology)
{
    const NumberLists corners = cornersOfEdges(topology);
    std::size_t most = 0;
    for (std::uint32_t number = 0; number < topology.edges.size(); ++number) {
        most = std::max(most, corners.of(number).size());
    }
    return most;
}

TEST(SmoothMesh, KeepsWhatShapesHave)
{
    std::mt19937 random(5);
    for (int round = 0; round < 30; ++round) {
        std::uniform_int_distribution<std::uint32_t> size(3, 6);
        const std::uint32_t around = size(random);
        const MeshData mesh = randomTorus(random, around, size(random));
        SmoothingRules rules;
        rules.border = static_cast<BorderRule>(random() % 3);
        Numbers some;
        for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
            if (random() % 2 == 0) {
                some.push_back(face);
            }
        }
        for (const auto& smooth : {smoothMesh(mesh, 2, rules), smoothFaces(mesh, some, 2, rules)}) {
            ASSERT_NE(smooth, nullptr);
            EXPECT_TRUE(isConsistent(*smooth));
            EXPECT_EQ(eulerNumber(*smooth->topology), eulerNumber(*mesh.topology));
            EXPECT_LE(mostFacesOfAnEdge(*smooth->topology), 2U);
            // All masks have positive parts that sum to one.
            for (const Vec3f& point : *smooth->points) {
                EXPECT_LE(std::fabs(point.x), 1.00001F);
                EXPECT_LE(std::fabs(point.y), 1.00001F);
                EXPECT_LE(std::fabs(point.z), 1.00001F);
            }
        }
    }
}

/// A flat grid of n by n faces.
MeshData grid(std::uint32_t n)
{
    std::vector<Vec3f> points;
    std::vector<std::vector<test::Loop>> faces;
    for (std::uint32_t y = 0; y <= n; ++y) {
        for (std::uint32_t x = 0; x <= n; ++x) {
            points.push_back({static_cast<float>(x), static_cast<float>(y), 0});
            const std::uint32_t corner = y * (n + 1) + x;
            if (x < n && y < n) {
                faces.push_back({{corner, corner + 1, corner + n + 2, corner + n + 1}});
            }
        }
    }
    return meshOf(points, faces, 1);
}

TEST(SmoothFaces, NumbersOfABlockInAGrid)
{
    // Faces 5 6 9 10 of four by four cover 1..3 in both directions; after two steps their points
    // lie on rings about (2, 2), a quarter apart. Which ring each new vertex is on was told by
    // vertices that an artist moved ring by ring after such a smoothing.
    const Numbers rings{2, 0, 2, 2, 0, 2, 0, 0, 2, 2, 2, 0, 0, 2, 0, 0, 1, 0, 0, 1, 1, 1, 1, 0,
                        1, 2, 1, 0, 1, 2, 1, 3, 3, 3, 2, 2, 1, 0, 2, 3, 3, 3, 2, 1, 0, 1, 0, 0,
                        1, 1, 0, 1, 2, 3, 3, 2, 1, 1, 0, 1, 1, 0, 0, 1, 0, 1, 1, 0, 0, 1, 1, 0};
    const auto smooth = smoothFaces(grid(4), Numbers{5, 6, 9, 10}, 2, {});
    ASSERT_EQ(smooth->topology->vertexCount, 25U + rings.size());
    ASSERT_EQ(smooth->topology->faceCount(), 16U + 60U);
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const Vec3f& point = (*smooth->points)[25 + i];
        const float away = std::max(std::fabs(point.x - 2), std::fabs(point.y - 2));
        EXPECT_EQ(static_cast<std::uint32_t>((1 - away) * 4 + .5F), rings[i]) << i;
    }
}

TEST(SmoothFaces, OthersKeepTheirNumbersAndGetTheVerticesBesideThem)
{
    // The middle face of three by three: vertices 5 6 10 9; its middle is 16, then its edges'.
    const auto smooth = smoothFaces(grid(3), Numbers{4}, 1, {});
    EXPECT_EQ(loopOf(*smooth, 0), (Numbers{0, 1, 5, 4}));
    EXPECT_EQ(loopOf(*smooth, 4), (Numbers{20, 5, 17, 16}));
    EXPECT_EQ(loopOf(*smooth, 9), (Numbers{17, 6, 18, 16}));
    EXPECT_EQ(loopOf(*smooth, 10), (Numbers{18, 10, 19, 16}));
    EXPECT_EQ(loopOf(*smooth, 11), (Numbers{19, 9, 20, 16}));
    EXPECT_EQ(loopOf(*smooth, 1), (Numbers{1, 2, 6, 17, 5}));
    // Each cut edge gives its second half in turn, then the middles are joined to the face's.
    const std::size_t before = grid(3).topology->edges.size();
    EXPECT_EQ(edge(*smooth, before), std::pair(17U, 5U));
    EXPECT_EQ(edge(*smooth, before + 4), std::pair(17U, 16U));
    EXPECT_EQ(edge(*smooth, before + 7), std::pair(20U, 16U));
}

TEST(SmoothFaces, TheirBorderStaysUnlessItIsToMove)
{
    MeshData mesh = grid(4);
    auto points = *mesh.points;
    points[6].z = 1; // a corner of the block
    points[7].z = 1; // beside it, on the block's border
    mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
    const Numbers block{5, 6, 9, 10};
    SmoothingRules rules;
    EXPECT_EQ((*smoothFaces(mesh, block, 1, rules)->points)[7].z, 1);
    rules.isSelectionBorderFixed = false;
    // 3/4 of itself and 1/8 of 6 and 8.
    EXPECT_FLOAT_EQ((*smoothFaces(mesh, block, 1, rules)->points)[7].z, .875F);
}

} // namespace
} // namespace host::geometry
