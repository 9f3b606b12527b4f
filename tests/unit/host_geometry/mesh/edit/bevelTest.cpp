// Beveled and bridged edges: numbers, places and what hangs on them.
#include "host/geometry/mesh/edit/bevelArc.h"
#include "host/geometry/mesh/edit/bevelEdges.h"
#include "host/geometry/mesh/edit/bridgeEdges.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <numeric>

namespace host::geometry::test {
namespace {

/// A number from 1 on.
std::uint32_t upTo(std::uint32_t most, std::mt19937& random)
{
    return static_cast<std::uint32_t>(1 + random() % most);
}

constexpr double kRest = 1e-4; ///< of the most possible offset that is left

SharedMesh solidCube()
{
    return makeCube({}, {});
}

Vec3f pointOf(const SharedMesh& mesh, std::uint32_t vertex)
{
    return (*mesh->points)[vertex];
}

Beveling part(double fraction, std::uint32_t segments = 1)
{
    Beveling beveling;
    beveling.isFraction = true;
    beveling.offset = fraction;
    beveling.segments = segments;
    return beveling;
}

void expectPoint(const SharedMesh& mesh, std::uint32_t vertex, double x, double y, double z)
{
    EXPECT_NEAR(pointOf(mesh, vertex).x, x, 1e-6) << vertex;
    EXPECT_NEAR(pointOf(mesh, vertex).y, y, 1e-6) << vertex;
    EXPECT_NEAR(pointOf(mesh, vertex).z, z, 1e-6) << vertex;
}

/// A cube without its bottom, its two upright front edges beveled. The most possible is half of the
/// front's width. Vertices 4 to 7 stay as 0 to 3; then come those of edge 4 (0 to 2) and edge 5 (1
/// to 3), two each, counter-clockwise from the border or from the highest edge.
TEST(BevelEdges, twoEdgesOfAnOpenCube)
{
    const SharedMesh open = deleteFaces(*solidCube(), Numbers{3}, kCleanAll);
    const SharedMesh mesh = bevelEdges(*open, Numbers{4, 5}, part(.5)).mesh;
    ASSERT_NE(mesh, nullptr);
    const double offset = .5 * .5 * (1 - kRest);
    const double front = .5 - offset;
    EXPECT_EQ(mesh->topology->vertexCount, 12u);
    expectPoint(mesh, 4, -front, -.5, .5);
    expectPoint(mesh, 5, -.5, -.5, front);
    expectPoint(mesh, 6, -.5, .5, front);
    expectPoint(mesh, 7, -front, .5, .5);
    expectPoint(mesh, 8, .5, -.5, front);
    expectPoint(mesh, 9, front, -.5, .5);
    expectPoint(mesh, 10, .5, .5, front);
    expectPoint(mesh, 11, front, .5, .5);
    // The back is untouched; front, top and the sides follow; then the strips.
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{0, 1, 3, 2}));
    EXPECT_EQ(loopsOf(*mesh, 1).front(), (Loop{4, 9, 11, 7}));
    EXPECT_EQ(loopsOf(*mesh, 2).front(), (Loop{6, 7, 11, 10, 1, 0}));
    EXPECT_EQ(mesh->topology->faceCount(), 7u);
    // Four of the uvs go; each of the four vertices gives one to the front, one to its side, and
    // above another to the top, where the front's one serves too.
    EXPECT_EQ(mesh->uvSets.front().points->size(), 12u - 4 + 10);
}

/// The four edges of a cube along x: all others stay in order; then come the faces' new edges as
/// the faces walk them, then those of each strip: at its start, along it, at its end.
TEST(BevelEdges, isolatedEdgesKeepTheOthersInOrder)
{
    const SharedMesh mesh = bevelEdges(*solidCube(), Numbers{0, 1, 2, 3}, part(.5, 3)).mesh;
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 32u);
    EXPECT_EQ(mesh->topology->edges.size(), 48u);
    EXPECT_EQ(mesh->topology->faceCount(), 18u);
    EXPECT_EQ(eulerNumber(*mesh), 2);
    const auto xOf = [&](std::uint32_t vertex) { return pointOf(mesh, vertex).x; };
    const auto& edges = mesh->topology->edges;
    for (const std::uint32_t edge : {1U, 3U, 5U, 7U, 18U, 21U, 23U, 26U, 47U}) {
        EXPECT_EQ(xOf(edges[edge].start), .5F) << edge; // round the right side
        EXPECT_EQ(xOf(edges[edge].end), .5F) << edge;
    }
    for (std::uint32_t edge = 8; edge < 16; ++edge) { // a face walks one forwards, one back
        EXPECT_EQ(xOf(edges[edge].start), edge % 2 == 0 ? -.5F : .5F) << edge;
    }
    for (const std::uint32_t edge : {17U, 20U}) { // within a strip as the edge went
        EXPECT_EQ(xOf(edges[edge].start), -.5F) << edge;
    }
}

TEST(BevelEdges, theRoundIsAnArc)
{
    const SharedMesh mesh = bevelEdges(*solidCube(), Numbers{0, 1, 2, 3}, part(.5, 4)).mesh;
    const double radius = .25 * (1 - kRest);
    // Vertex 0's: on its two edges, then three between; all as far from the arc's middle.
    for (std::uint32_t vertex = 0; vertex < 5; ++vertex) {
        const double y = pointOf(mesh, vertex).y - (-.5 + radius);
        const double z = pointOf(mesh, vertex).z - (.5 - radius);
        EXPECT_NEAR(std::sqrt(y * y + z * z), radius, 1e-6) << vertex;
    }
    Beveling flat = part(.5, 4);
    flat.depth = 0;
    const SharedMesh cut = bevelEdges(*solidCube(), Numbers{0, 1, 2, 3}, flat).mesh;
    EXPECT_NEAR(pointOf(cut, 3).y, -.5 + radius / 2, 1e-6);
    EXPECT_NEAR(pointOf(cut, 3).z, .5 - radius / 2, 1e-6);
}

TEST(BevelArc, touchesBothLegs)
{
    // legs at right angles of lengths 1 and 2: a quarter of an ellipse about (1, 2)
    const Vec3d middle = bevelArc({0, 0, 0}, {1, 0, 0}, {0, 2, 0}, .5, 1);
    EXPECT_NEAR(middle.x, 1 - std::sqrt(.5), 1e-9);
    EXPECT_NEAR(middle.y, 2 * (1 - std::sqrt(.5)), 1e-9);
    const Vec3d straight = bevelArc({0, 0, 0}, {1, 0, 0}, {-1, 0, 0}, .25, 1);
    EXPECT_NEAR(straight.x, .5, 1e-9);
}

/// Round the top of a box: the four edges below are the first ones now, and can be beveled again.
TEST(BevelEdges, loopsAboveAndBelow)
{
    const SharedMesh box = makeCube({.width = 2, .height = .5, .depth = 3}, {});
    const SharedMesh above = bevelEdges(*box, Numbers{1, 2, 6, 7}, part(.15)).mesh;
    ASSERT_NE(above, nullptr);
    EXPECT_EQ(above->topology->vertexCount, 12u);
    EXPECT_EQ(above->topology->faceCount(), 10u);
    for (std::uint32_t edge = 0; edge < 4; ++edge) {
        EXPECT_EQ(pointOf(above, above->topology->edges[edge].start).y, -.25F);
        EXPECT_EQ(pointOf(above, above->topology->edges[edge].end).y, -.25F);
    }
    const SharedMesh both = bevelEdges(*above, Numbers{0, 1, 2, 3}, part(.5)).mesh;
    EXPECT_EQ(both->topology->edges.size(), 28u);
    EXPECT_EQ(both->topology->faceCount(), 14u);
    EXPECT_EQ(eulerNumber(*both), 2);
}

/// Round the right side of a cube; saved scenes name faces 1 to 4 and 9 to draw out what is on the
/// right, and move vertices in the order of these strips. The walk goes from vertex 1 over 3, 5
/// and 7; the strip from 7 back to 1 comes first, and the faces on the left (bottom, front, top,
/// back) before the right side.
TEST(BevelEdges, aRingBeginsWithTheStripThatComesBack)
{
    const SharedMesh mesh = bevelEdges(*solidCube(), Numbers{5, 7, 9, 11}, part(.5)).mesh;
    ASSERT_NE(mesh, nullptr);
    const auto middleOf = [&](std::uint32_t face) {
        Vec3d sum;
        const Loop loop = loopsOf(*mesh, face).front();
        for (const std::uint32_t vertex : loop) {
            sum = sum + toDouble(pointOf(mesh, vertex));
        }
        return sum * (1.0 / static_cast<double>(loop.size()));
    };
    EXPECT_EQ(middleOf(0).x, -.5); // untouched
    EXPECT_LT(middleOf(1).y, -.3);
    EXPECT_GT(middleOf(2).z, .3);
    EXPECT_GT(middleOf(3).y, .3);
    EXPECT_LT(middleOf(4).z, -.3);
    EXPECT_EQ(middleOf(5).y, -.5);
    EXPECT_EQ(middleOf(6).z, .5);
    EXPECT_EQ(middleOf(7).y, .5);
    EXPECT_EQ(middleOf(8).z, -.5);
    EXPECT_EQ(middleOf(9).x, .5);
    // inner at the walk's end, outer there, outer at its start, inner there
    const Loop first = loopsOf(*mesh, 1).front();
    EXPECT_EQ(pointOf(mesh, first[0]).x, .5F);
    EXPECT_GT(pointOf(mesh, first[0]).z, 0);
    EXPECT_EQ(pointOf(mesh, first[1]).y, -.5F);
    EXPECT_GT(pointOf(mesh, first[1]).z, 0);
    EXPECT_EQ(pointOf(mesh, first[2]).y, -.5F);
    EXPECT_LT(pointOf(mesh, first[2]).z, 0);
    EXPECT_EQ(pointOf(mesh, first[3]).x, .5F);
}

/// A line of edges round a cylinder, over the middles of its caps: every vertex of it becomes two.
TEST(BevelEdges, aLoopOverTheCaps)
{
    const SharedMesh cylinder = makeCylinder({.capCells = 1}, {});
    const SharedMesh mesh = bevelEdges(*cylinder, Numbers{44, 54, 64, 74, 84, 94}, part(.5)).mesh;
    ASSERT_NE(mesh, nullptr);
    ASSERT_EQ(mesh->topology->vertexCount, 48u);
    EXPECT_EQ(mesh->topology->faceCount(), 66u);
    // Counter-clockwise about each vertex, after its beveled edges in turn.
    const std::vector<int> sides{-1, 1, 1, -1, 1, -1, -1, 1, -1, 1, -1, 1};
    for (std::uint32_t i = 0; i < 12; ++i) {
        EXPECT_EQ(pointOf(mesh, 36 + i).x > 0, sides[i] > 0) << i;
    }
}

/// All edges: each face shrinks, each corner gives a triangle. What is cut off each edge is a
/// prism, and the volume is that of the hull.
TEST(BevelEdges, allEdgesOfACube)
{
    Numbers all(12);
    std::iota(all.begin(), all.end(), 0U);
    Beveling beveling;
    beveling.offset = .125;
    const Beveled beveled = bevelEdges(*solidCube(), all, beveling);
    ASSERT_NE(beveled.mesh, nullptr);
    EXPECT_TRUE(beveled.isExact);
    EXPECT_EQ(beveled.mesh->topology->vertexCount, 24u);
    EXPECT_EQ(beveled.mesh->topology->edges.size(), 48u);
    EXPECT_EQ(beveled.mesh->topology->faceCount(), 26u);
    // With h the inner size and d the offset: h^3 + 6 h^2 d + 12 h d^2 / 2 + 8 d^3 / 6.
    const double h = .75;
    const double d = .125;
    const double volume = h * h * h + 6 * h * h * d + 6 * h * d * d + 8 * d * d * d / 6;
    EXPECT_NEAR(sixVolumes(*beveled.mesh), 6 * volume, 1e-5);
    EXPECT_FALSE(bevelEdges(*solidCube(), all, part(.5, 3)).isExact);
}

/// Two edges at a cube's vertex 0 meet one other edge; in the middle of a grid two by
/// two they meet two, where Maya makes faces in the corner if the strips have several segments.
TEST(BevelEdges, aCornerOfTwoStripsAmongOthersIsNotExact)
{
    EXPECT_TRUE(bevelEdges(*solidCube(), Numbers{0, 4}, part(.5, 3)).isExact);
    const MeshData squares = grid(2, 2); // vertex 4 is its middle
    Numbers meeting;
    for (std::uint32_t edge = 0; edge < squares.topology->edges.size(); ++edge) {
        const MeshEdge& ends = squares.topology->edges[edge];
        if ((ends.start == 4 || ends.end == 4) && meeting.size() < 2) {
            meeting.push_back(edge);
        }
    }
    EXPECT_TRUE(bevelEdges(squares, meeting, part(.5, 1)).isExact);
    EXPECT_FALSE(bevelEdges(squares, meeting, part(.5, 2)).isExact);
}

TEST(BevelEdges, offsetsAreMeasuredInTheSpace)
{
    Beveling beveling;
    beveling.offset = .5;
    beveling.toSpace = scaling({4, 1, 1});
    // Edge 4 (0 to 2): along x the offset is an eighth here, along z a half.
    const SharedMesh mesh = bevelEdges(*solidCube(), Numbers{4}, beveling).mesh;
    Numbers fronts;
    for (std::uint32_t vertex = 6; vertex < 10; ++vertex) {
        const Vec3f point = pointOf(mesh, vertex);
        if (point.z == .5F) {
            EXPECT_NEAR(point.x, -.5 + .125, 1e-6);
            fronts.push_back(vertex);
        } else {
            EXPECT_NEAR(point.z, 0, 1e-6);
        }
    }
    EXPECT_EQ(fronts.size(), 2u);
    beveling.offset = 100; // no more than fits
    EXPECT_GT(sixVolumes(*bevelEdges(*solidCube(), Numbers{4}, beveling).mesh), 2.9);
}

TEST(BevelEdges, bordersAndTooManySegmentsAreRefused)
{
    EXPECT_EQ(outerLoops(*bevelEdges(grid(1, 1), Numbers{0, 1}, part(.5)).mesh),
              outerLoops(grid(1, 1)));
    EXPECT_EQ(bevelEdges(*solidCube(), Numbers{0}, part(.5, kMaxBevelFaces + 1)).mesh, nullptr);
    const SharedMesh odd = bevelEdges(*solidCube(), Numbers{0}, part(std::nan(""))).mesh;
    EXPECT_TRUE(odd == nullptr || odd->topology->faceCount() == 7u);
}

/// Any edges of a ball: it stays closed, whatever meets at its vertices.
TEST(BevelEdges, anyEdgesOfABall)
{
    std::mt19937 random(5);
    const SharedMesh ball = makeSphere({.axisCells = 8, .heightCells = 6}, {});
    for (int round = 0; round < 40; ++round) {
        const Numbers edges = someOf(ball->topology->edges.size(), upTo(12, random), random);
        const SharedMesh mesh = bevelEdges(*ball, edges, part(.4, upTo(3, random))).mesh;
        ASSERT_NE(mesh, nullptr);
        EXPECT_EQ(eulerNumber(*mesh), 2);
        EXPECT_TRUE(hasNothingLoose(*mesh));
        const NumberLists corners = cornersOfEdges(*mesh->topology);
        for (std::uint32_t edge = 0; edge < mesh->topology->edges.size(); ++edge) {
            ASSERT_EQ(corners.of(edge).size(), 2u);
        }
    }
}

/// A cube without front and back: the holes are bridged to a tunnel.
TEST(BridgeEdges, betweenTwoHoles)
{
    const SharedMesh open = deleteFaces(*solidCube(), Numbers{0, 2}, kCleanAll);
    // Edges in front: 0 (0-1), 1 (2-3), 4 (0-2), 5 (1-3); behind: 2 (4-5), 3 (6-7), 8, 9.
    const Numbers edges{0, 1, 2, 3, 4, 5, 8, 9};
    Bridging bridging;
    bridging.startVertex1 = 0;
    bridging.startVertex2 = 6;
    bridging.divisions = 1;
    const SharedMesh mesh = bridgeEdges(*open, edges, bridging);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 8u + 4);
    EXPECT_EQ(mesh->topology->faceCount(), 4u + 8);
    EXPECT_EQ(eulerNumber(*mesh), 0); // a ring
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{-.5F, -.5F, 0}));
    EXPECT_NEAR(sixVolumes(*mesh), 0, 1e-6); // the tunnel lies on the walls
    EXPECT_EQ(bridgeEdges(*open, Numbers{0, 1, 2}, bridging), nullptr);
    EXPECT_EQ(bridgeEdges(*solidCube(), edges, bridging), nullptr); // no borders
}

TEST(BridgeEdges, betweenTwoChains)
{
    // two squares with a gap between x = 1 and x = 3
    const MeshData pair = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {3, 0, 0}, {4, 0, 0}, {3, 1, 0}, {4, 1, 0}},
        {{{0, 1, 3, 2}}, {{4, 5, 7, 6}}});
    const SharedMesh mesh = bridgeEdges(pair, Numbers{1, 7}, {});
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 3u);
    EXPECT_NEAR(totalArea(*mesh).z, 4, 1e-6);
}

} // namespace
} // namespace host::geometry::test
