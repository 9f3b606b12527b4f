// Rings and lines of cuts, divided faces and edges.
#include "host/geometry/mesh/edit/divideEdges.h"
#include "host/geometry/mesh/edit/splitFaces.h"
#include "host/geometry/mesh/edit/splitRing.h"
#include "host/geometry/mesh/edit/subdivideFaces.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <chrono>
#include <cmath>
#include <numeric>

namespace host::geometry::test {
namespace {

/// A number from 1 on.
std::uint32_t upTo(std::uint32_t most, std::mt19937& random)
{
    return static_cast<std::uint32_t>(1 + random() % most);
}

SharedMesh solidCube()
{
    return makeCube({}, {});
}

Vec3f pointOf(const SharedMesh& mesh, std::uint32_t vertex)
{
    return (*mesh->points)[vertex];
}

Pairs edgesFrom(const SharedMesh& mesh, std::ptrdiff_t first)
{
    const Pairs edges = edgesOf(*mesh);
    return {edges.begin() + first, edges.end()};
}

/// A point of a line on an edge.
SplitPoint on(std::uint32_t edge, double part)
{
    return {edge, part, {}};
}

RingSplitting at(double weight, std::uint32_t root)
{
    RingSplitting splitting;
    splitting.weight = weight;
    splitting.rootEdge = root;
    return splitting;
}

/// Round the upright edges of a cube, from edge 5 (1 up to 3) through the front on its left to edge
/// 4 (0 to 2), then 8 (4 down to 6) and 9 (5 to 7).
TEST(SplitRing, roundACube)
{
    const SharedMesh mesh = splitRing(*solidCube(), Numbers{4, 5, 8, 9}, at(.25, 5));
    ASSERT_NE(mesh, nullptr);
    for (std::uint32_t vertex = 8; vertex < 12; ++vertex) {
        EXPECT_EQ(pointOf(mesh, vertex).y, -.25F); // from the side where edge 5 starts
    }
    const Pairs expected{{3, 8}, {2, 9}, {8, 9}, {6, 10}, {9, 10}, {7, 11}, {10, 11}, {8, 11}};
    EXPECT_EQ(edgesFrom(mesh, 12), expected);
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{8, 9, 0, 1})); // below, on the left of the cut
    EXPECT_EQ(loopsOf(*mesh, 6).front(), (Loop{9, 8, 3, 2}));
    EXPECT_EQ(loopsOf(*mesh, 9).front(), (Loop{8, 11, 5, 3})); // the right side comes last
    EXPECT_EQ(mesh->topology->faceCount(), 10u);
    EXPECT_EQ(eulerNumber(*mesh), 2);
}

/// Edge 1 is walked forwards by the top, backwards by the front: the top comes first.
TEST(SplitRing, goesToTheLeftOfItsRoot)
{
    const SharedMesh mesh = splitRing(*solidCube(), Numbers{0, 1, 2, 3}, at(.5, 1));
    EXPECT_EQ(edgesFrom(mesh, 12)[2], (std::pair<std::uint32_t, std::uint32_t>{8, 9}));
    EXPECT_EQ(pointOf(mesh, 9), (Vec3f{0, .5F, -.5F})); // on edge 2, behind the top
}

TEST(SplitRing, severalLoopsAreEvenAndTheFarthestComesFirst)
{
    RingSplitting splitting = at(.9, 5);
    splitting.type = RingSplit::Many;
    splitting.loopCount = 2;
    const SharedMesh mesh = splitRing(*solidCube(), Numbers{4, 5, 8, 9}, splitting);
    ASSERT_NE(mesh, nullptr);
    for (std::uint32_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(pointOf(mesh, 8 + i).y, 1.0 / 6, 1e-6);
        EXPECT_NEAR(pointOf(mesh, 12 + i).y, -1.0 / 6, 1e-6);
    }
    EXPECT_EQ(mesh->topology->faceCount(), 6u + 8);
}

TEST(SplitRing, moreFacesThanTheLimitAreNone)
{
    RingSplitting splitting = at(.5, 0);
    splitting.type = RingSplit::Many;
    splitting.loopCount = kMaxRingLoops;
    const MeshData strip = grid(4200, 1); // 4201 edges along y and 4200 rings of two along x
    Numbers all(strip.topology->edges.size());
    std::iota(all.begin(), all.end(), 0U);
    EXPECT_EQ(splitRing(strip, all, splitting), nullptr);
    const SharedMesh mesh = splitRing(strip, Numbers{0, 2}, splitting); // of the first face
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 4200u + 1000);
}

/// A face between an edge of length 1 (0 to 2 at x = 0) and one of length 2 (at x = 1).
TEST(SplitRing, equalDistances)
{
    const MeshData face = meshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 2, 0}}, {{{0, 1, 3, 2}}});
    // Edges 1 (1 to 3) and 3 (2 to 0): the root starts above.
    RingSplitting splitting = at(.25, 3);
    splitting.type = RingSplit::EqualDistance;
    const SharedMesh fromAbove = splitRing(face, Numbers{1, 3}, splitting);
    EXPECT_EQ(pointOf(fromAbove, 4), (Vec3f{0, .75F, 0}));
    EXPECT_EQ(pointOf(fromAbove, 5), (Vec3f{1, 1.75F, 0}));
    splitting.measuresFromStart = false;
    const SharedMesh fromBelow = splitRing(face, Numbers{1, 3}, splitting);
    EXPECT_EQ(pointOf(fromBelow, 5), (Vec3f{1, .75F, 0}));
    splitting.type = RingSplit::EqualPart;
    EXPECT_EQ(pointOf(splitRing(face, Numbers{1, 3}, splitting), 5), (Vec3f{1, 1.5F, 0}));
}

/// Three squares in a row, the root between the first two: to its left first, then to its right.
TEST(SplitRing, anOpenRingGoesOnToTheRight)
{
    const MeshData row = grid(3, 1);
    Numbers rungs;
    std::uint32_t root = kNone;
    const Pairs edges = edgesOf(row);
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        if (edges[edge].second == edges[edge].first + 4) {
            rungs.push_back(edge);
            root = edges[edge].first == 1 ? edge : root;
        }
    }
    ASSERT_EQ(rungs.size(), 4u);
    const SharedMesh mesh = splitRing(row, rungs, at(.5, root));
    EXPECT_EQ(mesh->topology->faceCount(), 6u);
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{1, .5F, 0}));
    EXPECT_EQ(pointOf(mesh, 9).x, 0.0F);
    EXPECT_EQ(pointOf(mesh, 10).x, 2.0F);
    EXPECT_NEAR(totalArea(*mesh).z, 3, 1e-6);
}

TEST(SplitRing, uvsAreSharedAlongEdges)
{
    const SharedMesh mesh = splitRing(*solidCube(), Numbers{4, 5, 8, 9}, at(.5, 5));
    // Of the cross edges 4, 5, 8 and 9 each lie between one pair of uvs on the front and the back,
    // and between another on the sides.
    const UvSet& set = mesh->uvSets.front();
    EXPECT_EQ(set.corners->size(), mesh->topology->corners.size());
    for (const std::int32_t id : *set.corners) {
        EXPECT_GE(id, 0);
    }
    EXPECT_EQ(set.points->size(), 14u + 6); // 4 and 5: one each; 8 and 9: two each
}

TEST(SplitRing, nanAndForeignRoots)
{
    const SharedMesh mesh =
        splitRing(*solidCube(), Numbers{4, 5, 8, 9}, at(std::nan(""), 4000000000U));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 10u); // begins at the lowest edge
}

/// Any edges of a ball: what comes of it has no borders.
TEST(SplitRing, anyEdgesOfABall)
{
    std::mt19937 random(3);
    const SharedMesh ball = makeSphere({.axisCells = 8, .heightCells = 6}, {});
    for (int round = 0; round < 20; ++round) {
        RingSplitting splitting = at(.3, kNone);
        splitting.type = static_cast<RingSplit>(round % 3);
        splitting.loopCount = upTo(3, random);
        const SharedMesh mesh = splitRing(
            *ball, someOf(ball->topology->edges.size(), upTo(3, random), random), splitting);
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(eulerNumber(*mesh), 2);
        EXPECT_TRUE(hasNothingLoose(*mesh));
    }
}

/// Round the edges of a cube along x by hand: first all vertices and halves, then the line.
TEST(SplitFaces, aLineRoundACube)
{
    const std::vector<SplitPoint> line{on(0, .75), on(3, .75), on(2, .75), on(1, .75), on(0, .75)};
    const SharedMesh mesh = splitFaces(*solidCube(), line, 0);
    ASSERT_NE(mesh, nullptr);
    const Pairs expected{{1, 8}, {7, 9}, {5, 10}, {3, 11}, {8, 9}, {9, 10}, {10, 11}, {8, 11}};
    EXPECT_EQ(edgesFrom(mesh, 12), expected);
    EXPECT_EQ(mesh->topology->faceCount(), 10u);
    for (std::uint32_t vertex = 8; vertex < 12; ++vertex) {
        EXPECT_EQ(pointOf(mesh, vertex).x, .25F);
    }
    EXPECT_EQ(eulerNumber(*mesh), 2);
}

/// Across a square between vertices: 0 (where edge 0 starts) to 3 (where edge 1 ends).
TEST(SplitFaces, betweenVertices)
{
    const std::vector<SplitPoint> line{on(0, 0), on(1, 1)};
    const SharedMesh mesh = splitFaces(grid(1, 1), line, 0);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{0, 3, 2}, {3, 0, 1}}));
    // Along an edge there is nothing to cut.
    const std::vector<SplitPoint> along{on(0, 0), on(0, 1)};
    EXPECT_EQ(splitFaces(grid(1, 1), along, 0)->topology->faceCount(), 1u);
}

TEST(SplitFaces, overAPointInside)
{
    const std::vector<SplitPoint> line{on(0, .5), {kNone, 0, {.25, .5, 0}}, on(0, 0)};
    const SharedMesh mesh = splitFaces(grid(1, 1), line, 0);
    ASSERT_NE(mesh, nullptr);
    // Vertices in the order of the points: 4 on the edge, 5 inside.
    EXPECT_EQ(pointOf(mesh, 5), (Vec3f{.25F, .5F, 0}));
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{4, 5, 0}, {0, 5, 4, 1, 3, 2}}));
    EXPECT_NEAR(totalArea(*mesh).z, 1, 1e-6);
}

/// One edge cut twice: the second part counts along the whole edge.
TEST(SplitFaces, twiceOnAnEdge)
{
    const std::vector<SplitPoint> line{on(0, .25), on(2, .5), on(0, .75)};
    const SharedMesh mesh = splitFaces(grid(1, 1), line, 0);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(pointOf(mesh, 4), (Vec3f{.25F, 0, 0}));
    EXPECT_EQ(pointOf(mesh, 6), (Vec3f{.75F, 0, 0}));
    EXPECT_EQ(mesh->topology->faceCount(), 3u);
}

TEST(SplitFaces, whatDoesNotFitIsRefused)
{
    const std::vector<SplitPoint> farApart{on(0, .5), on(2, .5)}; // below and behind
    EXPECT_EQ(splitFaces(*solidCube(), farApart, 0), nullptr);
    const std::vector<SplitPoint> endsInside{on(0, .5), {kNone, 0, {0, 0, .5}}};
    EXPECT_EQ(splitFaces(*solidCube(), endsInside, 0), nullptr);
    EXPECT_EQ(splitFaces(*solidCube(), std::vector<SplitPoint>(), 0), nullptr);
}

/// Every cut to the middle of a fan looks at all its triangles, 10^10 in all; a limit ends it.
TEST(SplitFaces, aFanOfVeryManyTriangles)
{
    constexpr std::uint32_t kCount = 100000;
    std::vector<Vec3f> points{{0, 0, 0}};
    std::vector<std::vector<Loop>> faces;
    for (std::uint32_t i = 1; i <= kCount; ++i) {
        points.push_back({static_cast<float>(i), static_cast<float>(i % 7), 1});
        faces.push_back({{0, i, i % kCount + 1}});
    }
    const MeshData fan = meshOf(points, faces);
    // The first face walks edges 0 (0 to 1), 1 (1 to 2) and 2; each later one the rim's, then one.
    std::vector<SplitPoint> line;
    for (std::uint32_t i = 1; i + 1 < kCount; ++i) {
        line.push_back(on(2 * i + 1, .5));
        line.push_back(on(0, 0));
    }
    ASSERT_EQ(fan.topology->edges[3].start, 2u);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(splitFaces(fan, line, 0), nullptr);
    line.resize(3);
    const SharedMesh mesh = splitFaces(fan, line, 0);
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    EXPECT_LT(spent.count(), 30);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), kCount + 2); // two triangles are halved
}

/// Every cut of a face looks at all that is left of its corners, 2 * 10^9 in all and more.
TEST(SplitFaces, aFaceOfVeryManyCorners)
{
    constexpr std::uint32_t kCount = 100000;
    std::vector<Vec3f> points;
    Loop loop;
    for (std::uint32_t i = 0; i < kCount; ++i) {
        points.push_back({static_cast<float>(i), static_cast<float>(i % 7), 1});
        loop.push_back(i);
    }
    const MeshData face = meshOf(points, {{loop}});
    // From side to side: edge i leaves vertex i.
    std::vector<SplitPoint> line;
    for (std::uint32_t i = 1; i < kCount / 2 - 1; ++i) {
        line.push_back(on(i, .5));
        line.push_back(on(kCount - i, .5));
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(splitFaces(face, line, 0), nullptr);
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    EXPECT_LT(spent.count(), 30);
    line.resize(4);
    const SharedMesh mesh = splitFaces(face, line, 0);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 4u);
}

/// A square: the middle, then its edges (0 to 1, 1 to 3, 3 to 2, 2 to 0); a face at each corner.
TEST(SubdivideFaces, aSquareIntoFour)
{
    const SharedMesh mesh = subdivideToQuads(grid(1, 1), Numbers{0}, 1);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(pointOf(mesh, 4), (Vec3f{.5F, .5F, 0}));
    EXPECT_EQ(pointOf(mesh, 5), (Vec3f{.5F, 0, 0}));
    EXPECT_EQ(pointOf(mesh, 6), (Vec3f{1, .5F, 0}));
    EXPECT_EQ(pointOf(mesh, 7), (Vec3f{.5F, 1, 0}));
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{0, .5F, 0}));
    EXPECT_EQ(outerLoops(*mesh),
              (std::vector<Loop>{{8, 0, 5, 4}, {5, 1, 6, 4}, {6, 3, 7, 4}, {7, 2, 8, 4}}));
}

/// The edges of which both ends pass a test.
template<class Test>
Numbers edgesWhere(const SharedMesh& mesh, const Test& test)
{
    Numbers found;
    for (std::uint32_t edge = 0; edge < mesh->topology->edges.size(); ++edge) {
        const MeshEdge& ends = mesh->topology->edges[edge];
        if (test(pointOf(mesh, ends.start)) && test(pointOf(mesh, ends.end))) {
            found.push_back(edge);
        }
    }
    return found;
}

/// In a saved scene the rims of the top and the bottom of a divided cube are beveled by these
/// numbers, and in another one the four parts of the bottom are drawn out.
TEST(SubdivideFaces, numbersThatScenesNameOnACube)
{
    const SharedMesh mesh = subdivideToQuads(*solidCube(), Numbers{0, 1, 2, 3, 4, 5}, 1);
    ASSERT_NE(mesh, nullptr);
    const auto isOnRim = [](const Vec3f& point) {
        const auto isOut = [](float c) { return std::abs(c) == .5F; };
        return isOut(point.y) && (isOut(point.x) || isOut(point.z));
    };
    EXPECT_EQ(edgesWhere(mesh, isOnRim),
              (Numbers{0, 1, 2, 3, 6, 7, 10, 11, 12, 14, 20, 21, 22, 28, 34, 35}));
    for (const std::uint32_t face : {3U, 15U, 16U, 17U}) {
        const Loop loop = loopsOf(*mesh, face).front();
        for (const std::uint32_t vertex : loop) {
            EXPECT_EQ(pointOf(mesh, vertex).y, -.5F);
        }
    }
}

/// In a saved scene two lines along a plane of ten by ten, divided, are creased by these numbers.
TEST(SubdivideFaces, numbersThatASceneNamesOnAPlane)
{
    Numbers all(100);
    std::iota(all.begin(), all.end(), 0U);
    const SharedMesh plane = makePlane({}, {});
    ASSERT_EQ(plane->topology->faceCount(), 100u);
    const SharedMesh mesh = subdivideToQuads(*plane, all, 1);
    ASSERT_NE(mesh, nullptr);
    const float column = pointOf(plane, 4).x;
    const auto isOnLine = [column](const Vec3f& point) {
        return std::abs(std::abs(point.x) - std::abs(column)) < 1e-4F;
    };
    EXPECT_EQ(edgesWhere(mesh, isOnLine),
              (Numbers{9,   13,  30,  34,  51,  55,  72,  76,  93,  97,  114, 118, 135, 139,
                       156, 160, 177, 181, 198, 202, 243, 257, 310, 322, 371, 383, 432, 444,
                       493, 505, 554, 566, 615, 627, 676, 688, 737, 749, 798, 810}));
}

/// In a saved scene the corner cells of a face that is divided three times, in a mesh of 70 faces,
/// are 97, 106, 115 and 124: 27, 36, 45 and 54 from the first new one on.
TEST(SubdivideFaces, cornersAfterThreeTimes)
{
    const SharedMesh mesh = subdivideToQuads(grid(1, 1), Numbers{0}, 3);
    ASSERT_NE(mesh, nullptr);
    const Pairs cornerOfFace{{1 + 27, 0}, {1 + 36, 1}, {1 + 45, 3}, {1 + 54, 2}};
    for (const auto& [face, vertex] : cornerOfFace) {
        EXPECT_EQ(loopsOf(*mesh, face).front()[1], vertex);
    }
}

TEST(SubdivideFaces, levelsMultiply)
{
    // A closed mesh of f faces of four has f * 4^n after n times.
    const SharedMesh mesh = subdivideToQuads(*solidCube(), Numbers{0, 1, 2, 3, 4, 5}, 2);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 96u);
    EXPECT_EQ(mesh->topology->vertexCount, 98u);
    EXPECT_EQ(eulerNumber(*mesh), 2);
    EXPECT_NEAR(sixVolumes(*mesh), 6, 1e-6);
    EXPECT_EQ(subdivideToQuads(*solidCube(), Numbers{0}, 16), nullptr); // beyond the limit
}

/// The top of a cube (2 3 5 4) in five by five: four vertices on each of its edges, from edge 7
/// down to edge 1, each from its start to its end; then the inner ones row by row.
TEST(SubdivideFaces, aGridOnACube)
{
    const SharedMesh mesh = subdivideToGrids(*solidCube(), Numbers{1}, 5, 5);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 8u + 16 + 16);
    EXPECT_EQ(mesh->topology->edges.size(), 12u + 16 + 40);
    EXPECT_EQ(mesh->topology->faceCount(), 5u + 25);
    EXPECT_NEAR(pointOf(mesh, 8).z, .3, 1e-6);   // edge 7: 3 to 5, from the front
    EXPECT_NEAR(pointOf(mesh, 20).x, -.3, 1e-6); // edge 1: 2 to 3, from the left
    EXPECT_NEAR(pointOf(mesh, 24).x, -.3, 1e-6);
    EXPECT_NEAR(pointOf(mesh, 24).z, .3, 1e-6);
    EXPECT_NEAR(pointOf(mesh, 25).x, -.1, 1e-6);
    EXPECT_EQ(eulerNumber(*mesh), 2);
}

/// Columns lie along the first edge of each face.
TEST(SubdivideFaces, twoColumns)
{
    const SharedMesh mesh = subdivideToGrids(grid(2, 1), Numbers{0, 1}, 2, 1);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 4u);
    // The higher face is divided first: face 2 is its right half.
    EXPECT_EQ(pointOf(mesh, loopsOf(*mesh, 2).front()[1]), (Vec3f{2, 0, 0}));
    EXPECT_EQ(pointOf(mesh, loopsOf(*mesh, 3).front()[1]), (Vec3f{1, 0, 0}));
    EXPECT_NEAR(totalArea(*mesh).z, 2, 1e-6);
    EXPECT_EQ(subdivideToGrids(grid(1, 1), Numbers{0}, 1U << 31U, 1U << 31U), nullptr);
}

/// Two columns of all faces of a cube: the edges along x are halved. The right and the left face
/// have only edges that are columns of none before them, and stay; in a saved scene such a cube has
/// twelve vertices and ten faces, the left half of the top keeps number 1.
TEST(SubdivideFaces, columnsRunRoundACube)
{
    const SharedMesh mesh = subdivideToGrids(*solidCube(), Numbers{0, 1, 2, 3, 4, 5}, 2, 1);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 12u);
    EXPECT_EQ(mesh->topology->faceCount(), 10u);
    for (std::uint32_t vertex = 8; vertex < 12; ++vertex) {
        EXPECT_EQ(pointOf(mesh, vertex).x, 0);
    }
    const Loop loop = loopsOf(*mesh, 1).front();
    for (const std::uint32_t vertex : loop) {
        EXPECT_LE(pointOf(mesh, vertex).x, 0);
        EXPECT_EQ(pointOf(mesh, vertex).y, .5F);
    }
}

/// Two rows of the top, bottom, right and left of a cube: one cut runs round all four of them. In a
/// saved scene such a cube has twenty edges.
TEST(SubdivideFaces, rowsRunRoundACube)
{
    const SharedMesh mesh = subdivideToGrids(*solidCube(), Numbers{1, 3, 4, 5}, 1, 2);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->edges.size(), 20u);
    EXPECT_EQ(mesh->topology->faceCount(), 10u);
    for (std::uint32_t vertex = 8; vertex < mesh->topology->vertexCount; ++vertex) {
        EXPECT_EQ(pointOf(mesh, vertex).z, 0);
    }
}

TEST(SubdivideFaces, trianglesAboutTheMiddle)
{
    const SharedMesh mesh = subdivideToTriangles(grid(1, 1), Numbers{0}, 1);
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{0, 1, 4}, {1, 3, 4}, {3, 2, 4}, {2, 0, 4}}));
}

TEST(SubdivideFaces, someFacesOfABall)
{
    std::mt19937 random(11);
    const SharedMesh ball = makeSphere({.axisCells = 8, .heightCells = 6}, {});
    for (int round = 0; round < 20; ++round) {
        const Numbers faces = someOf(ball->topology->faceCount(), upTo(4, random), random);
        const SharedMesh quads = subdivideToQuads(*ball, faces, upTo(2, random));
        const SharedMesh cells = subdivideToGrids(*ball, faces, upTo(3, random), upTo(3, random));
        for (const SharedMesh& mesh : {quads, cells}) {
            ASSERT_NE(mesh, nullptr);
            EXPECT_EQ(eulerNumber(*mesh), 2);
            EXPECT_TRUE(hasNothingLoose(*mesh));
            EXPECT_EQ(mesh->uvSets.front().corners->size(), mesh->topology->corners.size());
        }
    }
}

TEST(DivideEdges, piecesFromStartToEnd)
{
    const SharedMesh mesh = divideEdges(grid(1, 1), Numbers{0, 1}, 2);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{0, 4, 5, 1, 6, 7, 3, 2}}));
    EXPECT_NEAR(pointOf(mesh, 4).x, 1.0 / 3, 1e-6);
    EXPECT_NEAR(pointOf(mesh, 5).x, 2.0 / 3, 1e-6);
    EXPECT_EQ(edgesFrom(mesh, 4), (Pairs{{4, 5}, {1, 5}, {6, 7}, {3, 7}}));
    EXPECT_EQ(divideEdges(grid(1, 1), Numbers{0}, kMaxEdgeVertices + 1), nullptr);
}

TEST(PokeFaces, aPointAboveEachFace)
{
    Poking poking;
    poking.localTranslate = {0, 0, 2};
    const SharedMesh mesh = pokeFaces(grid(2, 1), Numbers{0, 1}, poking);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(pointOf(mesh, 6), (Vec3f{.5F, .5F, 2}));
    EXPECT_EQ(pointOf(mesh, 7), (Vec3f{1.5F, .5F, 2}));
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{0, 1, 6}));
    EXPECT_EQ(loopsOf(*mesh, 2).front(), (Loop{1, 4, 6}));
    EXPECT_EQ(mesh->topology->faceCount(), 8u);
}

} // namespace
} // namespace host::geometry::test
