// Nodes that draw out, cut, divide, bevel and bridge parts of meshes.
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <numbers>

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::grid;
using geometry::test::loopsOf;
using geometry::test::sixVolumes;
using test::ToyContext;
using Mesh = Shared<MeshData>;

/// An operation on a cube or another mesh, with the components that it names.
struct Operation {
    Operation(const NodeCompute& row, std::vector<std::string> texts,
              MeshData mesh = *geometry::makeCube({}, {}))
        : context(row)
    {
        context.values["inputPolymesh"] = Value::of(std::move(mesh));
        context.values["inputComponents"] = Value::of(ComponentList{std::move(texts)});
    }
    Mesh result() { return context.compute("output").data<MeshData>(); }
    std::size_t faces() { return result()->topology->faceCount(); }
    std::size_t vertices() { return result()->topology->vertexCount; }
    Vec3f point(std::uint32_t vertex) { return (*result()->points)[vertex]; }
    /// What comes in goes on, told as an approximation.
    bool isPassedOn()
    {
        return context.compute("output").data<MeshData>() ==
                   context.values["inputPolymesh"].data<MeshData>() &&
               context.timesUncomputed > 0;
    }

    ToyContext context;
};

TEST(PolyExtrudeFace, movesInItsFrameAndInTheWorld)
{
    Operation operation(kPolyExtrudeFace, {"f[0]"});
    operation.context.setVector("localTranslate", 0, 0, 2);
    EXPECT_EQ(operation.point(8), (Vec3f{-.5F, -.5F, 2.5F}));
    EXPECT_EQ(operation.faces(), 10u);
    operation.context.values["inputMatrix"] = Value::of(scaling({1, 1, 4}));
    EXPECT_EQ(operation.point(8).z, 2.5F); // the matrix counts in world space only
    operation.context.set("worldSpace", 1);
    EXPECT_EQ(operation.point(8).z, 1.0F);
    operation.context.set("divisions", 3);
    EXPECT_EQ(operation.faces(), 6u + 12);
    EXPECT_EQ(operation.context.timesUncomputed, 0u);
}

TEST(PolyExtrudeFace, offsetThicknessAndApart)
{
    Operation operation(kPolyExtrudeFace, {"f[4:5]"});
    operation.context.set("offset", .125);
    operation.context.set("thickness", 1);
    operation.context.set("keepFacesTogether", 0);
    EXPECT_EQ(operation.faces(), 6u + 8);
    // Of vertex 7, the first end of the right side's first edge.
    EXPECT_EQ(operation.point(8), (Vec3f{1.5F, -.375F, -.375F}));
}

TEST(PolyExtrudeFace, whatIsLeftOutIsTold)
{
    Operation curved(kPolyExtrudeFace, {"f[0]"});
    curved.context.connected.insert("inputProfile");
    EXPECT_EQ(curved.faces(), 10u);
    EXPECT_EQ(curved.context.timesUncomputed, 1u);
    EXPECT_TRUE(Operation(kPolyExtrudeFace, {"f[6]"}).isPassedOn()); // there is none
    Operation off(kPolyExtrudeFace, {"f[0]"});
    off.context.set("nodeState", 1);
    EXPECT_EQ(off.faces(), 6u);
    EXPECT_EQ(off.context.timesUncomputed, 0u);
}

TEST(PolyExtrudeFace, pullsAndDirectionsAreTold)
{
    for (const char* name : {"weight", "attraction", "random", "localDirectionY"}) {
        for (const NodeCompute* row : {&kPolyExtrudeFace, &kPolyChipOff}) {
            Operation operation(*row, {"f[0]"});
            operation.context.set(name, 1);
            EXPECT_EQ(operation.faces(), row == &kPolyChipOff ? 7u : 10u) << name;
            EXPECT_EQ(operation.context.timesUncomputed, 1u) << row->type << name;
            EXPECT_EQ(operation.context.lack, Lack::Setting);
        }
    }
    Operation longer(kPolyExtrudeFace, {"f[0]"}); // the same direction
    longer.context.setVector("localDirection", 2, 0, 0);
    EXPECT_EQ(longer.faces(), 10u);
    EXPECT_EQ(longer.context.timesUncomputed, 0u);
}

/// What is not supported counts only where the operation is carried out.
TEST(PolygonTopology, lacksNothingWhileItIsOff)
{
    struct Case {
        const NodeCompute& row;
        const char* component;
        const char* setting;
        double value;
    };
    for (const Case& one :
         {Case{kPolyExtrudeFace, "f[0]", "weight", 1}, Case{kPolyExtrudeEdge, "e[0]", "random", 1},
          Case{kPolyChipOff, "f[0]", "attraction", 1}, Case{kPolySplitRing, "e[4]", "fixQuads", 1},
          Case{kPolyBridgeEdge, "e[0]", "twist", 1}, Case{kPolyCut, "f[0]", "extractFaces", 1},
          Case{kPolySubdEdge, "e[0]", "size", 1},
          Case{kPolyExtrudeVertex, "vtx[0]", "divisions", 2},
          Case{kPolyBevel3, "e[0]", "mitering", 1}}) {
        Operation off(one.row, {one.component});
        off.context.set(one.setting, one.value);
        off.context.set("nodeState", 1);
        EXPECT_EQ(off.faces(), 6u) << one.row.type;
        EXPECT_EQ(off.context.timesUncomputed, 0u) << one.row.type;
        off.context.set("nodeState", 0);
        off.result();
        EXPECT_GT(off.context.timesUncomputed, 0u) << one.row.type;
    }
}

TEST(PolyExtrudeEdge, growsABorder)
{
    Operation operation(kPolyExtrudeEdge, {"e[1]"}, grid(1, 1));
    operation.context.setVector("localTranslate", 0, 0, 1);
    EXPECT_EQ(operation.faces(), 2u);
    EXPECT_EQ(operation.point(4), (Vec3f{1, 0, 1}));
}

TEST(PolyExtrudeVertex, splitsItsEdges)
{
    Operation operation(kPolyExtrudeVertex, {"vtx[3]"});
    operation.context.set("width", .25);
    EXPECT_EQ(operation.vertices(), 11u);
    EXPECT_EQ(operation.point(9), (Vec3f{.5F, .25F, .5F}));
    operation.context.set("divisions", 2);
    operation.result();
    EXPECT_EQ(operation.context.timesUncomputed, 1u);
}

TEST(PolySplitRing, weightsAndTypes)
{
    Operation operation(kPolySplitRing, {"e[4:5]", "e[8:9]"});
    operation.context.set("rootEdge", 5);
    operation.context.set("weight", .25);
    EXPECT_EQ(operation.point(8).y, -.25F);
    EXPECT_EQ(operation.faces(), 10u);
    operation.context.set("splitType", 2);
    operation.context.set("divisions", 3);
    EXPECT_EQ(operation.faces(), 6u + 12);
    EXPECT_EQ(operation.context.timesUncomputed, 0u);
    operation.context.setElement("profileCurve_FloatValue", {0}, Value(0.5));
    operation.result();
    EXPECT_EQ(operation.context.timesUncomputed, 1u);
}

TEST(PolySplitRing, unequalStepsAndQuadsAtTheEndsAreTold)
{
    for (const auto& [name, value] : {std::pair{"useEqualMultiplier", 0.0}, {"fixQuads", 1.0}}) {
        Operation operation(kPolySplitRing, {"e[4:5]", "e[8:9]"});
        operation.context.set("rootEdge", 5);
        operation.context.set(name, 1 - value);
        EXPECT_EQ(operation.faces(), 10u) << name;
        EXPECT_EQ(operation.context.timesUncomputed, 0u) << name;
        operation.context.set(name, value);
        EXPECT_EQ(operation.faces(), 10u) << name;
        EXPECT_EQ(operation.context.timesUncomputed, 1u) << name;
    }
}

/// Descriptions are numbers of edges with the highest bit set.
TEST(PolySplit, cutsAlongALine)
{
    constexpr std::int32_t kFirst = std::numeric_limits<std::int32_t>::min();
    NumericArray descriptions(NumberStorage::Int32, 1);
    const std::vector<std::int32_t> numbers{kFirst + 0, kFirst + 3, kFirst + 2, kFirst + 1, kFirst};
    descriptions.store<std::int32_t>(0, numbers);
    NumericArray parts(NumberStorage::Float, 1);
    const std::vector<float> quarters(5, .75F);
    parts.store<float>(0, quarters);
    Operation operation(kPolySplit, {});
    operation.context.arrays["desc"] = &descriptions;
    operation.context.arrays["edge"] = &parts;
    EXPECT_EQ(operation.faces(), 10u);
    EXPECT_EQ(operation.point(8), (Vec3f{.25F, -.5F, .5F}));
    EXPECT_EQ(operation.context.timesUncomputed, 0u);

    operation.context.set("subdivision", 2);
    EXPECT_TRUE(operation.isPassedOn());
    Operation none(kPolySplit, {});
    EXPECT_TRUE(none.isPassedOn());
    EXPECT_EQ(none.context.lack, Lack::Components);
    none.context.setElement("faceId", {0, 0}, Value(2.0)); // a line stored the other way
    EXPECT_TRUE(none.isPassedOn());
    EXPECT_EQ(none.context.lack, Lack::Setting);
    const std::vector<std::int32_t> beyond{kFirst + 12};
    descriptions.store<std::int32_t>(1, beyond); // a cube has edges 0 to 11
    operation.context.set("subdivision", 1);
    EXPECT_TRUE(operation.isPassedOn());
}

TEST(PolySubdFace, levelsAndGrids)
{
    Operation operation(kPolySubdFace, {"f[*]"});
    EXPECT_EQ(operation.faces(), 24u);
    operation.context.set("divisions", 2);
    EXPECT_EQ(operation.faces(), 96u);
    operation.context.set("mode", 1);
    EXPECT_EQ(operation.faces(), 72u); // four triangles of each face, three of each of those
    operation.context.set("subdMethod", 1);
    operation.context.set("divisionsU", 2);
    operation.context.set("divisionsV", 3);
    Operation one(kPolySubdFace, {"f[1]"});
    one.context.values.insert(operation.context.values.begin(), operation.context.values.end());
    EXPECT_EQ(one.faces(), 5u + 6);
}

TEST(PolySubdEdge, dividesEdges)
{
    Operation operation(kPolySubdEdge, {"e[0]"});
    operation.context.set("divisions", 3);
    EXPECT_EQ(operation.vertices(), 11u);
}

TEST(PolyPoke, raisesAPoint)
{
    Operation operation(kPolyPoke, {"f[1]"});
    operation.context.setVector("localTranslate", 0, 0, 1);
    EXPECT_EQ(operation.faces(), 9u);
    EXPECT_EQ(operation.point(8), (Vec3f{0, 1.5F, 0}));
}

TEST(PolyBevel, offsetsAndFractions)
{
    Operation operation(kPolyBevel3, {"e[0:11]"});
    operation.context.set("offset", .125);
    EXPECT_EQ(operation.faces(), 26u);
    operation.context.set("offsetAsFraction", 1);
    operation.context.set("fraction", .5);
    // a face keeps half of its width, but for a ten-thousandth
    EXPECT_NEAR(std::fabs(operation.point(0).x * operation.point(0).y * operation.point(0).z),
                .5 * .25 * .25, 1e-4);
    EXPECT_EQ(operation.context.timesUncomputed, 0u);
    operation.context.set("segments", 2);
    operation.result();
    EXPECT_EQ(operation.context.timesUncomputed, 1u); // corners are filled with one face
    operation.context.set("chamfer", 0);
    EXPECT_TRUE(operation.isPassedOn());

    Operation former(kPolyBevel, {"e[0:11]"});
    former.context.set("offsetAsFraction", 1);
    former.context.set("offset", .5); // here the offset is the part
    EXPECT_NEAR(std::fabs(former.point(0).x * former.point(0).y * former.point(0).z),
                .5 * .25 * .25, 1e-4);
}

TEST(PolyBridgeEdge, joinsBorders)
{
    MeshData pair = geometry::test::meshOf(
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {3, 0, 0}, {4, 0, 0}, {3, 1, 0}, {4, 1, 0}},
        {{{0, 1, 3, 2}}, {{4, 5, 7, 6}}});
    Operation operation(kPolyBridgeEdge, {"e[1]", "e[7]"}, std::move(pair));
    EXPECT_EQ(operation.faces(), 4u); // one division between
    operation.context.set("divisions", 0);
    EXPECT_EQ(operation.faces(), 3u);
    EXPECT_TRUE(Operation(kPolyBridgeEdge, {"e[0:3]"}).isPassedOn());
}

} // namespace
} // namespace host::nodes
