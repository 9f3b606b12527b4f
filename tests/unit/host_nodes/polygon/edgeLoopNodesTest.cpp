// Nodes that spin edges, duplicate loops, swing faces, draw circles and make holes.
#include "host/geometry/mesh/primitives/boxes.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"
#include "tests/unit/host_nodes/polygon/meshOperation.h"

#include <numbers>

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::grid;
using geometry::test::Loop;
using geometry::test::outerLoops;
using test::ToyContext;

NumericArray numbers(const std::vector<std::int32_t>& values)
{
    NumericArray array(NumberStorage::Int32, 1);
    array.store<std::int32_t>(0, values);
    return array;
}

/// Once forward where nothing is said; the loops are those of the kernel's test.
TEST(PolySpinEdge, forwardAndBack)
{
    ToyContext context(kPolySpinEdge);
    setInput(context, grid(2, 1), {"e[1]"});
    EXPECT_EQ(outerLoops(*outputOf(context))[0], (Loop{2, 3, 0, 1}));
    context.set("reverse", 1);
    EXPECT_EQ(outerLoops(*outputOf(context))[0], (Loop{0, 5, 4, 3}));
    context.set("offset", 6);
    EXPECT_EQ(outerLoops(*outputOf(context))[0], (Loop{1, 4, 3, 0}));
    EXPECT_EQ(context.timesUncomputed, 0u);
    setInput(context, grid(2, 1), {"e[0]"}); // on the border
    EXPECT_EQ(outerLoops(*outputOf(context))[0], (Loop{0, 1, 4, 3}));
    EXPECT_EQ(context.lack, Lack::Input);
}

TEST(PolyDuplicateEdge, weightsAndWhatIsLeftOut)
{
    ToyContext context(kPolyDuplicateEdge);
    setInput(context, grid(2, 2), {"e[2]", "e[6]"});
    context.set("offset", 0.25);
    EXPECT_EQ((*outputOf(context)->points)[9].y, 1.25F);
    EXPECT_EQ(context.timesUncomputed, 0u);
    context.set("offset", -7);
    EXPECT_EQ((*outputOf(context)->points)[9].y, 1.0F);
    context.set("insertWithEdgeFlow", 1);
    EXPECT_EQ(outputOf(context)->topology->faceCount(), 8u);
    EXPECT_EQ(context.lack, Lack::Setting);
    context.set("insertWithEdgeFlow", 0);
    setInput(context, grid(3, 3), {"e[7]"});
    outputOf(context);
    EXPECT_EQ(context.lack, Lack::Approximate);
}

/// On all sides as far as on the first: a quarter of a side of 1 where the others have 2.
TEST(PolyDuplicateEdge, equalDistances)
{
    MeshData mesh = grid(2, 2);
    auto points = *mesh.points;
    points[8].y = 3; // above 5, which is 2 from it then
    mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
    ToyContext context(kPolyDuplicateEdge);
    setInput(context, mesh, {"e[2]", "e[6]"});
    context.set("offset", 0.25);
    EXPECT_EQ((*outputOf(context)->points)[10].y, 1.5F);
    context.set("splitType", 0);
    EXPECT_EQ((*outputOf(context)->points)[10].y, 1.25F);
}

TEST(PolyWedgeFace, aboutAnEdgeOrAnAxis)
{
    ToyContext context(kPolyWedgeFace);
    setInput(context, *geometry::makeCube({}, {}), {"f[0]"});
    const NumericArray hinge = numbers({4});
    context.arrays["edge"] = &hinge;
    EXPECT_EQ(outputOf(context)->topology->vertexCount, 10u);
    context.set("divisions", 4);
    EXPECT_EQ(outputOf(context)->topology->vertexCount, 16u);
    EXPECT_EQ(context.timesUncomputed, 0u);
    const NumericArray missing = numbers({40});
    context.arrays["edge"] = &missing;
    EXPECT_EQ(outputOf(context)->topology->vertexCount, 8u);
    EXPECT_EQ(context.timesUncomputed, 1u);
    context.arrays.clear();
    context.setVector("center", -1.5, 0, 0.5);
    context.setVector("axis", 0, -1, 0);
    EXPECT_EQ(outputOf(context)->topology->vertexCount, 8u + 4 * 4);
}

/// An uneven scale: the circle is one in the world.
TEST(PolyCircularize, inTheWorld)
{
    ToyContext context(kPolyCircularize);
    setInput(context, grid(1, 1), {"f[0]"});
    context.values["inputMatrix"] = Value::of(scaling({3, 1, 1}));
    const auto points = *outputOf(context)->points;
    // the corners of 3 by 1 are sqrt(2.5) from the middle; the first one keeps its direction
    for (const Vec3f& point : points) {
        const double x = (point.x - 0.5) * 3;
        const double y = point.y - 0.5;
        EXPECT_NEAR(x * x + y * y, 2.5, 1e-5);
    }
    EXPECT_NEAR(points[0].x, 0, 1e-6);
    EXPECT_NEAR((points[1].x - 0.5) * 3, 0.5, 1e-5); // a quarter turn on from (-1.5, -0.5)
    EXPECT_EQ(context.timesUncomputed, 0u);
    setInput(context, grid(1, 1), {"vtx[0:3]"});
    EXPECT_EQ((*outputOf(context)->points)[1].x, 1.0F);
    EXPECT_EQ(context.lack, Lack::Components);
    setInput(context, grid(2, 2), {"f[0:3]"}); // a vertex inside
    outputOf(context);
    EXPECT_EQ(context.lack, Lack::Approximate);
}

TEST(PolyHoleFace, marksAndUnmarks)
{
    ToyContext context(kPolyHoleFace);
    MeshData mesh = grid(2, 2);
    mesh.invisibleFaces =
        std::make_shared<const std::vector<std::uint32_t>>(std::vector<std::uint32_t>{1, 3});
    setInput(context, mesh, {"f[0:1]"});
    EXPECT_EQ(*outputOf(context)->invisibleFaces, (std::vector<std::uint32_t>{0, 1, 3}));
    context.set("assignHole", 0);
    EXPECT_EQ(*outputOf(context)->invisibleFaces, (std::vector<std::uint32_t>{3}));
    EXPECT_EQ(outputOf(context)->topology, mesh.topology);
    EXPECT_EQ(context.timesUncomputed, 0u);
}

} // namespace
} // namespace host::nodes
