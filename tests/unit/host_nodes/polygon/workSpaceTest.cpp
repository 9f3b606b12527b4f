// Operations in a world in which all points of a shape are one.
#include "host/nodes/polygon/workSpace.h"

#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <limits>

namespace host::nodes {
namespace {

using geometry::MeshData;
using test::ToyContext;

TEST(WorkSpace, hasAWayBackUnlessItIsFlat)
{
    EXPECT_TRUE(hasWayBack(Matrix4{}));
    EXPECT_TRUE(hasWayBack(scaling({1e-3, 5, -1})));
    EXPECT_FALSE(hasWayBack(scaling({1, 0, 1})));
    EXPECT_FALSE(hasWayBack(scaling({0, 0, 0}) * translation({1, 2, 3})));
    EXPECT_FALSE(hasWayBack(scaling({1, std::numeric_limits<double>::quiet_NaN(), 1})));
}

TEST(WorkSpace, withoutAWayBackTheMeshIsPassedOn)
{
    const std::pair<const NodeCompute*, const char*> rows[] = {
        {&kPolyMergeVert, "vtx[*]"},     {&kPolyMoveVertex, "vtx[*]"}, {&kPolyMoveEdge, "e[*]"},
        {&kPolyMoveFace, "f[*]"},        {&kPolyBevel3, "e[*]"},       {&kPolyExtrudeFace, "f[0]"},
        {&kPolyExtrudeVertex, "vtx[0]"}, {&kPolyPoke, "f[0]"},         {&kPolyCut, "f[*]"},
        {&kPolyMirror, "f[*]"},
    };
    for (const auto& [row, parts] : rows) {
        ToyContext context(*row);
        const auto cube = std::make_shared<const MeshData>(geometry::test::cube());
        context.values["inputPolymesh"] = Value(cube);
        context.values["inputComponents"] = Value::of(ComponentList{{parts}});
        context.values["inputMatrix"] = Value::of(scaling({0, 0, 0}));
        context.set("worldSpace", 1);
        EXPECT_EQ(context.compute("output").data<MeshData>(), cube) << row->type;
        EXPECT_EQ(context.timesUncomputed, 1U) << row->type;
        EXPECT_EQ(context.lack, Lack::Input) << row->type;
        if (row == &kPolyCut) {
            continue; // always works in the world
        }
        context.set("worldSpace", 0);
        context.set("distance", 2); // all corners of a side, and more
        context.set("translateX", 1);
        context.set("mergeMode", 0);
        EXPECT_NE(context.compute("output").data<MeshData>(), cube) << row->type;
    }
}

} // namespace
} // namespace host::nodes
