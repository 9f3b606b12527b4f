#include "host/geometry/mesh/PlainRenderMesh.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <bit>
#include <random>

namespace host::geometry {
namespace {

using test::kCubeFaces;
using test::kCubePoints;
using test::meshOf;
using Faces = std::vector<std::vector<test::Loop>>;
using Floats = std::vector<float>;
using Indices = std::vector<std::uint32_t>;

std::shared_ptr<RenderStreams> plainOf(const MeshData& mesh)
{
    return PlainRenderMesh::make(std::make_shared<const MeshData>(mesh), "map1");
}

Floats numbersOf(const RenderStreams& streams, RenderStream stream)
{
    const std::size_t width = stream == RenderStream::Uvs ? 2 : 3;
    Floats numbers(width * streams.vertexCount(), -99);
    streams.copyVertices(stream, {numbers.data(), streams.vertexCount(), width, width});
    return numbers;
}

Indices indicesOf(const RenderStreams& streams)
{
    Indices indices(3 * streams.firstTriangle(streams.faceCount()));
    streams.copyIndices(0, indices);
    return indices;
}

/// Bits, since 0 and -0 are not the same in a file.
Indices bitsOf(const Floats& numbers)
{
    Indices bits;
    for (const float number : numbers) {
        bits.push_back(std::bit_cast<std::uint32_t>(number));
    }
    return bits;
}

void setUvs(MeshData& mesh, std::vector<Vec2f> points, std::vector<std::int32_t> corners)
{
    mesh.uvSets.assign(1, {"map1", std::make_shared<const std::vector<Vec2f>>(std::move(points)),
                           std::make_shared<const std::vector<std::int32_t>>(std::move(corners))});
}

/// A square and a triangle at its right side, in z = 0; smooth. Vertex 1 is of no face.
MeshData squareAndTriangle()
{
    return meshOf({{0, 0, 0}, {9, 9, 9}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}},
                  {{{0, 2, 3, 4}}, {{2, 5, 3}}}, 1);
}

TEST(PlainRenderMesh, HasTheUsedVerticesInTheOrderOfTheirUse)
{
    MeshData mesh = squareAndTriangle();
    setUvs(mesh, {{.5F, .25F}, {1, 2}, {3, 4}}, {1, 2, -1, 0, 2, 1, -1});
    const auto streams = plainOf(mesh);
    ASSERT_NE(streams, nullptr);
    EXPECT_EQ(streams->vertexCount(), 5U);
    EXPECT_EQ(streams->faceCount(), 2U);
    EXPECT_EQ(streams->firstTriangle(1), 2U);
    EXPECT_EQ(streams->firstTriangle(2), 3U);
    EXPECT_EQ(numbersOf(*streams, RenderStream::Positions),
              (Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0}));
    EXPECT_EQ(numbersOf(*streams, RenderStream::Normals),
              (Floats{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}));
    EXPECT_EQ(numbersOf(*streams, RenderStream::Uvs), (Floats{1, 2, 3, 4, 0, 0, .5F, .25F, 1, 2}));
    // A rectangle is cut from its second corner to its fourth.
    EXPECT_EQ(indicesOf(*streams), (Indices{0, 1, 3, 1, 2, 3, 1, 4, 2}));
}

TEST(PlainRenderMesh, DeliversPartsOfStreams)
{
    const auto streams = plainOf(squareAndTriangle());
    ASSERT_NE(streams, nullptr);
    Floats numbers(7, -1);
    streams->copyVertices(RenderStream::Positions, {numbers.data() + 1, 2, 2, 3});
    EXPECT_EQ(numbers, (Floats{-1, 0, 0, -1, 1, 0, -1}));
    Indices last(3);
    streams->copyIndices(1, last);
    EXPECT_EQ(last, (Indices{1, 4, 2}));
    streams->copyIndices(0, last); // half a square
    EXPECT_EQ(last, (Indices{0, 1, 3}));
}

TEST(PlainRenderMesh, CutsSquaresAsTheMeshSays)
{
    MeshData mesh = squareAndTriangle();
    mesh.quadSplit = QuadSplit::Right;
    EXPECT_EQ(indicesOf(*plainOf(mesh)), (Indices{0, 1, 2, 0, 2, 3, 1, 4, 2}));
    mesh.quadSplit = QuadSplit::Left;
    EXPECT_EQ(indicesOf(*plainOf(mesh)), (Indices{0, 1, 3, 1, 2, 3, 1, 4, 2}));
}

TEST(PlainRenderMesh, GivesBackWhatIsNotWanted)
{
    const auto streams = plainOf(squareAndTriangle());
    ASSERT_NE(streams, nullptr);
    const Floats positions = numbersOf(*streams, RenderStream::Positions);
    for (const RenderStream stream :
         {RenderStream::Normals, RenderStream::Indices, RenderStream::Uvs}) {
        EXPECT_TRUE(streams->has(stream));
        streams->giveBack(stream);
        EXPECT_FALSE(streams->has(stream));
        EXPECT_TRUE(streams->has(RenderStream::Positions));
        EXPECT_EQ(numbersOf(*streams, RenderStream::Positions), positions);
    }
    streams->giveBack(RenderStream::Positions);
    EXPECT_FALSE(streams->has(RenderStream::Positions));
    EXPECT_EQ(streams->vertexCount(), 5U);
    EXPECT_EQ(streams->firstTriangle(2), 3U);
}

TEST(PlainRenderMesh, IsNotForMeshesWhoseVerticesOrFacesAreMore)
{
    EXPECT_NE(plainOf(meshOf(kCubePoints, kCubeFaces, 1)), nullptr);
    EXPECT_EQ(plainOf(meshOf(kCubePoints, kCubeFaces, 0)), nullptr) << "hard edges";

    MeshData seam = squareAndTriangle();
    setUvs(seam, {{0, 0}, {0, 0}}, {0, 0, 0, 0, 1, 0, 0});
    EXPECT_EQ(plainOf(seam), nullptr) << "the square and the triangle disagree at vertex 2";

    const std::vector<Vec3f> row{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
    EXPECT_EQ(plainOf(meshOf(row, {{{0, 1, 2}}, {{0, 3, 4}}}, 1)), nullptr)
        << "two faces that meet in a vertex only";
    EXPECT_EQ(plainOf(meshOf(row, {{{0, 1, 2, 3, 4}}}, 1)), nullptr) << "five corners";
    EXPECT_EQ(plainOf(meshOf(row, {{{0, 1, 2}}, {{2, 1, 0}}}, 1)), nullptr)
        << "back to back: no sum of normals";
    EXPECT_EQ(plainOf(meshOf(row, {{{3, 0, 1}}}, 1)), nullptr) << "without an area";

    MeshData hidden = squareAndTriangle();
    hidden.invisibleFaces = std::make_shared<const Indices>(Indices{1});
    EXPECT_EQ(plainOf(hidden), nullptr);
    MeshData locked = squareAndTriangle();
    locked.lockedNormals = std::make_shared<const std::vector<Vec3f>>(1, Vec3f{1, 0, 0});
    EXPECT_EQ(plainOf(locked), nullptr);
    EXPECT_EQ(plainOf(meshOf({}, {}, 1)), nullptr);
}

/// What came of many meshes.
struct Tally {
    int plain = 0;
    int others = 0;
};

/// Compares with the way that splits and cuts whatever comes.
void compare(const MeshData& mesh, Tally& tally)
{
    const RenderMesh whole = extractRenderMesh(mesh, "map1");
    const auto plain = plainOf(mesh);
    (plain != nullptr ? tally.plain : tally.others)++;
    const auto streams = extractRenderStreams(std::make_shared<const MeshData>(mesh), "map1");
    ASSERT_EQ(streams->vertexCount(), whole.positions.size());
    ASSERT_EQ(streams->faceCount() + 1, whole.faceFirstTriangle.size());
    for (std::uint32_t face = 0; face <= streams->faceCount(); ++face) {
        ASSERT_EQ(streams->firstTriangle(face), whole.faceFirstTriangle[face]);
    }
    ASSERT_EQ(indicesOf(*streams), whole.indices);
    const auto expected = streamsOf(std::make_shared<const RenderMesh>(whole));
    for (const RenderStream stream :
         {RenderStream::Positions, RenderStream::Normals, RenderStream::Uvs}) {
        ASSERT_EQ(bitsOf(numbersOf(*streams, stream)), bitsOf(numbersOf(*expected, stream)));
    }
}

/// A crumpled grid of squares of which some are two triangles, and now and then something that
/// makes it no plain mesh.
MeshData crumpledGrid(std::mt19937& random)
{
    const auto below = [&](std::uint32_t limit) { return std::uint32_t(random() % limit); };
    const std::uint32_t width = 1 + below(12);
    const std::uint32_t height = 1 + below(12);
    const float most =
        below(2) == 0 ? 1.0F : 0.1F; // with the second all angles are near right ones
    std::vector<Vec3f> points;
    for (std::uint32_t i = 0; i < (width + 1) * (height + 1); ++i) {
        const auto jitter = [&] { return static_cast<float>(below(1000)) * 1e-3F * most; };
        points.push_back({static_cast<float>(i % (width + 1)) + jitter(),
                          static_cast<float>(i / (width + 1)) + jitter(), jitter()});
    }
    Faces faces;
    for (std::uint32_t i = 0; i < width * height; ++i) {
        const std::uint32_t a = i / width * (width + 1) + i % width;
        const std::uint32_t d = a + width + 1;
        if (below(4) == 0) {
            faces.push_back({{a, a + 1, d}});
            faces.push_back({{a + 1, d + 1, d}});
        } else {
            faces.push_back({{a, a + 1, d + 1, d}});
        }
    }
    test::Lists lists = test::listsOf(faces, 1);
    if (below(4) == 0) {
        lists.edges[3 * below(static_cast<std::uint32_t>(lists.edges.size() / 3)) + 2] = 0;
    }
    MeshData mesh = test::meshOfLists(points, lists);
    std::vector<std::int32_t> ids;
    for (std::uint32_t corner = 0; corner < mesh.topology->corners.size(); ++corner) {
        ids.push_back(static_cast<std::int32_t>(mesh.topology->cornerVertex(corner)));
    }
    if (below(4) == 0) {
        ids[below(static_cast<std::uint32_t>(ids.size()))] = 0;
    }
    setUvs(mesh, std::vector<Vec2f>(points.size(), Vec2f{.5F, 1}), ids);
    mesh.normalWeighting = static_cast<NormalWeighting>(below(4));
    mesh.quadSplit = static_cast<QuadSplit>(below(3));
    return mesh;
}

TEST(RenderStreams, AreTheSameByEitherWay)
{
    Tally tally;
    compare(meshOf(kCubePoints, kCubeFaces, 1), tally);
    compare(meshOf(kCubePoints, kCubeFaces, 0), tally);
    std::mt19937 random(20);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        compare(crumpledGrid(random), tally);
        if (testing::Test::HasFatalFailure()) {
            return;
        }
    }
    EXPECT_GT(tally.plain, 100);
    EXPECT_GT(tally.others, 100);
}

TEST(RenderStreams, OfAWholeMeshAreGivenBackByItsOnlyHolder)
{
    auto mesh = std::make_shared<const RenderMesh>(
        extractRenderMesh(meshOf(kCubePoints, kCubeFaces, 0), "map1"));
    const auto streams = streamsOf(mesh);
    streams->giveBack(RenderStream::Normals);
    EXPECT_TRUE(streams->has(RenderStream::Normals));
    EXPECT_EQ(mesh->normals.size(), 24U);
    mesh.reset();
    for (const RenderStream stream : {RenderStream::Positions, RenderStream::Normals,
                                      RenderStream::Uvs, RenderStream::Indices}) {
        streams->giveBack(stream);
        EXPECT_FALSE(streams->has(stream));
    }
    EXPECT_EQ(streams->vertexCount(), 24U);
    EXPECT_EQ(streams->faceCount(), 6U);
    EXPECT_EQ(streams->firstTriangle(6), 12U);
}

} // namespace
} // namespace host::geometry
