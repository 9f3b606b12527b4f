// Meshes cut along planes, and mirrored.
#include "host/geometry/mesh/edit/cutFaces.h"
#include "host/geometry/mesh/edit/insertVertices.h"
#include "host/geometry/mesh/edit/mirrorFaces.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <limits>

namespace host::geometry::test {
namespace {

Numbers allFacesOf(const MeshData& mesh)
{
    Numbers faces(mesh.topology->faceCount());
    for (std::uint32_t face = 0; face < faces.size(); ++face) {
        faces[face] = face;
    }
    return faces;
}

CutPlane planeAt(const Vec3d& point, const Vec3d& normal)
{
    CutPlane plane;
    plane.point = point;
    plane.normal = normal;
    return plane;
}

TEST(InsertVertices, allFacesOfAnEdgeGetTheVertex)
{
    // The edge 1-4 (number 1) of a row of two squares; its vertex is 6, its second half edge 7.
    MeshData before = grid(2, 1);
    addCornerUvs(before);
    const SharedMesh after = insertVertices(before, std::vector<EdgePoint>{{1, 0.25}});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 6, 4, 3}, {1, 2, 5, 4, 6}}));
    EXPECT_EQ((*after->points)[6], (Vec3f{1, 0.25F, 0}));
    EXPECT_EQ(edgesOf(*after)[1], (std::pair<std::uint32_t, std::uint32_t>{1, 6}));
    EXPECT_EQ(edgesOf(*after)[7], (std::pair<std::uint32_t, std::uint32_t>{4, 6}));
    // Face 0 has the uvs 1 and 2 at the ends, face 1 (from the far end) 7 and 4: two new ones.
    ASSERT_EQ(after->uvSets[0].points->size(), 10u);
    EXPECT_EQ((*after->uvSets[0].points)[8].x, 1.25F);
    EXPECT_EQ((*after->uvSets[0].points)[9].x, 4.75F); // a quarter of the way from 4 to 7
}

TEST(InsertVertices, cornersThatShareUvsShareTheNewOne)
{
    MeshData before = grid(2, 1);
    std::vector<std::int32_t> ids;
    for (std::uint32_t c = 0; c < before.topology->corners.size(); ++c) {
        ids.push_back(static_cast<std::int32_t>(before.topology->cornerVertex(c)));
    }
    before.uvSets.push_back({"map1", std::make_shared<const std::vector<Vec2f>>(6),
                             std::make_shared<const std::vector<std::int32_t>>(ids)});
    const SharedMesh after = insertVertices(before, std::vector<EdgePoint>{{1, 0.5}});
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->uvSets[0].points->size(), 7u);
}

TEST(CutFaces, aCubeInTwo)
{
    // Across the four upright edges of the front's side walls at y = 0.25: they are 1-3 (1), 2-0
    // (3), 5-7 (7) and 6-4 (9), and get the vertices 8 9 10 11. The front 0 1 3 2 begins below.
    const MeshData before = cube();
    const CutMesh cut = cutFaces(before, allFacesOf(before), planeAt({0, 0.25, 0}, {0, 1, 0}));
    ASSERT_NE(cut.mesh, nullptr);
    EXPECT_EQ(outerLoops(*cut.mesh), (std::vector<Loop>{{0, 1, 8, 9},
                                                        {2, 3, 5, 4},
                                                        {4, 5, 10, 11},
                                                        {6, 7, 1, 0},
                                                        {1, 7, 10, 8},
                                                        {6, 0, 9, 11},
                                                        {3, 2, 9, 8},
                                                        {7, 6, 11, 10},
                                                        {5, 3, 8, 10},
                                                        {2, 4, 11, 9}}));
    EXPECT_EQ(cut.mesh->topology->edges.size(), 12u + 4 + 4);
    EXPECT_EQ(eulerNumber(*cut.mesh), 2);
    EXPECT_NEAR(sixVolumes(*cut.mesh), 6, 1e-5);
    EXPECT_EQ((*cut.mesh->points)[8], (Vec3f{0.5F, 0.25F, 0.5F}));
    EXPECT_EQ(cut.sides, (std::vector<int>{-1, 1, 1, -1, -1, -1, 1, -1, 1, 1}));
}

TEST(CutFaces, onlyNamedFacesAreCut)
{
    const MeshData before = grid(1, 2);
    const CutMesh cut = cutFaces(before, Numbers{0}, planeAt({0.5, 0, 0}, {1, 0, 0}));
    ASSERT_NE(cut.mesh, nullptr);
    // face 1 gets the vertex on the edge between them and stays whole
    EXPECT_EQ(outerLoops(*cut.mesh),
              (std::vector<Loop>{{0, 6, 7, 2}, {2, 7, 3, 5, 4}, {1, 3, 7, 6}}));
    EXPECT_EQ(cut.sides, (std::vector<int>{-1, 0, 1}));
}

TEST(CutFaces, verticesInThePlaneAreUsed)
{
    const MeshData before = grid(1, 1);
    const CutMesh cut = cutFaces(before, Numbers{0}, planeAt({0, 0, 0}, normalized({1, -1, 0})));
    ASSERT_NE(cut.mesh, nullptr);
    // each part begins at its first corner off the plane
    EXPECT_EQ(outerLoops(*cut.mesh), (std::vector<Loop>{{1, 3, 0}, {2, 0, 3}}));
    EXPECT_EQ(cut.mesh->topology->vertexCount, 4u);
    // a plane along a side cuts nothing
    const CutMesh beside = cutFaces(before, Numbers{0}, planeAt({0, 0, 0}, {0, 1, 0}));
    EXPECT_EQ(outerLoops(*beside.mesh), outerLoops(before));
}

TEST(CutFaces, aConcaveFaceFallsIntoThreeParts)
{
    // A U: cut above its ground both arms come off.
    const MeshData before = meshOf(
        {{0, 0, 0}, {5, 0, 0}, {5, 4, 0}, {4, 4, 0}, {4, 1, 0}, {1, 1, 0}, {1, 4, 0}, {0, 4, 0}},
        {{{0, 1, 2, 3, 4, 5, 6, 7}}});
    const CutMesh cut = cutFaces(before, Numbers{0}, planeAt({0, 2, 0}, {0, 1, 0}));
    ASSERT_NE(cut.mesh, nullptr);
    EXPECT_EQ(cut.mesh->topology->faceCount(), 3u);
    EXPECT_NEAR(totalArea(*cut.mesh).z, totalArea(before).z, 1e-6);
    const KeptBehind below = keepBehind(before, Numbers{0}, planeAt({0, 2, 0}, {0, 1, 0}));
    ASSERT_NE(below.mesh, nullptr);
    EXPECT_EQ(below.faces, (Numbers{0}));
    EXPECT_NEAR(totalArea(*below.mesh).z, 5 + 1 + 1, 1e-6);
    EXPECT_EQ(loopsOf(*below.mesh, 0)[0].size(), 8u);
}

TEST(CutFaces, areaAndVolumeStayWhereverThePlaneIs)
{
    std::mt19937 random(4);
    const auto number = [&] { return static_cast<double>(random() % 2000) / 1000 - 1; };
    for (int round = 0; round < 200; ++round) {
        const MeshData before = round % 2 == 0 ? cube() : grid(4, 3);
        const CutPlane plane = planeAt({number(), number() / 2, number() / 3},
                                       normalized({number(), number(), number()}));
        const CutMesh cut = cutFaces(before, allFacesOf(before), plane);
        ASSERT_NE(cut.mesh, nullptr);
        EXPECT_NEAR(totalArea(*cut.mesh).z, totalArea(before).z, 1e-4);
        EXPECT_NEAR(sixVolumes(*cut.mesh), sixVolumes(before), 1e-4);
        EXPECT_EQ(eulerNumber(*cut.mesh), eulerNumber(before));
        EXPECT_TRUE(hasNothingLoose(*cut.mesh));
        for (const Loop& loop : outerLoops(*cut.mesh)) {
            EXPECT_GE(loop.size(), 3u);
        }
    }
}

TEST(CutFaces, aPlaneThatIsNoneCutsNothing)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const MeshData before = cube();
    const CutMesh cut = cutFaces(before, allFacesOf(before), planeAt({nan, 0, 0}, {0, nan, 0}));
    ASSERT_NE(cut.mesh, nullptr);
    EXPECT_EQ(outerLoops(*cut.mesh), outerLoops(before));
}

Mirroring acrossX(double x, double threshold)
{
    Mirroring mirroring;
    mirroring.point = {x, 0, 0};
    mirroring.normal = {1, 0, 0};
    mirroring.threshold = threshold;
    mirroring.smoothingAngle = 0.5;
    return mirroring;
}

TEST(MirrorFaces, aRowGrowsToTheOtherSide)
{
    // Two squares from x = 0 to 2, mirrored at x = 2: the images of 2 and 5 are merged with them,
    // those of 0 1 3 4 are 6 7 8 9. Images run the other way round from the same first corner, so
    // that they look to the same side. Of the seven edge images the one of 2-5 (number 5) goes.
    const MeshData before = grid(2, 1);
    const SharedMesh after = mirrorFaces(before, allFacesOf(before), acrossX(2, 0.001));
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after),
              (std::vector<Loop>{{0, 1, 4, 3}, {1, 2, 5, 4}, {6, 8, 9, 7}, {7, 9, 5, 2}}));
    EXPECT_EQ((*after->points)[6], (Vec3f{4, 0, 0}));
    EXPECT_EQ((*after->points)[7], (Vec3f{3, 0, 0}));
    EXPECT_EQ(after->topology->edges.size(), 13u);
    EXPECT_NEAR(totalArea(*after).z, 4, 1e-9);
    // 0-1 1-4 4-3 3-0 1-2 2-5 5-4, then the images of all but 2-5
    EXPECT_EQ(edgesOf(*after)[7], (std::pair<std::uint32_t, std::uint32_t>{6, 7}));
    EXPECT_EQ(edgesOf(*after)[12], (std::pair<std::uint32_t, std::uint32_t>{5, 9}));
    EXPECT_EQ(after->edgeFlags()[5], 1); // flat there
    EXPECT_EQ(after->edgeFlags()[3], 0);
}

TEST(MirrorFaces, mergedVerticesComeToThePlane)
{
    MeshData before = grid(2, 1);
    const auto heightAt = [&](double threshold) {
        return mirrorFaces(before, allFacesOf(before), acrossX(2.25, threshold))
            ->topology->vertexCount;
    };
    EXPECT_EQ(heightAt(0.49), 12u);
    EXPECT_EQ(heightAt(0.5), 10u);
    const SharedMesh after = mirrorFaces(before, allFacesOf(before), acrossX(2.25, 0.5));
    EXPECT_EQ((*after->points)[2], (Vec3f{2.25F, 0, 0}));
    Mirroring automatic = acrossX(2.25, 0); // all border edges have the length 1
    automatic.isThresholdAutomatic = true;
    EXPECT_EQ(mirrorFaces(before, allFacesOf(before), automatic)->topology->vertexCount, 10u);
}

TEST(MirrorFaces, imagesHaveTextureCoordinatesOfTheirOwn)
{
    MeshData before = grid(1, 1);
    addCornerUvs(before);
    addGroup(before, 3, {0});
    Mirroring mirroring = acrossX(1, 0.001);
    mirroring.mergesBorder = false;
    const SharedMesh after = mirrorFaces(before, Numbers{0}, mirroring);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->vertexCount, 8u);
    EXPECT_EQ(after->uvSets[0].points->size(), 8u);
    EXPECT_EQ(*after->uvSets[0].corners, (std::vector<std::int32_t>{0, 1, 2, 3, 4, 7, 6, 5}));
    EXPECT_EQ(*after->groups[0].faces, (Numbers{0, 1}));
}

TEST(MirrorFaces, halfACubeBecomesAWholeOne)
{
    // In a space turned and moved against the object: the plane stands at x = 7 of the space.
    const MeshData box = cube();
    CutPlane plane;
    plane.toSpace = translation({7, -3, 2});
    plane.point = {7, 0, 0};
    plane.normal = {1, 0, 0};
    const KeptBehind half = keepBehind(box, allFacesOf(box), plane);
    ASSERT_NE(half.mesh, nullptr);
    Mirroring mirroring = acrossX(7, 0.001);
    mirroring.toSpace = plane.toSpace;
    const SharedMesh whole = mirrorFaces(*half.mesh, half.faces, mirroring);
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(eulerNumber(*whole), 2);
    EXPECT_NEAR(sixVolumes(*whole), 6, 1e-5);
    EXPECT_EQ(whole->topology->vertexCount, 12u); // four each at the ends and in the plane
    EXPECT_EQ(whole->topology->faceCount(), 10u);
}

} // namespace
} // namespace host::geometry::test
