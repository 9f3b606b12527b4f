// Nodes that reduce meshes, take them apart, or take over what other meshes have.
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/geometry/mesh/primitives/roundSolids.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"
#include "tests/unit/host_nodes/polygon/meshOperation.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::grid;
using test::ToyContext;

/// Half of the 760 triangles of a sphere of twenty by twenty; each step takes two.
TEST(PolyReduce, aPartOfTheTriangles)
{
    ToyContext context(kPolyReduce);
    setInput(context, *geometry::makeSphere({}, {}), {"f[*]"});
    context.set("percentage", 50);
    EXPECT_EQ(outputOf(context)->topology->faceCount(), 380u);
    EXPECT_EQ(context.lack, Lack::Approximate);
    context.set("termination", 2);
    context.set("triangleCount", 100);
    EXPECT_EQ(outputOf(context)->topology->faceCount(), 100u);
    context.set("termination", 1);
    context.set("vertexCount", 200);
    EXPECT_EQ(outputOf(context)->topology->vertexCount, 200u);
}

TEST(PolyReduce, whatIsNotThereIsTold)
{
    ToyContext context(kPolyReduce);
    setInput(context, grid(1, 1), {"f[7]"});
    context.set("percentage", 50);
    EXPECT_EQ(outputOf(context), context.values["inputPolymesh"].data<MeshData>());
    EXPECT_EQ(context.lack, Lack::Components);
}

TEST(PolySplitEdge, edgesAndVertices)
{
    ToyContext edge(kPolySplitEdge);
    setInput(edge, grid(2, 1), {"e[1]"});
    EXPECT_EQ(outputOf(edge)->topology->vertexCount, 8u);
    ToyContext vertex(kPolySplitVert);
    setInput(vertex, *geometry::makeCube({}, {}), {"vtx[3]"});
    EXPECT_EQ(outputOf(vertex)->topology->vertexCount, 10u);
    EXPECT_EQ(vertex.timesUncomputed, 0u);
}

/// A wider square gives its points, one of other vertices gives nothing.
TEST(PolyTransfer, pointsByNumber)
{
    ToyContext context(kPolyTransfer);
    setInput(context, grid(1, 1), {});
    MeshData wide = grid(1, 1);
    wide.points = std::make_shared<const std::vector<Vec3f>>(
        std::vector<Vec3f>{{0, 0, 0}, {5, 0, 0}, {0, 1, 0}, {5, 1, 0}});
    geometry::test::addCornerUvs(wide);
    context.values["otherPoly"] = Value::of(wide);
    EXPECT_EQ((*outputOf(context)->points)[3].x, 1.0F);
    EXPECT_EQ(outputOf(context)->uvSets.size(), 1u);
    context.set("vertices", 1);
    context.set("uvSets", 0);
    EXPECT_EQ((*outputOf(context)->points)[3].x, 5.0F);
    EXPECT_TRUE(outputOf(context)->uvSets.empty());
    EXPECT_EQ(context.timesUncomputed, 0u);
    context.values["otherPoly"] = Value::of(grid(2, 1));
    EXPECT_EQ((*outputOf(context)->points)[3].x, 1.0F);
    EXPECT_EQ(context.lack, Lack::Input);
}

/// The reason goes with what is passed on.
TEST(PolyBevel, aSettingThatIsNotSupportedIsTold)
{
    ToyContext context(kPolyBevel3);
    setInput(context, *geometry::makeCube({}, {}), {"e[4]"});
    context.set("chamfer", 0);
    EXPECT_EQ(outputOf(context)->topology->faceCount(), 6u);
    EXPECT_EQ(context.lack, Lack::Setting);
    setInput(context, *geometry::makeCube({}, {}), {"e[12]"});
    context.set("chamfer", 1);
    EXPECT_EQ(outputOf(context)->topology->faceCount(), 6u);
    EXPECT_EQ(context.lack, Lack::Components);
}

} // namespace
} // namespace host::nodes
