#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace host::geometry {
namespace {

using test::kCubeFaces;
using test::kCubePoints;
using test::listsOf;
using test::Loop;
using test::meshOf;
using test::meshOfLists;

std::vector<Vec3f> normalsOf(const MeshData& mesh)
{
    return computeNormals(*mesh.topology, cornerVertices(*mesh.topology), pointsOf(mesh),
                          mesh.normalWeighting, computeNormalIds(mesh), lockedNormalsOf(mesh));
}

void expectDirection(const Vec3f& actual, const Vec3d& direction)
{
    const Vec3d expected = normalized(direction);
    EXPECT_NEAR(actual.x, expected.x, 1e-6);
    EXPECT_NEAR(actual.y, expected.y, 1e-6);
    EXPECT_NEAR(actual.z, expected.z, 1e-6);
}

TEST(NormalIds, EveryCornerHasItsOwnWhenAllEdgesAreHard)
{
    const NormalIds ids = computeNormalIds(meshOf(kCubePoints, kCubeFaces, 0));
    EXPECT_EQ(ids.count, 24U);
    for (std::uint32_t corner = 0; corner < 24; ++corner) {
        EXPECT_EQ(ids.ofCorner[corner], corner);
    }
}

TEST(NormalIds, OnePerVertexInOrderOfFirstVisitWhenAllEdgesAreSmooth)
{
    const NormalIds ids = computeNormalIds(meshOf(kCubePoints, kCubeFaces, 1));
    EXPECT_EQ(ids.count, 8U);
    // front 0 1 3 2, top 2 3 5 4, back 4 5 7 6, bottom 6 7 1 0, right 1 7 5 3, left 6 0 2 4:
    // the vertices are met in the order 0 1 3 2 5 4 7 6.
    const std::vector<std::uint32_t> expected{0, 1, 2, 3, 3, 2, 4, 5, 5, 4, 6, 7,
                                              7, 6, 1, 0, 1, 6, 4, 2, 7, 0, 3, 5};
    EXPECT_EQ(ids.ofCorner, expected);
}

TEST(NormalIds, ASmoothEdgeJoinsItsTwoFacesAtBothEndsOnly)
{
    // Cube with one smooth edge, 2-3 between front and top.
    test::Lists lists = listsOf(kCubeFaces, 0);
    test::setEdges(lists, {{2, 3}}, 1);
    const NormalIds ids = computeNormalIds(meshOfLists(kCubePoints, lists));
    EXPECT_EQ(ids.count, 22U);
    EXPECT_EQ(ids.ofCorner[4], ids.ofCorner[3]); // vertex 2: first of top, last of front
    EXPECT_EQ(ids.ofCorner[5], ids.ofCorner[2]); // vertex 3
    EXPECT_EQ(ids.ofCorner[6], 4U);              // the next new one
}

// Four quads round vertex 4 of a 3 x 3 grid of points; two opposite spokes are hard.
TEST(NormalIds, HardSpokesPartTheFacesRoundAVertexIntoFans)
{
    std::vector<Vec3f> points;
    for (int i = 0; i < 9; ++i) {
        points.push_back({static_cast<float>(i % 3), static_cast<float>(i / 3), 0});
    }
    const std::vector<std::vector<Loop>> faces{
        {{0, 1, 4, 3}}, {{1, 2, 5, 4}}, {{3, 4, 7, 6}}, {{4, 5, 8, 7}}};
    test::Lists lists = listsOf(faces, 1);
    test::setEdges(lists, {{1, 4}, {4, 7}}, 0);
    const NormalIds ids = computeNormalIds(meshOfLists(points, lists));
    // Corner of vertex 4: 2 (face 0), 7 (face 1), 9 (face 2), 12 (face 3).
    EXPECT_EQ(ids.ofCorner[2], ids.ofCorner[9]);
    EXPECT_EQ(ids.ofCorner[7], ids.ofCorner[12]);
    EXPECT_NE(ids.ofCorner[2], ids.ofCorner[7]);
    // A single hard spoke parts nothing: the way round the other side is still smooth.
    test::setEdges(lists, {{4, 7}}, 1);
    const NormalIds closed = computeNormalIds(meshOfLists(points, lists));
    EXPECT_EQ(closed.ofCorner[2], closed.ofCorner[7]);
    EXPECT_EQ(closed.ofCorner[2], closed.ofCorner[12]);
}

TEST(NormalIds, FansThatMeetOnlyInTheVertexStayApart)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
    const NormalIds ids = computeNormalIds(meshOf(points, {{{0, 1, 2}}, {{0, 3, 4}}}, 1));
    EXPECT_EQ(ids.count, 6U);
    EXPECT_NE(ids.ofCorner[0], ids.ofCorner[3]);
}

TEST(NormalIds, ThreeFacesOnOneSmoothEdgeAreJoined)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}};
    const NormalIds ids =
        computeNormalIds(meshOf(points, {{{0, 1, 2}}, {{1, 0, 3}}, {{0, 1, 4}}}, 1));
    EXPECT_EQ(ids.count, 5U);
}

TEST(NormalIds, HolesCountAsLoops)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0},
                                    {1, 1, 0}, {1, 2, 0}, {2, 1, 0}};
    const NormalIds ids = computeNormalIds(meshOf(points, {{{0, 1, 2, 3}, {4, 5, 6}}}, 1));
    EXPECT_EQ(ids.ofCorner, (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6}));
}

// Two triangles on the smooth edge from the origin to (2 0 0). The first lies in the plane z = 0,
// is 2 in area and has 45 degrees at the origin; the second lies in y = 0, is 3 and has 90.
MeshData wedge(NormalWeighting weighting)
{
    MeshData mesh =
        meshOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 0, 3}}, {{{0, 1, 2}}, {{1, 0, 3}}}, 1);
    mesh.normalWeighting = weighting;
    return mesh;
}

TEST(Normals, WithoutWeightsFacesCountAlike)
{
    expectDirection(normalsOf(wedge(NormalWeighting::None))[0], {0, 1, 1});
}

TEST(Normals, WeightedByAngle)
{
    expectDirection(normalsOf(wedge(NormalWeighting::Angle))[0], {0, 2, 1});
}

TEST(Normals, WeightedByArea)
{
    expectDirection(normalsOf(wedge(NormalWeighting::Area))[0], {0, 3, 2});
}

TEST(Normals, WeightedByAngleTimesAreaUnlessToldOtherwise)
{
    expectDirection(normalsOf(wedge(NormalWeighting::AngleAndArea))[0], {0, 3, 1});
    EXPECT_EQ(MeshData{}.normalWeighting, NormalWeighting::AngleAndArea);
}

TEST(Normals, HardCubeHasExactAxisNormals)
{
    const std::vector<Vec3f> normals = normalsOf(meshOf(kCubePoints, kCubeFaces, 0));
    const Vec3f expected[6] = {{0, 0, 1}, {0, 1, 0}, {0, 0, -1}, {0, -1, 0}, {1, 0, 0}, {-1, 0, 0}};
    for (std::size_t corner = 0; corner < 24; ++corner) {
        EXPECT_EQ(normals[corner], expected[corner / 4]);
    }
}

TEST(Normals, SmoothCubePointsAlongTheDiagonals)
{
    const std::vector<Vec3f> normals = normalsOf(meshOf(kCubePoints, kCubeFaces, 1));
    const std::size_t order[8] = {0, 1, 3, 2, 5, 4, 7, 6};
    for (std::size_t id = 0; id < 8; ++id) {
        expectDirection(normals[id], toDouble(kCubePoints[order[id]]));
    }
}

TEST(Normals, PolygonNormalOfABentQuadIsItsAreaVector)
{
    // (0 0 0) (2 0 0) (2 2 1) (0 2 0): half the cross product of the diagonals (2 2 1) and (-2 2 0)
    // is (-1 -1 4).
    const std::vector<Vec3f> normals =
        normalsOf(meshOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 1}, {0, 2, 0}}, {{{0, 1, 2, 3}}}));
    for (const Vec3f& normal : normals) {
        expectDirection(normal, {-1, -1, 4});
    }
}

TEST(Normals, SmoothSphereIsCloseToTheRadius)
{
    constexpr std::uint32_t kAround = 20;
    constexpr std::uint32_t kRings = 19;
    std::vector<Vec3f> points;
    for (std::uint32_t ring = 1; ring <= kRings; ++ring) {
        const double latitude = std::numbers::pi * ring / (kRings + 1);
        for (std::uint32_t k = 0; k < kAround; ++k) {
            const double angle = -2 * std::numbers::pi * (k + 1) / kAround;
            points.push_back(toFloat({std::sin(latitude) * std::cos(angle), -std::cos(latitude),
                                      std::sin(latitude) * std::sin(angle)}));
        }
    }
    std::vector<std::vector<Loop>> faces;
    for (std::uint32_t ring = 0; ring + 1 < kRings; ++ring) {
        for (std::uint32_t k = 0; k < kAround; ++k) {
            const std::uint32_t a = ring * kAround + k;
            const std::uint32_t b = ring * kAround + (k + 1) % kAround;
            faces.push_back({{a, b, b + kAround, a + kAround}});
        }
    }
    const MeshData mesh = meshOf(points, faces, 1);
    const NormalIds ids = computeNormalIds(mesh);
    EXPECT_EQ(ids.count, points.size());
    const std::vector<Vec3f> normals = normalsOf(mesh);
    for (std::uint32_t corner = 0; corner < ids.ofCorner.size(); ++corner) {
        const std::uint32_t vertex = mesh.topology->cornerVertex(corner);
        if (vertex < kAround || vertex >= points.size() - kAround) {
            continue; // the rims of the two open caps lean outward
        }
        const Vec3d normal = toDouble(normals[ids.ofCorner[corner]]);
        EXPECT_NEAR(length(normal), 1, 1e-6);
        EXPECT_GT(dot(normal, toDouble(points[vertex])), 0.9995);
    }
}

TEST(Normals, LockedNormalsReplaceTheComputedByIdAndAreNormalised)
{
    MeshData mesh = meshOf(kCubePoints, kCubeFaces, 0);
    std::vector<Vec3f> locked(24, Vec3f{1e20F, 1e20F, 1e20F});
    locked[0] = {0, 3, 4};
    locked[5] = {0, -2, 0};
    mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(locked);
    const std::vector<Vec3f> normals = normalsOf(mesh);
    expectDirection(normals[0], {0, 0.6, 0.8});
    EXPECT_EQ(normals[1], (Vec3f{0, 0, 1}));
    EXPECT_EQ(normals[4], (Vec3f{0, 1, 0}));
    EXPECT_EQ(normals[5], (Vec3f{0, -1, 0}));
}

TEST(Normals, ShortOrOverlongListsOfLockedNormalsAreTaken)
{
    MeshData mesh = meshOf(kCubePoints, kCubeFaces, 0);
    mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(1, Vec3f{1, 0, 0});
    EXPECT_EQ(normalsOf(mesh)[0], (Vec3f{1, 0, 0}));
    EXPECT_EQ(normalsOf(mesh)[1], (Vec3f{0, 0, 1}));
    mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(99, Vec3f{1, 0, 0});
    EXPECT_EQ(normalsOf(mesh).size(), 24U);
    EXPECT_EQ(normalsOf(mesh)[23], (Vec3f{1, 0, 0}));
}

TEST(Normals, UselessLockedNormalsDoNotLock)
{
    MeshData mesh = meshOf(kCubePoints, kCubeFaces, 0);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(
        std::vector<Vec3f>{{0, 0, 0}, {nan, 0, 0}, {std::numeric_limits<float>::infinity(), 0, 0}});
    for (std::size_t corner = 0; corner < 4; ++corner) {
        EXPECT_EQ(normalsOf(mesh)[corner], (Vec3f{0, 0, 1}));
    }
}

TEST(Normals, DegenerateFacesNeverGiveNan)
{
    // A face on one point, one on a line, one good; all joined by smooth edges.
    const MeshData mesh = meshOf({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}},
                                 {{{0, 1, 2}}, {{2, 3, 4}}, {{2, 4, 5}}}, 1);
    const std::vector<Vec3f> normals = normalsOf(mesh);
    for (const Vec3f& normal : normals) {
        EXPECT_NEAR(length(toDouble(normal)), 1, 1e-6);
    }
    // The vertex that the good face shares with degenerate ones has the good one's normal.
    EXPECT_EQ(normals[computeNormalIds(mesh).ofCorner[6]], (Vec3f{0, 0, 1}));
}

TEST(Normals, NotFinitePointsGiveUnitNormals)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float huge = std::numeric_limits<float>::max();
    for (const float bad : {nan, std::numeric_limits<float>::infinity(), huge}) {
        const MeshData mesh =
            meshOf({{0, 0, 0}, {bad, 0, 0}, {1, 1, 0}, {0, bad, bad}}, {{{0, 1, 2, 3}}}, 1);
        for (const Vec3f& normal : normalsOf(mesh)) {
            EXPECT_NEAR(length(toDouble(normal)), 1, 1e-6);
        }
    }
}

TEST(Normals, FacesBackToBackTakeTheFirstOnes)
{
    const MeshData mesh =
        meshOf({{0, 0, 0}, {3, 0.1F, 0.2F}, {0.7F, 2, 0.3F}}, {{{0, 1, 2}}, {{2, 1, 0}}}, 1);
    const std::vector<Vec3f> normals = normalsOf(mesh);
    ASSERT_EQ(normals.size(), 3U);
    const Vec3d first = cross({3, 0.1, 0.2}, {0.7, 2, 0.3});
    for (const Vec3f& normal : normals) {
        expectDirection(normal, first);
    }
}

TEST(Normals, HoleTakesItsAreaFromTheWeight)
{
    // A 2 x 2 square in z = 0 with a hole of half its area, and a triangle of area 2 in y = 0 on
    // its first edge; unholed the weights at the first vertex would be 4 * 90 and 2 * 45 degrees.
    MeshData mesh = meshOf({{0, 0, 0},
                            {2, 0, 0},
                            {2, 2, 0},
                            {0, 2, 0},
                            {1, 0, 0},
                            {0, 1, 0},
                            {1, 2, 0},
                            {2, 1, 0},
                            {2, 0, 2}},
                           {{{0, 1, 2, 3}, {4, 5, 6, 7}}, {{1, 0, 8}}}, 1);
    expectDirection(normalsOf(mesh)[0], {0, 2 * 45, 2 * 90});
    mesh.normalWeighting = NormalWeighting::Angle;
    expectDirection(normalsOf(mesh)[0], {0, 45, 90});
}

TEST(Polygon, InteriorAngleOfAReflexCornerIsAboveHalfATurn)
{
    const Vec3d up{0, 0, 1};
    // Straight ahead to the east, then turned right by 90 degrees: 270 inside on the left.
    EXPECT_NEAR(interiorAngle({-1, 0, 0}, {0, 0, 0}, {0, -1, 0}, up), 1.5 * std::numbers::pi,
                1e-12);
    EXPECT_NEAR(interiorAngle({-1, 0, 0}, {0, 0, 0}, {0, 1, 0}, up), 0.5 * std::numbers::pi, 1e-12);
    EXPECT_NEAR(interiorAngle({-1, 0, 0}, {0, 0, 0}, {2, 0, 0}, up), std::numbers::pi, 1e-12);
    EXPECT_EQ(interiorAngle({0, 0, 0}, {0, 0, 0}, {2, 0, 0}, up), 0);
}

TEST(Polygon, AreaVectorKeepsItsDigitsFarFromTheOrigin)
{
    const Vec3d far{1e8, -1e8, 1e8};
    const std::vector<Vec3d> loop{far, far + Vec3d{1, 0, 0}, far + Vec3d{1, 1, 0},
                                  far + Vec3d{0, 1, 0}};
    EXPECT_EQ(areaVector(loop), (Vec3d{0, 0, 1}));
}

} // namespace
} // namespace host::geometry
