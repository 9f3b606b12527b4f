// Edges that are spun, and faces that are swung about edges.
#include "host/geometry/mesh/edit/flipEdges.h"
#include "host/geometry/mesh/edit/spinEdges.h"
#include "host/geometry/mesh/edit/wedgeFaces.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <array>
#include <numbers>

namespace host::geometry::test {
namespace {

constexpr std::array<std::uint32_t, 1> kMiddle{1};

/// Squares (0 1 4 3) and (1 2 5 4); edge 1 goes from 1 to 4. Without it the loop from its end is
/// 4 3 0 1 2 5: one on, the end comes to 3 and the start, three before it, to 2.
TEST(SpinEdges, bothEndsGoOnAlongTheLoop)
{
    MeshData mesh = grid(2, 1);
    addCornerUvs(mesh);
    const SharedMesh spun = spinEdges(mesh, kMiddle, 1);
    ASSERT_NE(spun, nullptr);
    EXPECT_EQ(spun->topology->edges[1].start, 2u);
    EXPECT_EQ(spun->topology->edges[1].end, 3u);
    EXPECT_EQ(outerLoops(*spun), (std::vector<Loop>{{2, 3, 0, 1}, {3, 2, 5, 4}}));
    // each face keeps its own texture coordinate where it still has the vertex
    EXPECT_EQ(*spun->uvSets[0].corners, (std::vector<std::int32_t>{5, 3, 0, 1, 3, 5, 6, 7}));
}

TEST(SpinEdges, backAndAllTheWayRound)
{
    const MeshData mesh = grid(2, 1);
    EXPECT_EQ(outerLoops(*spinEdges(mesh, kMiddle, -1)),
              (std::vector<Loop>{{0, 5, 4, 3}, {5, 0, 1, 2}}));
    EXPECT_EQ(outerLoops(*spinEdges(mesh, kMiddle, 6)),
              (std::vector<Loop>{{1, 4, 3, 0}, {4, 1, 2, 5}}));
    // half way the faces have changed places
    EXPECT_EQ(outerLoops(*spinEdges(mesh, kMiddle, 3)),
              (std::vector<Loop>{{4, 1, 2, 5}, {1, 4, 3, 0}}));
}

TEST(SpinEdges, ofTwoTrianglesItIsTheOtherDiagonal)
{
    MeshData mesh =
        meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{{0, 1, 2}}, {{0, 2, 3}}});
    addCornerUvs(mesh);
    const std::array<std::uint32_t, 1> diagonal{2};
    const SharedMesh spun = spinEdges(mesh, diagonal, 1);
    const SharedMesh flipped = flipEdges(mesh, diagonal);
    EXPECT_EQ(edgesOf(*spun)[2], std::pair(1u, 3u));
    EXPECT_EQ(spun->topology->corners, flipped->topology->corners);
    EXPECT_EQ(*spun->uvSets[0].corners, *flipped->uvSets[0].corners);
}

TEST(SpinEdges, notOnABorderAndNotTwiceInAFace)
{
    const MeshData mesh = grid(3, 1);
    EXPECT_EQ(spinEdges(mesh, std::array<std::uint32_t, 1>{0}, 1), nullptr);
    EXPECT_EQ(spinEdges(mesh, std::array<std::uint32_t, 2>{1, 5}, 1), nullptr); // 1-5 and 2-6
    EXPECT_EQ(spinEdges(mesh, std::array<std::uint32_t, 1>{99}, 1), nullptr);
}

/// The front of a cube about its left edge: public scenes round off the arcs of the two far corners
/// by the edges 12 to 15 and 20 to 23 after it.
TEST(WedgeFaces, anArcAboutAnEdge)
{
    const SharedMesh cube = makeCube({}, {});
    const std::array<std::uint32_t, 1> hinge{4};
    FaceWedge wedge;
    wedge.hinges = hinge;
    wedge.angle = std::numbers::pi / 2;
    wedge.divisions = 4;
    const SharedMesh swung = wedgeFaces(*cube, std::array<std::uint32_t, 1>{0}, wedge);
    ASSERT_NE(swung, nullptr);
    EXPECT_EQ(swung->topology->vertexCount, 8u + 2 * 4);   // two corners, a copy for each part
    EXPECT_EQ(swung->topology->edges.size(), 12u + 5 * 4); // two arcs, three rails
    EXPECT_EQ(swung->topology->faceCount(), 6u + 3 * 4);   // no walls along the hinge
    const Pairs edges = edgesOf(*swung);
    EXPECT_EQ(edges[12], std::pair(1u, 8u));
    EXPECT_EQ(edges[15], std::pair(10u, 11u));
    EXPECT_EQ(edges[20], std::pair(3u, 12u));
    EXPECT_EQ(edges[23], std::pair(14u, 15u));
    // a quarter turn about x = -0.5, z = 0.5, outwards
    EXPECT_NEAR((*swung->points)[11].x, -0.5, 1e-6);
    EXPECT_NEAR((*swung->points)[11].z, 1.5, 1e-6);
    EXPECT_NEAR((*swung->points)[9].z, 0.5 + std::numbers::sqrt2 / 2, 1e-6);
    EXPECT_EQ(outerLoops(*swung)[0], (Loop{0, 11, 15, 2}));
    EXPECT_EQ(outerLoops(*swung)[6].size(), 3u); // a fan beside the hinge
    EXPECT_EQ(eulerNumber(*swung), 2);
    EXPECT_TRUE(hasNothingLoose(*swung));
}

/// The lower cap of a cylinder of 18 sides in four parts: a public scene goes on with 102 vertices.
TEST(WedgeFaces, theCapOfACylinder)
{
    CylinderSettings shape;
    shape.capCells = 1;
    shape.axisCells = 18;
    const SharedMesh cylinder = makeCylinder(shape, {});
    Numbers cap;
    for (std::uint32_t face = 18; face < 36; ++face) {
        cap.push_back(face);
    }
    const std::array<std::uint32_t, 1> hinge{3};
    FaceWedge wedge;
    wedge.hinges = hinge;
    wedge.angle = std::numbers::pi / 2;
    wedge.divisions = 4;
    const SharedMesh swung = wedgeFaces(*cylinder, cap, wedge);
    ASSERT_NE(swung, nullptr);
    EXPECT_EQ(swung->topology->vertexCount, 102u);
    EXPECT_EQ(swung->topology->faceCount(), 54u + 17 * 4);
}

TEST(WedgeFaces, anAxisThatIsNoEdge)
{
    const SharedMesh cube = makeCube({}, {});
    const std::array<std::uint32_t, 1> front{0};
    FaceWedge wedge;
    wedge.angle = std::numbers::pi / 2;
    EXPECT_EQ(wedgeFaces(*cube, front, wedge), nullptr);
    wedge.center = {-1.5, 0, 0.5};
    wedge.axis = {0, -3, 0};
    const SharedMesh swung = wedgeFaces(*cube, front, wedge);
    ASSERT_NE(swung, nullptr);
    EXPECT_EQ(swung->topology->vertexCount, 12u);
    EXPECT_EQ(swung->topology->faceCount(), 10u);
    double farthest = 0;
    for (const Vec3f& point : *swung->points) {
        farthest = std::max<double>(farthest, point.z);
    }
    EXPECT_NEAR(farthest, 0.5 + 2, 1e-6); // x = 0.5 is 2 from the axis
}

} // namespace
} // namespace host::geometry::test
