// Meshes with fewer triangles, faces taken apart and cut.
#include "host/geometry/mesh/edit/connectParts.h"
#include "host/geometry/mesh/edit/detachEdges.h"
#include "host/geometry/mesh/edit/reduceMesh.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace host::geometry::test {
namespace {

Numbers allFaces(const MeshData& mesh)
{
    Numbers all(mesh.topology->faceCount());
    std::iota(all.begin(), all.end(), 0U);
    return all;
}

Reduction downTo(std::uint32_t triangles)
{
    Reduction reduction;
    reduction.triangles = triangles;
    return reduction;
}

/// Nothing bends and the border is straight: two triangles show the same square.
TEST(ReduceMesh, aFlatSquareNeedsTwoTriangles)
{
    const MeshData square = grid(8, 8);
    const SharedMesh mesh = reduceMesh(square, allFaces(square), downTo(2));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 2u);
    EXPECT_EQ(mesh->topology->vertexCount, 4u);
    EXPECT_EQ(mesh->topology->edges.size(), 5u);
    EXPECT_NEAR(totalArea(*mesh).z, 64, 1e-9);
}

/// A closed mesh stays one, and a ball stays round: with every point on it, no point inside is
/// farther from it than the sag of the longest edges that so few triangles can have.
TEST(ReduceMesh, aBallStaysClosedAndRound)
{
    const SharedMesh ball = makeSphere({}, {});
    const SharedMesh mesh = reduceMesh(*ball, allFaces(*ball), downTo(380));
    ASSERT_NE(mesh, nullptr);
    EXPECT_LE(mesh->topology->faceCount(), 380u);
    EXPECT_GE(mesh->topology->faceCount(), 378u); // each step takes two
    EXPECT_EQ(eulerNumber(*mesh), 2);
    EXPECT_TRUE(hasNothingLoose(*mesh));
    for (const Vec3f& point : *mesh->points) {
        EXPECT_NEAR(length(toDouble(point)), 1, 1e-5);
    }
    EXPECT_GT(sixVolumes(*mesh), .93 * sixVolumes(*ball));
    ASSERT_EQ(mesh->uvSets.size(), 1u);
    EXPECT_EQ(mesh->uvSets.front().corners->size(), mesh->topology->corners.size());
}

TEST(ReduceMesh, aCubeOfManyCellsKeepsItsCorners)
{
    const SharedMesh cube =
        makeCube({.widthCells = 6, .heightCells = 6, .depthCells = 6, .uvs = CubeUvs::None}, {});
    const SharedMesh mesh = reduceMesh(*cube, allFaces(*cube), downTo(12));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 12u);
    EXPECT_NEAR(sixVolumes(*mesh), 6, 1e-5);
}

/// The other half is as it was, with its faces of four. Where both meet five vertices must stay;
/// with the two far corners they make a flat polygon of seven: five triangles.
TEST(ReduceMesh, facesThatAreNotNamedStay)
{
    const MeshData strip = grid(8, 4);
    Numbers left;
    for (std::uint32_t face = 0; face < 32; ++face) {
        if (face % 8 < 4) {
            left.push_back(face);
        }
    }
    const SharedMesh mesh = reduceMesh(strip, left, downTo(5));
    ASSERT_NE(mesh, nullptr);
    std::uint32_t quads = 0;
    for (std::uint32_t face = 0; face < mesh->topology->faceCount(); ++face) {
        quads += loopsOf(*mesh, face).front().size() == 4 ? 1U : 0U;
    }
    EXPECT_EQ(quads, 16u);
    EXPECT_EQ(mesh->topology->faceCount(), 16u + 5);
    EXPECT_NEAR(totalArea(*mesh).z, 32, 1e-9);
}

TEST(ReduceMesh, oddNumbersEndWell)
{
    const SharedMesh ball = makeSphere({}, {});
    std::vector<Vec3f> points = *ball->points;
    points[7].x = std::numeric_limits<float>::quiet_NaN();
    points[30].y = std::numeric_limits<float>::infinity();
    MeshData odd = *ball;
    odd.points = std::make_shared<const std::vector<Vec3f>>(points);
    EXPECT_NE(reduceMesh(odd, allFaces(odd), downTo(0)), nullptr);
    EXPECT_EQ(reduceMesh(*ball, Numbers(), downTo(0))->topology->faceCount(), 400u);
}

/// Edge 1 (1 to 3 in the first face) lies between two squares that hang together there only.
TEST(DetachEdges, twoSquaresApart)
{
    const MeshData pair = grid(2, 1); // vertices 0 1 2 below, 3 4 5 above; edge 1 from 1 to 4
    const SharedMesh mesh = detachEdges(pair, Numbers{1});
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 8u);
    EXPECT_EQ(mesh->topology->edges.size(), 8u);
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{0, 1, 4, 3}, {6, 2, 5, 7}}));
    EXPECT_EQ((*mesh->points)[6], (*mesh->points)[1]);
    EXPECT_EQ((*mesh->points)[7], (*mesh->points)[4]);
}

/// Inside of a mesh one edge becomes two between the same vertices: round them all faces still hang
/// together.
TEST(DetachEdges, oneEdgeInside)
{
    const SharedMesh cube = makeCube({}, {});
    const SharedMesh mesh = detachEdges(*cube, Numbers{1});
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 8u);
    EXPECT_EQ(mesh->topology->edges.size(), 13u);
    EXPECT_EQ(mesh->topology->edges[12].start, 2u);
    EXPECT_EQ(mesh->topology->edges[12].end, 3u);
}

/// Three faces meet at each corner of a cube: two of them get vertices of their own, and each of
/// the three edges there becomes two.
TEST(DetachVertices, aCornerOfACube)
{
    const SharedMesh cube = makeCube({}, {});
    const SharedMesh mesh = detachVertices(*cube, Numbers{3});
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 10u);
    EXPECT_EQ(mesh->topology->edges.size(), 15u);
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{0, 1, 3, 2}));
    EXPECT_EQ(loopsOf(*mesh, 1).front(), (Loop{2, 8, 5, 4}));
    EXPECT_EQ(loopsOf(*mesh, 4).front(), (Loop{1, 7, 5, 9}));
    EXPECT_EQ((*mesh->points)[9], (*mesh->points)[3]);
}

/// The upright edges of a row of three squares: in a saved scene of such a row the halves are 31,
/// 32, 34 and so on, the cuts 33, 35 and so on: each face halves what is whole, then is cut.
TEST(ConnectEdges, aRowOfSquares)
{
    const MeshData row = grid(3, 1); // ten edges
    const auto edges = edgesOf(row);
    Numbers upright;
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        if ((*row.points)[edges[edge].first].x == (*row.points)[edges[edge].second].x) {
            upright.push_back(edge);
        }
    }
    ASSERT_EQ(upright.size(), 4u);
    const Connected connected = connectEdges(row, upright);
    ASSERT_NE(connected.mesh, nullptr);
    EXPECT_TRUE(connected.isExact);
    const auto isFlat = [&](std::uint32_t edge) {
        const MeshEdge& ends = connected.mesh->topology->edges[edge];
        return (*connected.mesh->points)[ends.start].y == .5F &&
               (*connected.mesh->points)[ends.end].y == .5F;
    };
    EXPECT_EQ(connected.mesh->topology->edges.size(), 17u);
    for (const std::uint32_t cut : {12U, 14U, 16U}) {
        EXPECT_TRUE(isFlat(cut)) << cut;
        EXPECT_FALSE(isFlat(cut - 1)) << cut;
    }
    EXPECT_EQ(connected.mesh->topology->faceCount(), 6u);
}

TEST(ConnectVertices, acrossASquare)
{
    const Connected cut = connectVertices(grid(1, 1), Numbers{1, 2});
    EXPECT_EQ(outerLoops(*cut.mesh), (std::vector<Loop>{{1, 2, 0}, {2, 1, 3}}));
    EXPECT_EQ(connectVertices(grid(1, 1), Numbers{0, 1}).mesh->topology->faceCount(), 1u);
    // all corners of a cube: every face is cut, but not how Maya would do it
    const SharedMesh cube = makeCube({}, {});
    const Connected all = connectVertices(*cube, Numbers{0, 3, 5, 6, 1, 2, 4, 7});
    EXPECT_FALSE(all.isExact);
    ASSERT_NE(all.mesh, nullptr);
    EXPECT_EQ(eulerNumber(*all.mesh), 2);
}

} // namespace
} // namespace host::geometry::test
