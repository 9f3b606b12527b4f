// Meshes united and split.
#include "host/geometry/mesh/edit/splitMesh.h"
#include "host/geometry/mesh/edit/uniteMeshes.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::geometry::test {
namespace {

std::vector<std::string> uvSetNames(const MeshData& mesh)
{
    std::vector<std::string> names;
    for (const UvSet& set : mesh.uvSets) {
        names.push_back(set.name);
    }
    return names;
}

TEST(UniteMeshes, partsFollowEachOther)
{
    MeshData first = grid(2, 1); // 6 vertices, 7 edges, 2 faces
    MeshData second = grid(1, 1);
    addCornerUvs(first);
    addCornerUvs(second);
    addGroup(first, 3, {1});
    addGroup(second, 3, {0});
    addGroup(second, 5, {0});
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&first, {}}, {&second, translation({0, 0, 9})}},
                    UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(outerLoops(*after), (std::vector<Loop>{{0, 1, 4, 3}, {1, 2, 5, 4}, {6, 7, 9, 8}}));
    EXPECT_EQ(edgesOf(*after)[7], (std::pair<std::uint32_t, std::uint32_t>{6, 7}));
    EXPECT_EQ((*after->points)[9], (Vec3f{1, 1, 9}));
    ASSERT_EQ(uvSetNames(*after), (std::vector<std::string>{"map1"}));
    EXPECT_EQ((*after->uvSets[0].corners)[8], 8);
    EXPECT_EQ((*after->uvSets[0].points)[8].x, 0);
    ASSERT_EQ(after->groups.size(), 2u);
    EXPECT_EQ(*after->groups[0].faces, (Numbers{1, 2}));
    EXPECT_EQ(*after->groups[1].faces, (Numbers{2}));
}

TEST(UniteMeshes, groupsOfPointsMoveUp)
{
    MeshData first = grid(2, 1); // 6 vertices
    MeshData second = grid(1, 1);
    addPointGroup(first, 3, {0, 5});
    addPointGroup(second, 4, {2});
    addPointGroup(second, 3, {1, 3});
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&first, {}}, {&second, {}}}, UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(after->pointGroups.size(), 2u);
    EXPECT_EQ(after->pointGroups[0].id, 3);
    EXPECT_EQ(*after->pointGroups[0].points, (Numbers{0, 5, 7, 9}));
    EXPECT_EQ(after->pointGroups[1].id, 4);
    EXPECT_EQ(*after->pointGroups[1].points, (Numbers{8}));
}

TEST(SplitMesh, groupsOfPointsGoWithTheirPoints)
{
    // Two squares that have vertices 1 and 4 in common: 0 1 4 3 and 1 2 5 4.
    MeshData mesh = grid(2, 1);
    addPointGroup(mesh, 3, {2, 4});
    addPointGroup(mesh, 4, {0});
    const auto parts = splitMesh(mesh, MeshParts{{0, 1}, 2});
    ASSERT_EQ(parts.size(), 2u);
    ASSERT_EQ(parts[0]->pointGroups.size(), 2u); // of vertices 0 1 3 4
    EXPECT_EQ(parts[0]->pointGroups[0].id, 3);
    EXPECT_EQ(*parts[0]->pointGroups[0].points, (Numbers{3}));
    EXPECT_EQ(parts[0]->pointGroups[1].id, 4);
    EXPECT_EQ(*parts[0]->pointGroups[1].points, (Numbers{0}));
    ASSERT_EQ(parts[1]->pointGroups.size(), 1u); // of vertices 1 2 4 5
    EXPECT_EQ(parts[1]->pointGroups[0].id, 3);
    EXPECT_EQ(*parts[1]->pointGroups[0].points, (Numbers{1, 2}));
}

TEST(UniteMeshes, setsThatAreNotMergedGetFreeNames)
{
    // A scene of two primitives united so has the sets map1 and map11.
    MeshData square = grid(1, 1);
    addCornerUvs(square);
    const SharedMesh after = uniteMeshes(
        std::vector<UnitedMesh>{{&square, {}}, {&square, {}}, {&square, {}}}, UvSetMerging::None);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(uvSetNames(*after), (std::vector<std::string>{"map1", "map11", "map12"}));
    EXPECT_EQ(*after->uvSets[1].corners,
              (std::vector<std::int32_t>{-1, -1, -1, -1, 0, 1, 2, 3, -1, -1, -1, -1}));
}

TEST(UniteMeshes, facesOfPartsWithoutASetHaveNone)
{
    MeshData plain = grid(1, 1);
    MeshData mapped = grid(1, 1);
    addCornerUvs(mapped, "other");
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&mapped, {}}, {&plain, {}}}, UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(*after->uvSets[0].corners, (std::vector<std::int32_t>{0, 1, 2, 3, -1, -1, -1, -1}));
}

TEST(UniteMeshes, volumesAddUp)
{
    const MeshData box = cube();
    const Matrix4 large = scaling({2, 3, 4}) * translation({10, 0, 0});
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&box, {}}, {&box, large}}, UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    EXPECT_NEAR(sixVolumes(*after), 6.0 * (1 + 24), 1e-4);
    EXPECT_EQ(eulerNumber(*after), 4);
}

TEST(UniteMeshes, lockedNormalsTurnWithTheirPart)
{
    // Two sheets of one normal each: a hard square has four fans, one for each vertex.
    MeshData flat = grid(1, 1);
    MeshData locked = grid(1, 1);
    locked.lockedNormals = std::make_shared<const std::vector<Vec3f>>(
        std::vector<Vec3f>{{1, 0, 0}, {1e20F, 1e20F, 1e20F}});
    Matrix4 quarter; // x to y
    quarter.m[0] = {0, 1, 0, 0};
    quarter.m[1] = {-1, 0, 0, 0};
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&flat, {}}, {&locked, quarter}}, UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(after->lockedNormals->size(), 8u);
    EXPECT_EQ((*after->lockedNormals)[0].x, 1e20F);
    EXPECT_EQ((*after->lockedNormals)[4], (Vec3f{0, 1, 0}));
    EXPECT_EQ((*after->lockedNormals)[5].x, 1e20F);
}

TEST(UniteMeshes, holesAndCreasesComeAlong)
{
    MeshData plain = grid(1, 1);
    MeshData holed =
        meshOf({{0, 0, 0}, {3, 0, 0}, {0, 3, 0}, {1, 1, 0}, {1, 1.5F, 0}, {1.5F, 1, 0}},
               {{{0, 1, 2}, {3, 4, 5}}});
    holed.creases = std::make_shared<const MeshCreases>(MeshCreases{{2}, {1.5F}, {0}, {2}});
    holed.invisibleFaces = std::make_shared<const Numbers>(Numbers{0});
    const SharedMesh after =
        uniteMeshes(std::vector<UnitedMesh>{{&plain, {}}, {&holed, {}}}, UvSetMerging::ByName);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(loopsOf(*after, 1), (std::vector<Loop>{{4, 5, 6}, {7, 8, 9}}));
    EXPECT_EQ(after->creases->edges, (Numbers{6}));
    EXPECT_EQ(after->creases->vertices, (Numbers{4}));
    EXPECT_EQ(*after->invisibleFaces, (Numbers{1}));
    EXPECT_EQ(uniteMeshes({}, UvSetMerging::ByName), nullptr);
}

TEST(ShellsOf, facesWithAVertexInCommonAreOne)
{
    // Triangles 0 and 2 meet in vertex 2; triangle 1 stands alone.
    const MeshData mesh = meshOf(
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 0, 0}, {6, 0, 0}, {5, 1, 0}, {1, 2, 0}, {0, 2, 0}},
        {{{0, 1, 2}}, {{3, 4, 5}}, {{2, 6, 7}}});
    const MeshParts shells = shellsOf(*mesh.topology);
    EXPECT_EQ(shells.count, 2u);
    EXPECT_EQ(shells.ofFace, (Numbers{0, 1, 0}));
}

TEST(SplitMesh, whatWasUnitedComesApartAgain)
{
    MeshData first = grid(2, 1);
    MeshData second = cube();
    for (MeshData* mesh : {&first, &second}) {
        addCornerUvs(*mesh);
        addGroup(*mesh, 3, {1});
    }
    second.creases = std::make_shared<const MeshCreases>(MeshCreases{{2, 11}, {1.5F, 2}, {7}, {3}});
    second.invisibleFaces = std::make_shared<const Numbers>(Numbers{0, 4});
    const SharedMesh united = uniteMeshes(
        std::vector<UnitedMesh>{{&first, {}}, {&second, {}}, {&first, {}}}, UvSetMerging::ByName);
    ASSERT_NE(united, nullptr);
    const auto parts = splitMesh(*united, shellsOf(*united->topology));
    ASSERT_EQ(parts.size(), 3u);
    const std::vector<const MeshData*> expected{&first, &second, &first};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(isConsistent(*parts[i]));
        EXPECT_EQ(*parts[i]->points, *expected[i]->points);
        EXPECT_EQ(parts[i]->topology->corners, expected[i]->topology->corners);
        EXPECT_EQ(edgesOf(*parts[i]), edgesOf(*expected[i]));
        EXPECT_EQ(*parts[i]->uvSets[0].corners, *expected[i]->uvSets[0].corners);
        EXPECT_EQ(*parts[i]->uvSets[0].points, *expected[i]->uvSets[0].points);
        ASSERT_EQ(parts[i]->groups.size(), 1u);
        EXPECT_EQ(*parts[i]->groups[0].faces, (Numbers{1}));
    }
    EXPECT_EQ(parts[1]->creases->edges, second.creases->edges);
    EXPECT_EQ(parts[1]->creases->vertexValues, second.creases->vertexValues);
    EXPECT_EQ(*parts[1]->invisibleFaces, *second.invisibleFaces);
    EXPECT_EQ(parts[0]->invisibleFaces, nullptr);
}

TEST(SplitMesh, whatTwoPartsUseBothHave)
{
    MeshParts parts;
    parts.ofFace = {1, 0, 1};
    parts.count = 3;
    const auto meshes = splitMesh(grid(3, 1), parts);
    ASSERT_EQ(meshes.size(), 3u);
    EXPECT_EQ(outerLoops(*meshes[0]), (std::vector<Loop>{{0, 1, 3, 2}}));
    EXPECT_EQ(outerLoops(*meshes[1]), (std::vector<Loop>{{0, 1, 5, 4}, {2, 3, 7, 6}}));
    EXPECT_EQ(meshes[2]->topology->faceCount(), 0u);
    EXPECT_TRUE(isConsistent(*meshes[2]));
}

} // namespace
} // namespace host::geometry::test
