// Edges hard and soft, faces turned, normals locked: on a cube, whose numbers are known.
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/shape/cornerNormals.h"
#include "host/geometry/mesh/shape/lockNormals.h"
#include "host/geometry/mesh/shape/softenEdges.h"
#include "host/geometry/mesh/shape/transformMesh.h"
#include "host/geometry/mesh/shape/turnFaces.h"
#include "host/math/rotation.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <numeric>

namespace host::geometry {
namespace {

using std::numbers::pi;
using test::meshOf;

/// Corners of the unit cube; edges in the order in which the faces first walk them: front 0-1 1-3
/// 3-2 2-0, top 3-5 5-4 4-2, back 5-7 7-6 6-4, bottom 7-1 0-6.
MeshData cube(std::int32_t flag = 0)
{
    return meshOf(test::kCubePoints, test::kCubeFaces, flag);
}

/// Two squares that meet at x = 0: one in the plane z = 0, the other lifted by `angle`.
MeshData roof(double angle)
{
    const SineCosine turn = sineCosine(angle);
    const auto x = static_cast<float>(turn.cosine);
    const auto z = static_cast<float>(turn.sine);
    return meshOf({{-1, 0, 0}, {0, 0, 0}, {x, 0, z}, {-1, 1, 0}, {0, 1, 0}, {x, 1, z}},
                  {{{0, 1, 4, 3}}, {{1, 2, 5, 4}}});
}

constexpr std::uint32_t kRidge = 1; // 1-4 is the second edge that the first square walks

std::vector<std::uint32_t> allEdges(const MeshData& mesh)
{
    std::vector<std::uint32_t> edges(mesh.topology->edges.size());
    std::iota(edges.begin(), edges.end(), 0U);
    return edges;
}

std::vector<std::uint32_t> loopOf(const MeshData& mesh, std::uint32_t face)
{
    std::vector<std::uint32_t> vertices;
    for (std::uint32_t corner = mesh.topology->firstCorner(face);
         corner < mesh.topology->endCorner(face); ++corner) {
        vertices.push_back(mesh.topology->cornerVertex(corner));
    }
    return vertices;
}

TEST(SoftenEdges, HardOnlyWhereFacesMeetAtMoreThanTheAngle)
{
    for (const double degrees : {10.0, 60.0, 90.0, 150.0}) {
        const double angle = degrees * pi / 180;
        const MeshData mesh = roof(angle);
        const auto flag = [&](double limit) {
            return softenEdges(mesh, allEdges(mesh), limit, {})->edgeFlags()[kRidge];
        };
        EXPECT_EQ(flag(angle - 0.01), 0) << degrees;
        EXPECT_EQ(flag(angle + 0.01), 1) << degrees;
        EXPECT_EQ(flag(angle), 1) << degrees << ": exactly as much is not more";
        EXPECT_EQ(flag(pi), 1) << degrees;
        EXPECT_EQ(flag(0), 0) << degrees;
    }
}

TEST(SoftenEdges, AnAngleOfZeroHardensEvenFlatEdges)
{
    EXPECT_EQ(softenEdges(roof(0), std::vector{kRidge}, 0, {})->edgeFlags()[kRidge], 0);
}

TEST(SoftenEdges, LeavesOtherEdgesAndBordersAsTheyAre)
{
    const MeshData mesh = roof(1);
    const auto soft = softenEdges(mesh, allEdges(mesh), pi, {});
    EXPECT_EQ(soft->edgeFlags(), (std::vector<std::uint8_t>{0, 1, 0, 0, 0, 0, 0}));
    const auto none = softenEdges(cube(1), std::vector<std::uint32_t>{0}, 1, {});
    const EdgeFlags noFlags = none->edgeFlags();
    EXPECT_EQ(std::accumulate(noFlags.begin(), noFlags.end(), 0), 11);
    EXPECT_EQ(noFlags[0], 0);
    EXPECT_EQ(soft->points, mesh.points);
}

TEST(SoftenEdges, MeasuresInTheGivenSpace)
{
    // The roof of 45 degrees, its height halved: atan(1/2) is 26.6 degrees.
    const MeshData mesh = roof(pi / 4);
    const double limit = pi / 6;
    const Matrix4 flat = scaling({1, 1, 0.5});
    EXPECT_EQ(softenEdges(mesh, allEdges(mesh), limit, {})->edgeFlags()[kRidge], 0);
    EXPECT_EQ(softenEdges(mesh, allEdges(mesh), limit, flat)->edgeFlags()[kRidge], 1);
}

TEST(SoftenEdges, LockedNormalsStayWithTheirCorners)
{
    const MeshData mesh = cube();
    const std::vector<GivenNormal> given{{0, 0, {0, 0, 1}}};
    const auto locked = lockNormals(mesh, given);
    ASSERT_EQ(lockedNormalsOfCorners(*locked)[0], (Vec3f{0, 0, 1}));
    // All corners of vertex 0 share a normal once all edges are soft: the locked one.
    const auto soft = softenEdges(*locked, allEdges(mesh), pi, {});
    const std::vector<Vec3f> corners = lockedNormalsOfCorners(*soft);
    for (std::uint32_t corner = 0; corner < corners.size(); ++corner) {
        const bool isAtZero = mesh.topology->cornerVertex(corner) == 0;
        EXPECT_EQ(corners[corner], isAtZero ? (Vec3f{0, 0, 1}) : kNotLocked) << corner;
    }
}

TEST(TurnFaces, KeepsTheFirstCornerAndAllNumbers)
{
    MeshData mesh = cube();
    UvSet set;
    set.name = "map1";
    set.points = std::make_shared<const std::vector<Vec2f>>(24);
    std::vector<std::int32_t> ids(24);
    std::iota(ids.begin(), ids.end(), 0);
    set.corners = std::make_shared<const std::vector<std::int32_t>>(ids);
    mesh.uvSets.push_back(set);
    const auto turned = turnFaces(mesh, std::vector<std::uint32_t>{1}, TurnMode::Reverse, true);
    EXPECT_EQ(loopOf(*turned, 0), (std::vector<std::uint32_t>{0, 1, 3, 2}));
    EXPECT_EQ(loopOf(*turned, 1), (std::vector<std::uint32_t>{2, 4, 5, 3}));
    EXPECT_EQ(turned->topology->edges.size(), 12U);
    // The top walked edge 2 backwards, 4, 5, 6; now it walks them from the other side.
    const auto& corners = turned->topology->corners;
    EXPECT_EQ(std::vector(corners.begin() + 4, corners.begin() + 8),
              (std::vector<std::int32_t>{-7, -6, -5, 2}));
    const auto& uvs = *turned->uvSets[0].corners;
    EXPECT_EQ(std::vector(uvs.begin() + 4, uvs.begin() + 8),
              (std::vector<std::int32_t>{4, 7, 6, 5}));
    EXPECT_TRUE(isConsistent(*turned));
}

TEST(TurnFaces, TwiceIsAsBefore)
{
    const MeshData mesh = cube();
    const std::vector<std::uint32_t> faces{0, 2, 5};
    const auto once = turnFaces(mesh, faces, TurnMode::Reverse, true);
    const auto twice = turnFaces(*once, faces, TurnMode::Reverse, true);
    EXPECT_EQ(twice->topology->corners, mesh.topology->corners);
    EXPECT_NE(once->topology->corners, mesh.topology->corners);
}

TEST(TurnFaces, SpreadsAcrossSharedEdges)
{
    const MeshData mesh = cube();
    const std::vector<std::uint32_t> two{1, 4};
    const std::vector<std::uint32_t> all{0, 1, 2, 3, 4, 5};
    const auto mixed = turnFaces(mesh, two, TurnMode::Reverse, true);
    const auto opposite = turnFaces(mesh, all, TurnMode::Reverse, true);
    using Faces = std::vector<std::uint32_t>;
    const auto cornersAfter = [&](const Faces& faces, TurnMode mode) {
        return turnFaces(*mixed, faces, mode, true)->topology->corners;
    };
    // Two of six face inwards: the fewer ones turn, wherever one begins.
    EXPECT_EQ(cornersAfter(all, TurnMode::Conform), mesh.topology->corners);
    // All follow the face given: an outer one, an inner one, an inner one turned first.
    EXPECT_EQ(cornersAfter(Faces{0}, TurnMode::Propagate), mesh.topology->corners);
    EXPECT_EQ(cornersAfter(Faces{1}, TurnMode::Propagate), opposite->topology->corners);
    EXPECT_EQ(cornersAfter(Faces{1}, TurnMode::ReverseAndPropagate), mesh.topology->corners);
}

TEST(TurnFaces, CutsTurnedFacesOff)
{
    const MeshData mesh = cube();
    const auto cut = turnFaces(mesh, std::vector<std::uint32_t>{1}, TurnMode::ReverseAndCut, true);
    // The top gets copies of its vertices 2 3 4 5 (8 9 10 11), and of its four edges.
    EXPECT_EQ(cut->topology->vertexCount, 12U);
    EXPECT_EQ(cut->topology->edges.size(), 16U);
    EXPECT_EQ(loopOf(*cut, 1), (std::vector<std::uint32_t>{8, 10, 11, 9}));
    EXPECT_EQ(loopOf(*cut, 0), loopOf(mesh, 0));
    EXPECT_EQ((*cut->points)[10], (*mesh.points)[4]);
}

TEST(TurnFaces, LockedNormalsTurnWithTheirFacesUnlessTheyAreToStay)
{
    const std::vector<GivenNormal> given{{2, 1, {0, 1, 0}}, {3, 1, {0.6F, 0.8F, 0}}};
    const auto locked = lockNormals(cube(), given);
    for (const bool turns : {true, false}) {
        const auto turned =
            turnFaces(*locked, std::vector<std::uint32_t>{1}, TurnMode::Reverse, turns);
        const std::vector<Vec3f> corners = lockedNormalsOfCorners(*turned);
        // The loop is now 2 4 5 3.
        EXPECT_EQ(corners[4], turns ? (Vec3f{0, -1, 0}) : (Vec3f{0, 1, 0}));
        EXPECT_EQ(corners[7], turns ? (Vec3f{-0.6F, -0.8F, 0}) : (Vec3f{0.6F, 0.8F, 0}));
        EXPECT_EQ(corners[5], kNotLocked);
    }
}

TEST(LockNormals, OfAVertexHoldInAllItsFaces)
{
    const std::vector<GivenNormal> given{{0, kAllFaces, {1, 0, 0}}, {99, kAllFaces, {1, 0, 0}}};
    const MeshData mesh = cube();
    const auto locked = lockNormals(mesh, given);
    const std::vector<Vec3f> corners = lockedNormalsOfCorners(*locked);
    std::size_t count = 0;
    for (std::uint32_t corner = 0; corner < corners.size(); ++corner) {
        const bool isAtZero = mesh.topology->cornerVertex(corner) == 0;
        EXPECT_EQ(isLockedNormal(corners[corner]), isAtZero);
        count += isAtZero ? 1 : 0;
    }
    EXPECT_EQ(count, 3U);
    const std::vector<GivenNormal> loose{{0, kAllFaces, {1e20F, 1e20F, 1e20F}}};
    EXPECT_EQ(lockNormals(*locked, loose)->lockedNormals, nullptr);
}

/// The normals that are shown, corner by corner.
std::vector<Vec3f> shownNormals(const MeshData& mesh)
{
    const NormalIds ids = computeNormalIds(mesh);
    const std::vector<Vec3f> normals =
        computeNormals(*mesh.topology, cornerVertices(*mesh.topology), pointsOf(mesh),
                       mesh.normalWeighting, ids, lockedNormalsOf(mesh));
    std::vector<Vec3f> shown;
    for (const std::uint32_t id : ids.ofCorner) {
        shown.push_back(normals[id]);
    }
    return shown;
}

TEST(LockNormals, DifferentOnesInASoftMeshChangeNoOtherCorner)
{
    const MeshData mesh = cube(1);
    const std::vector<Vec3f> before = shownNormals(mesh);
    const std::vector<GivenNormal> given{{0, 0, {0, 0, 1}}, {0, 3, {0, -1, 0}}};
    const std::vector<Vec3f> after = shownNormals(*lockNormals(mesh, given));
    for (std::uint32_t corner = 0; corner < after.size(); ++corner) {
        const bool isInFront = corner == 0; // face 0 begins at vertex 0
        const bool isBelow = corner == 15;  // face 3 ends there: 6 7 1 0
        const Vec3f expected = isInFront ? Vec3f{0, 0, 1}
                               : isBelow ? Vec3f{0, -1, 0}
                                         : before[corner];
        EXPECT_NEAR(after[corner].x, expected.x, 1e-6) << corner;
        EXPECT_NEAR(after[corner].y, expected.y, 1e-6) << corner;
        EXPECT_NEAR(after[corner].z, expected.z, 1e-6) << corner;
    }
}

TEST(LockNormals, AddedOnesTiltWhatIsThere)
{
    const std::vector<GivenNormal> given{{0, 0, {0, 1, 0}}};
    const auto tilted = addNormals(cube(), given);
    const Vec3f normal = shownNormals(*tilted)[0]; // (0 0 1) + (0 1 0)
    EXPECT_NEAR(normal.y, std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(normal.z, std::sqrt(0.5), 1e-6);
}

TEST(TransformMesh, FreezesNormalsWhenAsked)
{
    const MeshData mesh = cube(1);
    const Matrix4 turn = eulerRotation({0.3, -0.2, 0.1}, RotationOrder::Xyz);
    const Matrix4 flat = scaling({1, 1, 0.25});
    EXPECT_EQ(transformed(mesh, flat, NormalFreeze::Never).lockedNormals, nullptr);
    EXPECT_EQ(transformed(mesh, turn, NormalFreeze::NonRigid).lockedNormals, nullptr);
    EXPECT_NE(transformed(mesh, turn, NormalFreeze::Always).lockedNormals, nullptr);
    const MeshData frozen = transformed(mesh, flat, NormalFreeze::NonRigid);
    ASSERT_NE(frozen.lockedNormals, nullptr);
    // At the corner (-1 -1 1) the normal was that direction; by the inverse it becomes (-1 -1 4).
    const Vec3f normal = shownNormals(frozen)[0];
    EXPECT_NEAR(normal.x, -1 / std::sqrt(18.0), 1e-6);
    EXPECT_NEAR(normal.y, -1 / std::sqrt(18.0), 1e-6);
    EXPECT_NEAR(normal.z, 4 / std::sqrt(18.0), 1e-6);
}

} // namespace
} // namespace host::geometry
