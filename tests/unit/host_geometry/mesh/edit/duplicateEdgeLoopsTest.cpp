// New loops beside others, with their numbers.
#include "host/geometry/mesh/edit/duplicateEdgeLoops.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::geometry::test {
namespace {

Numbers every(std::uint32_t first, std::uint32_t last, std::uint32_t step)
{
    Numbers numbers;
    for (std::uint32_t i = first; i <= last; i += step) {
        numbers.push_back(i);
    }
    return numbers;
}

void expectAt(const MeshData& mesh, std::uint32_t vertex, double x, double y)
{
    EXPECT_NEAR((*mesh.points)[vertex].x, x, 1e-6) << vertex;
    EXPECT_NEAR((*mesh.points)[vertex].y, y, 1e-6) << vertex;
}

/// The line 3 4 5 across a grid of four squares: edges 2 (4 to 3) and 6 (5 to 4). Face 2 walks edge
/// 2 backward: the side above comes first, from 4 on to 5, then back to 3. Below, face 0 walks it
/// forward, to 3; then back to 4 and 5.
TEST(DuplicateEdgeLoops, aLineFromBorderToBorder)
{
    const MeshData mesh = grid(2, 2);
    LoopDuplication quarter;
    quarter.offset = 0.25;
    const DuplicatedLoops made = duplicateEdgeLoops(mesh, Numbers{2, 6}, quarter);
    ASSERT_NE(made.mesh, nullptr);
    EXPECT_TRUE(made.isWhole);
    const MeshData& result = *made.mesh;
    ASSERT_EQ(result.topology->vertexCount, 15u);
    expectAt(result, 9, 1, 1.25);
    expectAt(result, 10, 2, 1.25);
    expectAt(result, 11, 0, 1.25);
    expectAt(result, 12, 0, 0.75);
    expectAt(result, 13, 1, 0.75);
    expectAt(result, 14, 2, 0.75);
    const Pairs edges = edgesOf(result);
    ASSERT_EQ(edges.size(), 22u);
    // second halves and new edges: 4-7, 5-8, then the new edge, 6-3, the next new edge ...
    EXPECT_EQ(Pairs(edges.begin() + 12, edges.end()), (Pairs{{7, 9},
                                                             {8, 10},
                                                             {9, 10},
                                                             {3, 11},
                                                             {9, 11},
                                                             {0, 12},
                                                             {4, 13},
                                                             {12, 13},
                                                             {5, 14},
                                                             {13, 14}}));
    const auto loops = outerLoops(result);
    ASSERT_EQ(loops.size(), 8u);
    EXPECT_EQ(loops[3], (Loop{9, 10, 8, 7})); // beyond the new loop the face keeps its number
    EXPECT_EQ(loops[4], (Loop{10, 9, 4, 5}));
    EXPECT_EQ(loops[5], (Loop{9, 11, 3, 4}));
    EXPECT_EQ(loops[6], (Loop{12, 13, 4, 3}));
    EXPECT_EQ(loops[7], (Loop{13, 14, 5, 4}));
    EXPECT_EQ(eulerNumber(result), 1);
}

/// The upper rim of a cylinder. A public scene duplicates it, then the new loop of the wall by the
/// edges 102, 104 ... 138, 139, then the lower of the two beside that by 222, 224 ... 258, 259,
/// then the first one of the cap by 142, 144 ... 178, 179; another one draws the faces 40 to 59
/// inside the loop of the cap.
TEST(DuplicateEdgeLoops, aRimAsScenesNumberIt)
{
    CylinderSettings shape;
    shape.capCells = 1;
    const SharedMesh cylinder = makeCylinder(shape, {});
    ASSERT_EQ(cylinder->topology->edges.size(), 100u);
    LoopDuplication eighth;
    eighth.offset = 0.125;
    const DuplicatedLoops rim = duplicateEdgeLoops(*cylinder, every(20, 39, 1), eighth);
    ASSERT_NE(rim.mesh, nullptr);
    EXPECT_TRUE(rim.isWhole);
    EXPECT_EQ(rim.mesh->topology->vertexCount, 42u + 2 * 20);
    const auto& points = *rim.mesh->points;
    for (std::uint32_t i = 0; i < 20; ++i) {
        // down from 20, 39, 38 ...; inwards from 21, 22 ...
        const Vec3f& above = points[20 + (20 - i) % 20];
        const Vec3f& outside = points[20 + (i + 1) % 20];
        EXPECT_EQ(points[42 + i].x, above.x);
        EXPECT_NEAR(points[42 + i].y, 0.75, 1e-6);
        EXPECT_NEAR(points[62 + i].x, outside.x * 0.875, 1e-6);
        EXPECT_NEAR(points[62 + i].z, outside.z * 0.875, 1e-6);
        EXPECT_EQ(points[62 + i].y, 1.0F);
    }
    const auto loops = outerLoops(*rim.mesh);
    for (std::uint32_t face = 40; face < 60; ++face) {
        EXPECT_EQ(std::count(loops[face].begin(), loops[face].end(), 41u), 1) << face;
    }
    Numbers wall = every(102, 138, 2);
    wall.push_back(139);
    const DuplicatedLoops second = duplicateEdgeLoops(*rim.mesh, wall, eighth);
    EXPECT_TRUE(second.isWhole);
    ASSERT_EQ(second.mesh->topology->vertexCount, 122u);
    EXPECT_NEAR((*second.mesh->points)[82].y, 0.75 + 0.125 * 0.25, 1e-6);
    EXPECT_NEAR((*second.mesh->points)[102].y, 0.75 - 0.125 * 1.75, 1e-6);
    Numbers lower = every(222, 258, 2);
    lower.push_back(259);
    const DuplicatedLoops third = duplicateEdgeLoops(*second.mesh, lower, eighth);
    EXPECT_TRUE(third.isWhole);
    Numbers cap = every(142, 178, 2);
    cap.push_back(179);
    const DuplicatedLoops fourth = duplicateEdgeLoops(*third.mesh, cap, eighth);
    EXPECT_TRUE(fourth.isWhole);
    EXPECT_EQ(fourth.mesh->topology->vertexCount, 202u); // as the scene moves them one by one
    EXPECT_EQ(eulerNumber(*fourth.mesh), 2);
}

/// An edge between two inner vertices of a grid of three by two squares: both new lines run into
/// the vertices next in line, and the edges to these go.
TEST(DuplicateEdgeLoops, anEndInsideIsAGuess)
{
    const MeshData mesh = grid(3, 2);
    std::uint32_t edge = 0;
    while (edgesOf(mesh)[edge] != std::pair(5u, 6u)) {
        ++edge;
    }
    LoopDuplication half;
    const DuplicatedLoops made = duplicateEdgeLoops(mesh, Numbers{edge}, half);
    ASSERT_NE(made.mesh, nullptr);
    EXPECT_FALSE(made.isWhole);
    EXPECT_EQ(made.mesh->topology->faceCount(), 6u + 2 + 4 - 2);
    EXPECT_EQ(eulerNumber(*made.mesh), 1);
    EXPECT_NEAR(totalArea(*made.mesh).z, 6, 1e-6);
    half.deletesEnds = false;
    EXPECT_EQ(duplicateEdgeLoops(mesh, Numbers{edge}, half).mesh->topology->faceCount(), 12u);
}

/// Around a single square nothing leaves the loop inwards, and where loops cross they end.
TEST(DuplicateEdgeLoops, whatHasNoEdgesToGoBy)
{
    const MeshData mesh = cube();
    Numbers rim;
    for (std::uint32_t i = 0; i < 4; ++i) {
        rim.push_back(edgeOf(mesh.topology->corners[i]));
    }
    std::sort(rim.begin(), rim.end());
    const DuplicatedLoops made = duplicateEdgeLoops(mesh, rim, {});
    ASSERT_NE(made.mesh, nullptr);
    EXPECT_FALSE(made.isWhole);
    EXPECT_EQ(made.mesh->topology->faceCount(), 10u);
    const MeshData four = grid(2, 2);
    const DuplicatedLoops crossing = duplicateEdgeLoops(four, Numbers{1, 2, 6, 7}, {});
    EXPECT_FALSE(crossing.isWhole);
}

/// Any edges of any mesh: whole meshes come out.
TEST(DuplicateEdgeLoops, ofAnyEdges)
{
    std::mt19937 random(5);
    std::size_t made = 0;
    for (std::uint32_t round = 0; round < 200; ++round) {
        MeshData mesh = round % 2 == 0 ? grid(3, 3) : cube();
        addCornerUvs(mesh);
        const Numbers edges = someOf(mesh.topology->edges.size(), 1 + round % 6U, random);
        const double area = totalArea(mesh).z;
        const DuplicatedLoops result = duplicateEdgeLoops(mesh, edges, {});
        if (result.mesh != nullptr) {
            ++made;
            ASSERT_TRUE(isConsistent(*result.mesh));
            ASSERT_NEAR(totalArea(*result.mesh).z, area, 1e-5);
        }
    }
    EXPECT_GT(made, 150u);
}

} // namespace
} // namespace host::geometry::test
