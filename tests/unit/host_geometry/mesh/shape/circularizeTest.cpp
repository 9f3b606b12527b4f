// Loops drawn to circles.
#include "host/geometry/mesh/shape/circularize.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <cmath>
#include <numbers>

namespace host::geometry::test {
namespace {

/// Two by two faces on the top of a cube of four by four, scaled unevenly and twisted by 7 degrees.
/// In a public scene these vertices are then moved outwards by a tweak, after which the box round
/// them ends at x = 3.1904816 and z = 3.1904833 in the world.
TEST(Circularize, asASceneHasIt)
{
    CubeSettings shape;
    shape.widthCells = shape.heightCells = shape.depthCells = 4;
    const SharedMesh cube = makeCube(shape, {});
    const auto loops = loopsAroundFaces(*cube->topology, Numbers{21, 22, 25, 26});
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_EQ(loops[0], (VertexLoop{26, 27, 28, 33, 38, 37, 36, 31}));
    Circularity circularity;
    const double width = 9.9168989199563331;
    const double depth = 7.4965251515744615;
    circularity.toSpace = scaling({width, width, depth});
    circularity.twist = 7 * std::numbers::pi / 180;
    const SharedMesh round = circularize(*cube, loops, circularity);
    const auto& points = *round->points;
    EXPECT_NEAR((points[31].x - 0.055313408) * width, -3.1904816, 1e-4);
    EXPECT_NEAR((points[33].x + 0.055313408) * width, 3.1904816, 1e-4);
    EXPECT_NEAR((points[27].z + 0.07317245) * depth, 3.1904833, 1e-4);
    // the tweak goes along the radius
    EXPECT_NEAR(points[26].x / points[26].z, -0.039736032 / 0.050916374, 1e-3);
    EXPECT_NEAR(points[26].y, 0.5, 1e-6);
    EXPECT_EQ(points[32].x, 0); // the vertex inside stays
}

/// The outline of a grid of one by two: six vertices, the corners sqrt(5) / 2 from the middle and
/// the others a half: (4 sqrt(5) / 2 + 2 / 2) / 6 on the mean.
TEST(Circularize, meanRadiusOffsetsAndDirections)
{
    const MeshData mesh = grid(1, 2);
    const auto loops = loopsAroundFaces(*mesh.topology, Numbers{0, 1});
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_EQ(loops[0], (VertexLoop{0, 1, 3, 5, 4, 2}));
    const double radius = (2 * std::sqrt(5.0) + 1) / 6;
    Circularity circularity;
    circularity.isEven = false;
    circularity.normalOffset = 3;
    const SharedMesh kept = circularize(mesh, loops, circularity);
    EXPECT_NEAR((*kept->points)[3].x, 0.5 + radius, 1e-6);
    EXPECT_NEAR((*kept->points)[3].y, 1, 1e-6);
    EXPECT_NEAR((*kept->points)[3].z, 3, 1e-6);
    circularity.isEven = true;
    circularity.radialOffset = 1;
    const SharedMesh even = circularize(mesh, loops, circularity);
    // the first one stays in its direction, the one opposite too
    EXPECT_NEAR((*even->points)[0].x, 0.5 - (radius + 1) / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR((*even->points)[5].y, 1 + 2 * (radius + 1) / std::sqrt(5.0), 1e-6);
}

/// Edges in any order; those that make no loop are told.
TEST(Circularize, loopsOfEdges)
{
    const MeshData mesh = grid(2, 2);
    const EdgeLoops around = loopsOfEdges(mesh, Numbers{0, 3, 4, 5, 8, 9, 10, 11});
    ASSERT_EQ(around.loops.size(), 1u);
    EXPECT_TRUE(around.isWhole);
    EXPECT_EQ(around.loops[0], (VertexLoop{0, 1, 2, 5, 8, 7, 6, 3}));
    EXPECT_FALSE(loopsOfEdges(mesh, Numbers{0, 3}).isWhole);
}

TEST(Circularize, facesThatTouchAtACorner)
{
    const MeshData mesh = grid(2, 2);
    for (const VertexLoop& loop : loopsAroundFaces(*mesh.topology, Numbers{0, 3})) {
        EXPECT_GE(loop.size(), 3u);
    }
    EXPECT_TRUE(loopsAroundFaces(*cube().topology, Numbers{0, 1, 2, 3, 4, 5}).empty());
}

} // namespace
} // namespace host::geometry::test
