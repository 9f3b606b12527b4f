// Extrusions and bevels of closed solids: what stays true whatever parts are picked.
#include "host/geometry/mesh/edit/bevelEdges.h"
#include "host/geometry/mesh/edit/extrudeFaces.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <algorithm>
#include <numeric>

namespace host::geometry::test {
namespace {

constexpr double kSmall = 1e-5; ///< of sums of products of single precision points

struct Solid {
    SharedMesh mesh;
    int euler = 2; ///< V - E + F: 2 for a ball, 0 for a ring
};

std::uint32_t from(std::uint32_t least, std::uint32_t most, std::mt19937& random)
{
    return static_cast<std::uint32_t>(least + random() % (most - least + 1));
}

/// A cube, a ball, a ring or a drum, of few cells.
Solid anySolid(std::mt19937& random)
{
    const std::uint32_t a = from(1, 4, random);
    const std::uint32_t b = from(1, 4, random);
    switch (random() % 4) {
    case 0:
        return {makeCube({.widthCells = a, .heightCells = b, .depthCells = from(1, 3, random)}, {}),
                2};
    case 1:
        return {makeSphere({.axisCells = 2 + a, .heightCells = 1 + b}, {}), 2};
    case 2:
        return {makeTorus({.axisCells = 2 + a, .tubeCells = 2 + b}, {}), 0};
    default:
        return {makeCylinder({.axisCells = 2 + a, .heightCells = b, .capCells = a - 1}, {}), 2};
    }
}

/// Every edge is walked as often one way as the other: once, where `isManifold` asks for it.
bool isClosedSurface(const MeshData& mesh, bool isManifold)
{
    std::vector<int> forward(mesh.topology->edges.size());
    std::vector<int> backward(forward.size());
    for (const std::int32_t reference : mesh.topology->corners) {
        ++(reference >= 0 ? forward : backward)[edgeOf(reference)];
    }
    const auto isOne = [](int uses) { return uses == 1; };
    return forward == backward &&
           (!isManifold || std::all_of(forward.begin(), forward.end(), isOne));
}

void expectClosed(const SharedMesh& mesh, int euler, bool isManifold)
{
    ASSERT_NE(mesh, nullptr);
    EXPECT_TRUE(isConsistent(*mesh));
    EXPECT_TRUE(isClosedSurface(*mesh, isManifold));
    EXPECT_TRUE(hasNothingLoose(*mesh));
    EXPECT_EQ(eulerNumber(*mesh), euler);
}

FaceExtrusion alongNormal(double length, bool isTogether, std::uint32_t divisions)
{
    FaceExtrusion extrusion;
    extrusion.motion.localTranslate = {0, 0, length};
    extrusion.isTogether = isTogether;
    extrusion.divisions = divisions;
    return extrusion;
}

// Apart, each corner of a picked face becomes a vertex, an upright edge, a top edge and a wall:
// V - E + F stays. Together a wall stands on each edge of the outline, an upright edge on each of
// its vertices, with as many new vertices and top edges: V - E + F stays as well. Where picked
// faces touch in a vertex alone they share its upright edge, which then has four walls: such a
// surface is closed, but no manifold. Of a shell that is picked as a whole a copy stays behind.

TEST(ClosedSolids, FacesDrawnOutApart)
{
    std::mt19937 random(21);
    for (int round = 0; round < 120; ++round) {
        const Solid solid = anySolid(random);
        const Numbers faces = someOf(solid.mesh->topology->faceCount(), from(1, 5, random), random);
        expectClosed(extrudeFaces(*solid.mesh, faces, alongNormal(.1, false, from(1, 3, random))),
                     solid.euler, true);
    }
}

TEST(ClosedSolids, FacesDrawnOutTogether)
{
    std::mt19937 random(22);
    for (int round = 0; round < 120; ++round) {
        const Solid solid = anySolid(random);
        const std::uint32_t count = solid.mesh->topology->faceCount();
        const Numbers faces = someOf(count, from(1, 5, random), random);
        const bool isWhole = faces.size() == count;
        expectClosed(extrudeFaces(*solid.mesh, faces, alongNormal(.1, true, from(1, 3, random))),
                     isWhole ? 2 * solid.euler : solid.euler, isWhole);
    }
}

TEST(ClosedSolids, APatchDrawnOutTogetherStaysAManifold)
{
    std::mt19937 random(23);
    for (int round = 0; round < 60; ++round) {
        const Solid solid = anySolid(random);
        // all faces about a vertex: its outline is one ring
        const auto vertex =
            static_cast<std::uint32_t>(random() % solid.mesh->topology->vertexCount);
        Numbers faces;
        for (std::uint32_t face = 0; face < solid.mesh->topology->faceCount(); ++face) {
            const Loop loop = loopsOf(*solid.mesh, face).front();
            if (std::find(loop.begin(), loop.end(), vertex) != loop.end()) {
                faces.push_back(face);
            }
        }
        expectClosed(extrudeFaces(*solid.mesh, faces, alongNormal(.1, true, from(1, 3, random))),
                     solid.euler, true);
    }
}

/// The volume between a picked cell and its top is its area times the way, whatever the others do.
TEST(ClosedSolids, CellsOfACubeAddTheirPrisms)
{
    std::mt19937 random(24);
    for (int round = 0; round < 60; ++round) {
        const std::uint32_t cells = from(1, 4, random);
        const SharedMesh cube =
            makeCube({.widthCells = cells, .heightCells = cells, .depthCells = cells}, {});
        const bool isTogether = random() % 2 == 0;
        // together only cells of the front, whose common vertices all go the same way
        const std::uint32_t sideFaces = cells * cells;
        const Numbers faces = someOf(isTogether ? sideFaces : 6 * sideFaces, 2, random);
        const double way = static_cast<double>(from(0, 8, random)) / 16 - .25;
        const SharedMesh mesh =
            extrudeFaces(*cube, faces, alongNormal(way, isTogether, from(1, 3, random)));
        ASSERT_NE(mesh, nullptr);
        const double added = way * static_cast<double>(faces.size()) / sideFaces;
        EXPECT_NEAR(sixVolumes(*mesh) / 6, 1 + added, kSmall);
    }
}

Beveling byLength(double offset, std::uint32_t segments)
{
    Beveling beveling;
    beveling.offset = offset;
    beveling.segments = segments;
    return beveling;
}

/// A bevel only puts strips in place of edges and faces in place of vertices.
TEST(ClosedSolids, BeveledEdges)
{
    std::mt19937 random(25);
    for (int round = 0; round < 160; ++round) {
        const Solid solid = anySolid(random);
        const Numbers edges =
            someOf(solid.mesh->topology->edges.size(), from(1, 8, random), random);
        const Beveled beveled = bevelEdges(*solid.mesh, edges, byLength(.02, from(1, 3, random)));
        expectClosed(beveled.mesh, solid.euler, true);
    }
}

/// One edge of a cube of side 1, flat: a prism of two equal sides goes, d * d / 2 across.
TEST(ClosedSolids, AnEdgeOfACubeLosesAPrism)
{
    const SharedMesh cube = makeCube({}, {});
    for (std::uint32_t edge = 0; edge < 12; ++edge) {
        const double d = .05 + .03 * edge;
        const SharedMesh mesh = bevelEdges(*cube, Numbers{edge}, byLength(d, 1)).mesh;
        ASSERT_NE(mesh, nullptr);
        EXPECT_NEAR(sixVolumes(*mesh) / 6, 1 - d * d / 2, kSmall) << edge;
    }
}

/// All of them: twelve prisms of length 1 - 2d go, and of each corner's cube of side d all but the
/// tetrahedron beyond x + y + z = 2d, a sixth of it.
TEST(ClosedSolids, AllEdgesOfACubeLoseTheirShare)
{
    Numbers all(12);
    std::iota(all.begin(), all.end(), 0U);
    for (const double d : {.1, .2, .3, .4}) {
        const SharedMesh mesh = bevelEdges(*makeCube({}, {}), all, byLength(d, 1)).mesh;
        expectClosed(mesh, 2, true);
        const double lost = 12 * (1 - 2 * d) * d * d / 2 + 8 * d * d * d * 5 / 6;
        EXPECT_NEAR(sixVolumes(*mesh) / 6, 1 - lost, kSmall) << d;
    }
}

} // namespace
} // namespace host::geometry::test
