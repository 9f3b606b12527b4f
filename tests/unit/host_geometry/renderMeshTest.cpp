#include "host/geometry/mesh/renderMesh.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <algorithm>
#include <random>

namespace host::geometry {
namespace {

using test::kCubeFaces;
using test::kCubePoints;
using test::meshOf;
using Indices = std::vector<std::uint32_t>;

UvSet uvSet(const std::string& name, std::vector<Vec2f> points, std::vector<std::int32_t> corners)
{
    return {name, std::make_shared<const std::vector<Vec2f>>(std::move(points)),
            std::make_shared<const std::vector<std::int32_t>>(std::move(corners))};
}

/// Two unit squares side by side in z = 0, on the vertices 0..5; hard edges.
MeshData twoSquares()
{
    return meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}},
                  {{{0, 1, 2, 3}}, {{1, 4, 5, 2}}});
}

TEST(RenderMesh, HardCubeHas24VerticesAnd12Triangles)
{
    const RenderMesh result = extractRenderMesh(meshOf(kCubePoints, kCubeFaces, 0), "map1");
    EXPECT_EQ(result.positions.size(), 24U);
    EXPECT_EQ(result.normals.size(), 24U);
    EXPECT_EQ(result.uvs.size(), 24U);
    EXPECT_EQ(result.indices.size(), 36U);
    EXPECT_EQ(result.faceFirstTriangle, (Indices{0, 2, 4, 6, 8, 10, 12}));
    // The first face is the square 0 1 3 2, cut from its second corner to its fourth.
    EXPECT_EQ(Indices(result.indices.begin(), result.indices.begin() + 6),
              (Indices{0, 1, 3, 1, 2, 3}));
    EXPECT_EQ(result.positions[2], kCubePoints[3]);
    EXPECT_EQ(result.normals[2], (Vec3f{0, 0, 1}));
}

TEST(RenderMesh, SmoothCubeHas8Vertices)
{
    const RenderMesh result = extractRenderMesh(meshOf(kCubePoints, kCubeFaces, 1), "map1");
    ASSERT_EQ(result.positions.size(), 8U);
    const std::size_t firstUse[8] = {0, 1, 3, 2, 5, 4, 7, 6};
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(result.positions[i], kCubePoints[firstUse[i]]);
    }
}

TEST(RenderMesh, EqualNormalValuesAreSharedAcrossHardEdges)
{
    const RenderMesh result = extractRenderMesh(twoSquares(), "");
    EXPECT_EQ(result.positions.size(), 6U);
    EXPECT_EQ(result.indices, (Indices{0, 1, 3, 1, 2, 3, 1, 4, 2, 4, 5, 2}));
}

TEST(RenderMesh, DifferentUvIdsSplitEvenWhereTheirValuesAreEqual)
{
    MeshData mesh = twoSquares();
    mesh.uvSets.push_back(uvSet("map1", {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {1, 0}, {2, 0}, {2, 1}},
                                {0, 1, 2, 3, 4, 5, 6, 2}));
    const RenderMesh result = extractRenderMesh(mesh, "map1");
    // Vertex 1 has the ids 1 and 4, both (1 0); vertex 2 has id 2 twice.
    ASSERT_EQ(result.positions.size(), 7U);
    EXPECT_EQ(result.positions[4], (Vec3f{1, 0, 0}));
    EXPECT_EQ(result.uvs[4], (Vec2f{1, 0}));
    EXPECT_EQ(result.uvs[1], (Vec2f{1, 0}));
    EXPECT_EQ(result.uvs[6], (Vec2f{2, 1}));
}

/// Triangles around vertex 0, which has the texture coordinate k % uvs in triangle k; the rim has
/// the last one throughout.
MeshData fan(std::uint32_t triangles, std::uint32_t uvs)
{
    std::vector<Vec3f> points{{0, 0, 1}};
    std::vector<std::vector<test::Loop>> faces;
    std::vector<std::int32_t> corners;
    for (std::uint32_t k = 0; k < triangles; ++k) {
        const auto place = static_cast<float>(k);
        points.push_back({place, place * place, 0});
        faces.push_back({{0, k + 1, (k + 1) % triangles + 1}});
        const auto rim = static_cast<std::int32_t>(uvs);
        corners.insert(corners.end(), {static_cast<std::int32_t>(k % uvs), rim, rim});
    }
    MeshData mesh = meshOf(points, faces, 1);
    mesh.uvSets.push_back(uvSet("map1", std::vector<Vec2f>(uvs + 1), corners));
    return mesh;
}

TEST(RenderMesh, AVertexOfVeryManyFacesSplitsByItsTextureCoordinatesInLittleTime)
{
    // All smooth: one normal each. The middle splits into as many as it has coordinates, the rim
    // stays whole. Comparing each of the 60,000 with all before it would take seconds.
    for (const std::uint32_t uvs : {1U, 33U, 34U, 60'000U}) {
        EXPECT_EQ(extractRenderMesh(fan(60'000, uvs), "map1").positions.size(), 60'000U + uvs)
            << uvs;
    }
}

TEST(RenderMesh, CornersWithoutUvHaveZeroAndDoNotShareWithOthers)
{
    MeshData mesh = twoSquares();
    mesh.uvSets.push_back(uvSet("map1", {{0.5F, 0.5F}}, {0, 0, 0, 0, -1, -1, -1, -1}));
    const RenderMesh result = extractRenderMesh(mesh, "map1");
    ASSERT_EQ(result.positions.size(), 8U);
    EXPECT_EQ(result.uvs[3], (Vec2f{0.5F, 0.5F}));
    EXPECT_EQ(result.uvs[4], (Vec2f{0, 0}));
}

TEST(RenderMesh, WithoutAnyUvSetUvsAreZero)
{
    const RenderMesh result = extractRenderMesh(twoSquares(), "map1");
    EXPECT_EQ(result.uvs, std::vector<Vec2f>(6));
}

TEST(RenderMesh, UvSetIsTheNamedOneElseTheCurrentOneElseTheFirst)
{
    MeshData mesh = twoSquares();
    const std::vector<std::int32_t> corners(8, 0);
    mesh.uvSets = {uvSet("a", {{1, 1}}, corners), uvSet("b", {{2, 2}}, corners),
                   uvSet("c", {{3, 3}}, corners)};
    mesh.currentUvSet = "b";
    EXPECT_EQ(extractRenderMesh(mesh, "c").uvs[0], (Vec2f{3, 3}));
    EXPECT_EQ(extractRenderMesh(mesh, "missing").uvs[0], (Vec2f{2, 2}));
    EXPECT_EQ(extractRenderMesh(mesh, "").uvs[0], (Vec2f{2, 2}));
    mesh.currentUvSet.clear();
    EXPECT_EQ(extractRenderMesh(mesh, "missing").uvs[0], (Vec2f{1, 1}));
}

TEST(RenderMesh, EmptyUvSetGivesZeros)
{
    MeshData mesh = twoSquares();
    mesh.uvSets.push_back({"map1", nullptr, nullptr});
    EXPECT_EQ(extractRenderMesh(mesh, "map1").uvs, std::vector<Vec2f>(6));
}

TEST(RenderMesh, InvisibleFacesHaveNoTrianglesAndUseNoVertex)
{
    MeshData mesh = twoSquares();
    mesh.invisibleFaces = std::make_shared<const Indices>(Indices{0});
    const RenderMesh result = extractRenderMesh(mesh, "");
    EXPECT_EQ(result.faceFirstTriangle, (Indices{0, 0, 2}));
    EXPECT_EQ(result.indices, (Indices{0, 1, 3, 1, 2, 3}));
    EXPECT_EQ(result.positions, (std::vector<Vec3f>{{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}}));
}

TEST(RenderMesh, InvisibleFacesStillCountForTheNormalsOfTheirNeighbours)
{
    // A right-angled fold with a smooth edge: the visible half keeps its leaning normals.
    MeshData mesh = meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}},
                           {{{0, 1, 2, 3}}, {{1, 0, 4, 5}}}, 1);
    mesh.invisibleFaces = std::make_shared<const Indices>(Indices{1});
    const RenderMesh result = extractRenderMesh(mesh, "");
    ASSERT_EQ(result.normals.size(), 4U);
    EXPECT_NEAR(result.normals[0].y, std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(result.normals[0].z, std::sqrt(0.5), 1e-6);
    EXPECT_EQ(result.normals[2], (Vec3f{0, 0, 1}));
}

TEST(RenderMesh, LockedNormalsOfEqualValueAreShared)
{
    MeshData mesh = meshOf(kCubePoints, kCubeFaces, 0);
    mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(24, Vec3f{0, 5, 0});
    const RenderMesh result = extractRenderMesh(mesh, "");
    EXPECT_EQ(result.positions.size(), 8U);
    EXPECT_EQ(result.normals, std::vector<Vec3f>(8, Vec3f{0, 1, 0}));
}

TEST(RenderMesh, ConcaveFaceWithAHoleUsesOnlyItsOwnVertices)
{
    const MeshData mesh = meshOf(
        {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 3, 0}, {0, 4, 0}, {1, 1, 0}, {1, 2, 0}, {2, 1, 0}},
        {{{0, 1, 2, 3, 4}, {5, 6, 7}}});
    const RenderMesh result = extractRenderMesh(mesh, "");
    EXPECT_EQ(result.positions.size(), 8U);
    EXPECT_EQ(result.indices.size(), 3U * 8);
    double area = 0;
    for (std::size_t i = 0; i < result.indices.size(); i += 3) {
        const Vec3d a = toDouble(result.positions[result.indices[i]]);
        const Vec3d b = toDouble(result.positions[result.indices[i + 1]]);
        const Vec3d c = toDouble(result.positions[result.indices[i + 2]]);
        EXPECT_GT(cross(b - a, c - a).z, 0);
        area += cross(b - a, c - a).z / 2;
    }
    EXPECT_NEAR(area, 14 - 0.5, 1e-12); // 16, the notch of 2, the hole of a half
}

TEST(RenderMesh, RandomListsNeverBreakIt)
{
    std::mt19937 random(99);
    const auto below = [&](std::uint32_t limit) {
        return static_cast<std::uint32_t>(random() % limit);
    };
    const auto smallNumbers = [&](std::size_t count, std::int32_t low, std::uint32_t range) {
        std::vector<std::int32_t> numbers(count);
        for (std::int32_t& number : numbers) {
            number = low + static_cast<std::int32_t>(below(range));
        }
        return numbers;
    };
    std::size_t keptCorners = 0;
    for (int round = 0; round < 3000; ++round) {
        // Few vertices, so that chance closes some of the loops; one round in eight is out of
        // range.
        const std::uint32_t vertexCount = below(4);
        const std::uint32_t edgeCount = below(13);
        const std::uint32_t beyond = round % 8 == 0 ? 1 : 0;
        const auto low = -static_cast<std::int32_t>(beyond);
        const std::vector<std::int32_t> edges =
            smallNumbers(3 * edgeCount, low, std::max(vertexCount + 2 * beyond, 1U));
        FaceLists faces;
        faces.corners = smallNumbers(below(60), low - static_cast<std::int32_t>(edgeCount),
                                     std::max(2 * (edgeCount + beyond), 1U));
        std::vector<std::uint32_t> loopSizes(below(20));
        std::vector<std::uint32_t> loopCounts(below(12));
        for (std::uint32_t& size : loopSizes) {
            size = below(6);
        }
        for (std::uint32_t& count : loopCounts) {
            count = below(4);
        }
        faces.loopSizes = loopSizes;
        faces.faceLoopCounts = loopCounts;
        std::vector<std::int32_t> uvs = smallNumbers(faces.corners.size(), -1, 3);
        BuiltTopology built = buildTopology(vertexCount, edges, std::move(faces));
        removeCorners(uvs, built.damage.droppedCorners, built.topology.corners.size());
        keptCorners += built.topology.corners.size();

        std::vector<Vec3f> points(vertexCount);
        for (Vec3f& point : points) {
            point = {static_cast<float>(below(3)), static_cast<float>(below(3)), 0};
        }
        MeshData mesh;
        mesh.topology = std::make_shared<const MeshTopology>(std::move(built.topology));
        mesh.edgeSmooth = shareEdgeFlags(std::move(built.edgeSmooth));
        mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
        mesh.uvSets.push_back(uvSet("map1", {{0, 0}, {1, 1}}, uvs));
        ASSERT_TRUE(isConsistent(mesh)) << "round " << round;
        const RenderMesh result = extractRenderMesh(mesh, "map1");
        ASSERT_EQ(result.faceFirstTriangle.size(), mesh.topology->faceCount() + 1U);
        ASSERT_EQ(result.indices.size(), 3U * result.faceFirstTriangle.back());
        for (const std::uint32_t index : result.indices) {
            ASSERT_LT(index, result.positions.size());
        }
    }
    EXPECT_GT(keptCorners, 3000U);
}

TEST(RenderMesh, EmptyMeshGivesAnEmptyResult)
{
    MeshData mesh;
    mesh.topology = std::make_shared<const MeshTopology>();
    const RenderMesh result = extractRenderMesh(mesh, "map1");
    EXPECT_TRUE(result.positions.empty());
    EXPECT_TRUE(result.indices.empty());
    EXPECT_EQ(result.faceFirstTriangle, (Indices{0}));
}

} // namespace
} // namespace host::geometry
