// Texture coordinates that come from elsewhere: from other meshes, from what a node stores, or not
// at all.
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::grid;
using test::ToyContext;
using Mesh = Shared<MeshData>;

/// A square with a set of one point for each corner, at (corner, 0).
MeshData texturedSquare(const std::string& setName)
{
    MeshData mesh = grid(1, 1);
    geometry::test::addCornerUvs(mesh, setName);
    mesh.currentUvSet = setName;
    return mesh;
}

class TransferAttributes : public ::testing::Test {
protected:
    ToyContext context{kTransferAttributes};

    void set(MeshData target, MeshData source)
    {
        context.setElement("inputGeometry", {0}, Value::of(std::move(target)));
        context.setElement("source", {0}, Value::of(std::move(source)));
    }
    Mesh result() { return context.compute("outputGeometry", 0).data<MeshData>(); }
};

TEST_F(TransferAttributes, pointsByNumber)
{
    MeshData wide = grid(1, 1);
    wide.points = std::make_shared<const std::vector<Vec3f>>(
        std::vector<Vec3f>{{0, 0, 0}, {5, 0, 0}, {0, 1, 0}, {5, 1, 0}});
    set(grid(1, 1), wide);
    context.set("transferPositions", 1);
    context.set("sampleSpace", 4);
    EXPECT_EQ((*result()->points)[3].x, 5.0F);
    context.set("envelope", 0.5);
    EXPECT_EQ((*result()->points)[3].x, 3.0F); // half way from 1 to 5
    EXPECT_EQ(context.timesUncomputed, 0u);
    context.set("sampleSpace", 0); // the nearest places are not looked for
    EXPECT_EQ((*result()->points)[3].x, 1.0F);
    EXPECT_GT(context.timesUncomputed, 0u);
}

TEST_F(TransferAttributes, allSetsOrOne)
{
    set(texturedSquare("map1"), texturedSquare("other"));
    context.set("transferUVs", 2);
    context.set("sampleSpace", 4);
    EXPECT_EQ(result()->uvSets.size(), 2u);
    EXPECT_EQ(result()->currentUvSet, "map1");
    context.set("transferUVs", 1);
    context.values["targetUVSet"] = Value::of(std::string("map1"));
    context.set("flipUVs", 1);
    ASSERT_EQ(result()->uvSets.size(), 1u);
    EXPECT_EQ(result()->uvSets[0].name, "map1");
    EXPECT_EQ((*result()->uvSets[0].points)[3].x, -2.0F); // 1 - 3
    EXPECT_EQ((*result()->uvSets[0].points)[3].y, 0.0F);
    EXPECT_EQ(context.timesUncomputed, 0u);
}

/// In the world the nearest place is the vertex of the same number where both lie on each other.
TEST_F(TransferAttributes, inTheWorldFromAMeshInTheSamePlace)
{
    set(texturedSquare("map1"), texturedSquare("other"));
    context.set("transferUVs", 2);
    EXPECT_EQ(result()->uvSets.size(), 2u);
    EXPECT_EQ(context.timesUncomputed, 0u);
    MeshData away = texturedSquare("other");
    away.shape.node = 7; // its shape stands elsewhere
    context.parent = translation({3, 0, 0});
    set(texturedSquare("map1"), away);
    EXPECT_EQ(result()->uvSets.size(), 2u); // near, but not what a search would find
    EXPECT_EQ(context.timesUncomputed, 1u);
    EXPECT_EQ(context.lack, Lack::Textures);
    context.set("sampleSpace", 1); // each in its own space
    EXPECT_EQ(result()->uvSets.size(), 2u);
    EXPECT_EQ(context.timesUncomputed, 1u);
    set(texturedSquare("map1"), grid(2, 1));
    EXPECT_EQ(result()->uvSets.size(), 1u);
    EXPECT_EQ(context.timesUncomputed, 2u);
}

/// What a public scene stores for a cube: six faces of four corners, twenty places.
TEST(Unfold3DUnfold, takesWhatIsStored)
{
    ToyContext context(kUnfold3DUnfold);
    const auto result = [&] { return context.compute("outMesh").data<MeshData>(); };
    context.values["inMesh"] = Value::of(MeshData(*geometry::makeCube({}, {})));
    std::vector<double> us(20, 0.25);
    us[16] = 0.42626238;
    context.values["uvSetName"] = Value::of(std::string("map1"));
    context.values["uvCountsOfFaces"] = Value::of(std::vector<std::int32_t>{6, 4});
    context.values["uvIdsOfFaceCorners"] = Value::of(std::vector<std::int32_t>{
        0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 1, 16, 17, 2, 11, 18, 19, 8});
    context.values["storedUs"] = Value::of(us);
    context.values["storedVs"] = Value::of(std::vector<double>(20, 0.5));
    EXPECT_EQ(result()->uvSets[0].points->size(), 14u); // those of the cube
    EXPECT_EQ(context.lack, Lack::Textures);
    context.timesUncomputed = 0;
    context.set("meshInfoExists", 1);
    const Mesh mesh = result();
    EXPECT_EQ(context.timesUncomputed, 0u);
    EXPECT_EQ(mesh->uvSets[0].points->size(), 20u);
    EXPECT_EQ((*mesh->uvSets[0].corners)[17], 16); // the second corner of face 4
    EXPECT_EQ((*mesh->uvSets[0].points)[16].x, 0.42626238F);
    context.values["uvCountsOfFaces"] = Value::of(std::vector<std::int32_t>{2147483647, 4});
    EXPECT_EQ(result()->uvSets[0].points->size(), 14u);
    context.values["uvCountsOfFaces"] = Value::of(std::vector<std::int32_t>{6, 4});
    context.values["storedUs"] = Value::of(std::vector<double>(3, 0));
    EXPECT_EQ(result()->uvSets[0].points->size(), 14u);
}

TEST(KeptUvs, theMeshIsHandedOnAndTold)
{
    for (const NodeCompute* row : {&kPolyContourProj, &kPolyMoveFacetUV, &kPolyOptUvs,
                                   &kPolyStraightenUVBorder, &kPolyUVRectangle}) {
        ToyContext context(*row);
        context.values["inputPolymesh"] = Value::of(grid(1, 1));
        context.values["inputComponents"] = Value::of(ComponentList{{"map[0:3]"}});
        EXPECT_EQ(context.compute("output").data<MeshData>(),
                  context.values["inputPolymesh"].data<MeshData>());
        EXPECT_EQ(context.lack, Lack::Textures) << row->type;
    }
    ToyContext manipulated(kPolyProj);
    manipulated.values["inputPolymesh"] = Value::of(grid(1, 1));
    EXPECT_NE(manipulated.compute("output").data<MeshData>(), nullptr);
    EXPECT_EQ(manipulated.timesUncomputed, 0u);
}

} // namespace
} // namespace host::nodes
