// Faces, edges and vertices drawn out: numbers, places and what hangs on them.
#include "host/geometry/mesh/edit/extrudeEdges.h"
#include "host/geometry/mesh/edit/extrudeFaces.h"
#include "host/geometry/mesh/edit/extrudeVertices.h"
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::geometry::test {
namespace {

/// A number from 1 on.
std::uint32_t upTo(std::uint32_t most, std::mt19937& random)
{
    return static_cast<std::uint32_t>(1 + random() % most);
}

constexpr double kThirtyDegrees = std::numbers::pi / 6;

FaceExtrusion alongNormal(double length)
{
    FaceExtrusion extrusion;
    extrusion.motion.localTranslate = {0, 0, length};
    extrusion.smoothingAngle = kThirtyDegrees;
    return extrusion;
}

SharedMesh solidCube()
{
    return makeCube({}, {});
}

SharedMesh extruded(const MeshData& mesh, const Numbers& faces, const FaceExtrusion& extrusion)
{
    return extrudeFaces(mesh, faces, extrusion);
}

Vec3f pointOf(const SharedMesh& mesh, std::uint32_t vertex)
{
    return (*mesh->points)[vertex];
}

/// All edges have two faces.
bool isClosed(const MeshData& mesh)
{
    const NumberLists corners = cornersOfEdges(*mesh.topology);
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        if (corners.of(edge).size() != 2) {
            return false;
        }
    }
    return true;
}

/// Where faces touch in a vertex alone four walls share an upright edge, but none ends in the open.
bool hasNoBorder(const MeshData& mesh)
{
    const NumberLists corners = cornersOfEdges(*mesh.topology);
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        if (corners.of(edge).size() % 2 != 0) {
            return false;
        }
    }
    return true;
}

/// The front of a cube, walked 0 1 3 2: new vertices in that order, each with its upright edge,
/// each top edge after the uprights at its ends.
TEST(ExtrudeFaces, oneFaceOfACube)
{
    const SharedMesh mesh = extruded(*solidCube(), {0}, alongNormal(1));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{8, 9, 10, 11}));
    const std::vector<Loop> walls{{0, 1, 9, 8}, {1, 3, 10, 9}, {3, 2, 11, 10}, {2, 0, 8, 11}};
    const std::vector<Loop> all = outerLoops(*mesh);
    EXPECT_EQ(std::vector<Loop>(all.begin() + 6, all.end()), walls);
    const Pairs edges = edgesOf(*mesh);
    const Pairs expected{{0, 8}, {1, 9}, {8, 9}, {3, 10}, {9, 10}, {2, 11}, {10, 11}, {8, 11}};
    EXPECT_EQ(Pairs(edges.begin() + 12, edges.end()), expected);
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{-.5F, -.5F, 1.5F}));
    EXPECT_EQ(pointOf(mesh, 10), (Vec3f{.5F, .5F, 1.5F}));
    EXPECT_NEAR(sixVolumes(*mesh), 12, 1e-6); // two cubes
    EXPECT_TRUE(isClosed(*mesh));
}

TEST(ExtrudeFaces, sharpEdgesAreHard)
{
    FaceExtrusion extrusion = alongNormal(1);
    const Numbers isNew{12, 13, 14, 15, 16, 17, 18, 19};
    for (const std::uint32_t edge : isNew) { // right angles everywhere
        EXPECT_EQ(extruded(*solidCube(), {0}, extrusion)->edgeFlags()[edge], 0u);
    }
    extrusion.smoothingAngle = std::numbers::pi / 2;
    const SharedMesh soft = extruded(*solidCube(), {0}, extrusion);
    for (const std::uint32_t edge : isNew) {
        EXPECT_EQ(soft->edgeFlags()[edge], 1u);
    }
    EXPECT_EQ(soft->edgeFlags()[6], 0u); // an old edge that has nothing to do with it
}

/// Two layers: every run of points and uprights goes from the bottom to the top.
TEST(ExtrudeFaces, layersOfDivisions)
{
    FaceExtrusion extrusion = alongNormal(1);
    extrusion.divisions = 2;
    const SharedMesh mesh = extruded(*solidCube(), {0}, extrusion);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{9, 11, 13, 15}));
    EXPECT_EQ(loopsOf(*mesh, 6).front(), (Loop{0, 1, 10, 8}));
    EXPECT_EQ(loopsOf(*mesh, 7).front(), (Loop{8, 10, 11, 9}));
    const Pairs edges = edgesOf(*mesh);
    const Pairs expected{{0, 8}, {8, 9}, {1, 10}, {10, 11}, {8, 10}, {9, 11}};
    EXPECT_EQ(Pairs(edges.begin() + 12, edges.begin() + 18), expected);
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{-.5F, -.5F, 1}));
    EXPECT_EQ(pointOf(mesh, 9), (Vec3f{-.5F, -.5F, 1.5F}));
}

/// What lies inside the faces moves with them: their old vertex and edges are gone.
TEST(ExtrudeFaces, theInsideIsNotDoubled)
{
    // the four squares in the middle of four by four, about vertex 12
    const SharedMesh mesh = extruded(grid(4, 4), {5, 6, 9, 10}, alongNormal(1));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 25u + 9 - 1);
    EXPECT_EQ(mesh->topology->edges.size(), 40u + 8 + 12 - 4);
    EXPECT_EQ(mesh->topology->faceCount(), 16u + 8);
    EXPECT_EQ(pointOf(mesh, 12), (Vec3f{3, 2, 0})); // vertex 13 before
    EXPECT_TRUE(hasNothingLoose(*mesh));
    // Face 5 begins with the edge that face 1 walked first, from (2, 1) to (1, 1).
    EXPECT_EQ(pointOf(mesh, 24), (Vec3f{2, 1, 1}));
    EXPECT_EQ(pointOf(mesh, 25), (Vec3f{1, 1, 1}));
    EXPECT_EQ(pointOf(mesh, 26), (Vec3f{2, 2, 1}));
}

/// All faces of an open mesh: the sheet becomes a plate. Copies that look back come before walls.
TEST(ExtrudeFaces, aWholeSheetBecomesAPlate)
{
    const SharedMesh mesh = extruded(grid(2, 1), {0, 1}, alongNormal(1));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->faceCount(), 2u + 2 + 6);
    EXPECT_EQ(loopsOf(*mesh, 0).front(), (Loop{6, 7, 8, 9}));
    EXPECT_EQ(loopsOf(*mesh, 2).front(), (Loop{0, 3, 4, 1}));
    EXPECT_EQ(loopsOf(*mesh, 4).front(), (Loop{0, 1, 7, 6}));
    EXPECT_NEAR(sixVolumes(*mesh), 12, 1e-6);
    EXPECT_TRUE(isClosed(*mesh));
    EXPECT_EQ(eulerNumber(*mesh), 2);
}

TEST(ExtrudeFaces, apartEachFaceHasWallsAllRound)
{
    FaceExtrusion extrusion = alongNormal(1);
    extrusion.isTogether = false;
    const SharedMesh mesh = extruded(*solidCube(), {4, 5}, extrusion);
    ASSERT_NE(mesh, nullptr);
    // Right 1 7 5 3, then left 6 0 2 4: walls in the order of the corners. The first edge of the
    // right is edge 11, which starts at 7: its copy is the first new vertex.
    EXPECT_EQ(loopsOf(*mesh, 4).front(), (Loop{9, 8, 10, 11}));
    EXPECT_EQ(loopsOf(*mesh, 6).front(), (Loop{1, 7, 8, 9}));
    EXPECT_EQ(loopsOf(*mesh, 9).front(), (Loop{3, 1, 9, 11}));
    EXPECT_EQ(loopsOf(*mesh, 10).front(), (Loop{6, 0, 13, 12}));
    EXPECT_EQ(loopsOf(*mesh, 13).front(), (Loop{4, 6, 12, 15}));
    EXPECT_NEAR(sixVolumes(*mesh), 18, 1e-6);

    const SharedMesh squares = extruded(grid(2, 1), {0, 1}, extrusion);
    EXPECT_EQ(squares->topology->faceCount(), 2u + 8);
    EXPECT_EQ(squares->topology->vertexCount, 6u + 8);
}

/// Front and top of a cube, each one unit along its own normal: the edge between goes half of both.
TEST(ExtrudeFaces, sharedVerticesGoToTheMean)
{
    const SharedMesh mesh = extruded(*solidCube(), {0, 1}, alongNormal(1));
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{-.5F, -.5F, 1.5F})); // of the front alone
    EXPECT_EQ(pointOf(mesh, 10), (Vec3f{.5F, 1, 1}));       // of both
    FaceExtrusion thick;
    thick.motion.thickness = 1; // here the faces come to this distance
    const SharedMesh plate = extruded(*solidCube(), {0, 1}, thick);
    EXPECT_EQ(pointOf(plate, 10), (Vec3f{.5F, 1.5F, 1.5F}));
    EXPECT_EQ(pointOf(plate, 8), (Vec3f{-.5F, -.5F, 1.5F}));
}

TEST(ExtrudeFaces, scaledThenSetIn)
{
    FaceExtrusion extrusion;
    extrusion.motion.localScale = {.5, 1, 1}; // x runs along the first edge, 0 to 1
    extrusion.motion.offset = .1;
    const SharedMesh mesh = extruded(*solidCube(), {0}, extrusion);
    EXPECT_NEAR(pointOf(mesh, 8).x, -.25 + .1, 1e-7);
    EXPECT_NEAR(pointOf(mesh, 8).y, -.5 + .1, 1e-7);
    EXPECT_NEAR(pointOf(mesh, 10).x, .25 - .1, 1e-7);
    // Between two faces that stay together only the outline comes in.
    FaceExtrusion inset;
    inset.motion.offset = .25;
    const SharedMesh pair = extruded(grid(2, 1), {0, 1}, inset);
    EXPECT_EQ(pointOf(pair, 6), (Vec3f{.25F, .25F, 0}));
    EXPECT_EQ(pointOf(pair, 7), (Vec3f{1, .25F, 0}));
}

TEST(ExtrudeFaces, turnedAndMovedAboutThePivot)
{
    FaceExtrusion extrusion;
    extrusion.motion.pivot = {0, 0, .5};
    extrusion.motion.scale = {2, 2, 1};
    extrusion.motion.rotate = {0, 0, std::numbers::pi / 2};
    extrusion.motion.translate = {0, 0, 3};
    const SharedMesh mesh = extruded(*solidCube(), {0}, extrusion);
    EXPECT_NEAR(pointOf(mesh, 8).x, 1, 1e-6); // (-1, -1) a quarter turn on
    EXPECT_NEAR(pointOf(mesh, 8).y, -1, 1e-6);
    EXPECT_NEAR(pointOf(mesh, 8).z, 3.5, 1e-6);

    FaceExtrusion world = alongNormal(1);
    world.motion.toSpace = scaling({1, 1, 4}); // one unit there is a quarter here
    EXPECT_NEAR(pointOf(extruded(*solidCube(), {0}, world), 8).z, .75, 1e-6);
}

TEST(ExtrudeFaces, uvsOfWallsStandInTheSamePlace)
{
    const SharedMesh cube = solidCube();
    const SharedMesh mesh = extruded(*cube, {0}, alongNormal(1));
    const UvSet& set = mesh->uvSets.front();
    EXPECT_EQ(set.points->size(), 14u + 4);
    const std::uint32_t corner = mesh->topology->firstCorner(6);
    const auto uv = [&](std::uint32_t i) {
        return (*set.points)[static_cast<std::size_t>((*set.corners)[corner + i])];
    };
    EXPECT_EQ(uv(0), uv(3));
    EXPECT_EQ(uv(1), uv(2));
    EXPECT_EQ(uv(0), (*cube->uvSets.front().points)[0]);
}

TEST(ExtrudeFaces, wallsAreInTheGroupsOfTheirFace)
{
    MeshData mesh = *solidCube();
    addGroup(mesh, 7, {0, 3});
    const SharedMesh result = extruded(mesh, {0}, alongNormal(1));
    EXPECT_EQ(*result->groups.front().faces, (Numbers{0, 3, 6, 7, 8, 9}));
}

TEST(ExtrudeFaces, tooManyWallsAreRefused)
{
    FaceExtrusion extrusion = alongNormal(1);
    extrusion.divisions = kMaxExtrudedFaces;
    EXPECT_EQ(extruded(*solidCube(), {0}, extrusion), nullptr);
}

TEST(ExtrudeFaces, anyFacesOfABallStayClosed)
{
    std::mt19937 random(7);
    const SharedMesh ball = makeSphere({.axisCells = 8, .heightCells = 6}, {});
    for (int round = 0; round < 30; ++round) {
        FaceExtrusion extrusion = alongNormal(.1);
        extrusion.isTogether = round % 2 == 0;
        extrusion.divisions = upTo(3, random);
        const SharedMesh mesh = extruded(
            *ball, someOf(ball->topology->faceCount(), upTo(6, random), random), extrusion);
        ASSERT_NE(mesh, nullptr);
        EXPECT_TRUE(hasNoBorder(*mesh));
        EXPECT_TRUE(hasNothingLoose(*mesh));
        if (!extrusion.isTogether) {
            EXPECT_TRUE(isClosed(*mesh));
            EXPECT_EQ(eulerNumber(*mesh), 2); // each face only grows a box
        }
    }
}

/// The border of a square: one wall beside it, which continues its plane with y pointing back.
TEST(ExtrudeEdges, aBorderGrowsOutwards)
{
    const MeshData square = grid(1, 1);
    EdgeExtrusion extrusion;
    extrusion.motion.localTranslate = {0, -1, 0};
    const SharedMesh mesh = extrudeEdges(square, Numbers{1}, extrusion); // from 1 to 3, at x = 1
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(outerLoops(*mesh), (std::vector<Loop>{{0, 1, 3, 2}, {3, 1, 4, 5}}));
    EXPECT_EQ(pointOf(mesh, 4), (Vec3f{2, 0, 0}));
    EXPECT_EQ(pointOf(mesh, 5), (Vec3f{2, 1, 0}));
    const Pairs edges = edgesOf(*mesh);
    EXPECT_EQ(Pairs(edges.begin() + 4, edges.end()), (Pairs{{1, 4}, {3, 5}, {4, 5}}));
    EXPECT_NEAR(totalArea(*mesh).z, 2, 1e-6); // it looks the same way

    extrusion.motion.localTranslate = {0, 0, 1}; // along the face's normal
    EXPECT_EQ(pointOf(extrudeEdges(square, Numbers{1}, extrusion), 4), (Vec3f{1, 0, 1}));
}

/// Two borders that meet in a corner: together they share the new vertex, which goes to the mean.
TEST(ExtrudeEdges, togetherOrApart)
{
    const MeshData square = grid(1, 1);
    EdgeExtrusion extrusion;
    extrusion.motion.localTranslate = {0, -1, 0};
    const SharedMesh joined = extrudeEdges(square, Numbers{0, 1}, extrusion);
    EXPECT_EQ(joined->topology->vertexCount, 4u + 3);
    EXPECT_EQ(pointOf(joined, 5), (Vec3f{1.5F, -.5F, 0})); // of vertex 1
    extrusion.isTogether = false;
    EXPECT_EQ(extrudeEdges(square, Numbers{0, 1}, extrusion)->topology->vertexCount, 4u + 4);
    extrusion.divisions = 3;
    EXPECT_EQ(extrudeEdges(square, Numbers{0}, extrusion)->topology->faceCount(), 1u + 3);
}

/// Corner 3 of a cube: its edges 1 (from 2), 5 (from 1) and 7 (to 5) are split a quarter from it,
/// and each of its three faces gives up a triangle.
TEST(ExtrudeVertices, aCornerOfACube)
{
    VertexExtrusion extrusion;
    extrusion.width = .25;
    const SharedMesh mesh = extrudeVertices(*solidCube(), Numbers{3}, extrusion);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->topology->vertexCount, 8u + 3);
    EXPECT_EQ(mesh->topology->faceCount(), 6u + 3);
    const Pairs edges = edgesOf(*mesh);
    const Pairs expected{{3, 8}, {3, 9}, {5, 10}};
    EXPECT_EQ(Pairs(edges.begin() + 12, edges.begin() + 15), expected);
    EXPECT_EQ(edges[7], (std::pair<std::uint32_t, std::uint32_t>{3, 10}));
    EXPECT_EQ(pointOf(mesh, 9), (Vec3f{.5F, .25F, .5F}));
    EXPECT_TRUE(isClosed(*mesh));
    EXPECT_EQ(eulerNumber(*mesh), 2);
    EXPECT_NEAR(sixVolumes(*mesh), 6, 1e-6); // nothing is cut away yet

    extrusion.length = 1;
    const float out = .5F + static_cast<float>(1 / std::sqrt(3.0));
    const Vec3f tip = pointOf(extrudeVertices(*solidCube(), Numbers{3}, extrusion), 3);
    EXPECT_NEAR(tip.x, out, 1e-6);
    EXPECT_NEAR(tip.z, out, 1e-6);
}

TEST(ExtrudeVertices, neighboursShareTheirEdge)
{
    VertexExtrusion extrusion;
    extrusion.width = .25;
    const SharedMesh mesh = extrudeVertices(*solidCube(), Numbers{0, 1}, extrusion);
    ASSERT_NE(mesh, nullptr);
    // Edge 0 from vertex 0 to vertex 1 has three pieces: a quarter at both ends.
    EXPECT_EQ(pointOf(mesh, 8), (Vec3f{-.25F, -.5F, .5F}));
    EXPECT_EQ(pointOf(mesh, 11), (Vec3f{.25F, -.5F, .5F}));
    EXPECT_TRUE(isClosed(*mesh));
    EXPECT_EQ(eulerNumber(*mesh), 2);
}

} // namespace
} // namespace host::geometry::test
