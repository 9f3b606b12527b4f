// Nodes that unite solids, take one from another, and find what they have in common.
#include "host/geometry/mesh/boolean/cutSolids.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/boolean/booleanSolids.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::cube;
using geometry::test::volumeOf;
using test::ToyContext;
using Mesh = Shared<MeshData>;

/// Two unit cubes; the first is moved by its matrix.
class TwoCubes : public testing::TestWithParam<const NodeCompute*> {
protected:
    TwoCubes()
    {
        context.setElement("inputPoly", {0}, Value::of(cube()));
        context.setElement("inputPoly", {1}, Value::of(cube()));
    }
    Mesh of(int operation, const Vec3d& at)
    {
        context.set("operation", operation);
        context.setElement("inputMat", {0}, Value::of(translation(at)));
        return context.compute("output").data<MeshData>();
    }

    ToyContext context{*GetParam()};
};

TEST_P(TwoCubes, meetInTheWorld)
{
    if (!geometry::canCutSolids()) {
        GTEST_SKIP() << "built without the library that cuts";
    }
    // half of each is in the other
    EXPECT_NEAR(volumeOf(*of(1, {.5, 0, 0})), 1.5, 1e-6);
    EXPECT_NEAR(volumeOf(*of(2, {.5, 0, 0})), .5, 1e-6);
    EXPECT_NEAR(volumeOf(*of(3, {.5, 0, 0})), .5, 1e-6);
    EXPECT_NEAR(volumeOf(*of(0, {.5, 0, 0})), 1.5, 1e-6); // older scenes have 0 for a union
    // what is left of the first, from .5 to 1
    const Mesh half = of(2, {.5, 0, 0});
    for (const Vec3f& point : *half->points) {
        EXPECT_TRUE(point.x == .5F || point.x == 1);
    }
    EXPECT_EQ(context.timesUncomputed, 0u);
}

TEST_P(TwoCubes, apart)
{
    EXPECT_EQ(of(1, {3, 0, 0})->topology->faceCount(), 12u);
    const Mesh difference = of(2, {3, 0, 0});
    EXPECT_EQ(difference->topology->faceCount(), 6u);
    EXPECT_EQ((*difference->points)[0].x, 2.5F);
    EXPECT_EQ(of(3, {3, 0, 0})->topology->faceCount(), 0u);
    EXPECT_EQ(context.timesUncomputed, 0u);
}

TEST_P(TwoCubes, standInsForWhatCannotBeCut)
{
    // the first without its front: its parts for a union, else itself, where it is in the world
    auto faces = geometry::test::kCubeFaces;
    faces.erase(faces.begin());
    context.setElement("inputPoly", {0},
                       Value::of(geometry::test::meshOf(geometry::test::kCubePoints, faces)));
    EXPECT_EQ(of(1, {.5, 0, 0})->topology->faceCount(), 11u);
    const Mesh difference = of(2, {.5, 0, 0});
    EXPECT_EQ(difference->topology->faceCount(), 5u);
    EXPECT_EQ((*difference->points)[0].x, 0);
    EXPECT_EQ(of(3, {.5, 0, 0})->topology->faceCount(), 5u);
    EXPECT_EQ(context.timesUncomputed, 3u);
}

TEST_P(TwoCubes, oneOrNoneOrSwitchedOff)
{
    context.set("nodeState", 1);
    EXPECT_EQ(of(2, {.5, 0, 0})->topology->faceCount(), 6u);
    EXPECT_EQ((*of(2, {.5, 0, 0})->points)[0].x, -.5F); // as it comes in
    ToyContext lonely(*GetParam());
    EXPECT_TRUE(lonely.compute("output").data<MeshData>() == nullptr);
    lonely.setElement("inputPoly", {1}, Value::of(cube()));
    lonely.set("operation", 2);
    EXPECT_EQ(lonely.compute("output").data<MeshData>()->topology->faceCount(), 6u);
    EXPECT_EQ(lonely.timesUncomputed, 0u);
}

INSTANTIATE_TEST_SUITE_P(PolyBoolean, TwoCubes, testing::Values(&kPolyBoolOp, &kPolyCBoolOp));

} // namespace
} // namespace host::nodes
