#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/nodeTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_nodes/deform/pointMesh.h"

#include <gtest/gtest.h>

namespace {

using host::ComponentList;
using host::Matrix4;
using host::Value;
using host::Vec3f;
using test::meshPoints;
using test::pointMesh;
using test::ToyContext;

Value grouped(const Value& mesh, const std::vector<std::string>& texts)
{
    ToyContext context(host::nodes::kGroupParts);
    context.values["inputGeometry"] = mesh;
    context.values["inputComponents"] = Value::of(ComponentList{texts});
    context.set("groupId", 7);
    return context.compute("outputGeometry");
}

ToyContext shiftingCluster(const Value& mesh)
{
    ToyContext context(host::nodes::kCluster);
    context.setElement("inputGeometry", {0}, mesh);
    context.values["matrix"] = Value::of(host::translation({10, 0, 0}));
    return context;
}

TEST(PointGroups, LimitWhatIsDeformed)
{
    const Value mesh = pointMesh({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}});
    ToyContext context = shiftingCluster(grouped(mesh, {"vtx[1:2]", "vtx[9]"}));
    context.setElement("groupId", {0}, 7.0);
    EXPECT_EQ(meshPoints(context.compute("outputGeometry", 0)),
              (std::vector<Vec3f>{{1, 0, 0}, {12, 0, 0}, {13, 0, 0}, {4, 0, 0}}));
    context.setElement("groupId", {0}, 8.0);
    EXPECT_EQ(meshPoints(context.compute("outputGeometry", 0))[0], (Vec3f{11, 0, 0}))
        << "a group that nobody told of is the whole";
}

TEST(PointGroups, OfAllPointsCostNothing)
{
    const Value mesh = pointMesh({{1, 0, 0}, {2, 0, 0}});
    EXPECT_EQ(grouped(mesh, {"vtx[*]"}).data<host::geometry::MeshData>(),
              mesh.data<host::geometry::MeshData>());
    EXPECT_EQ(grouped(mesh, {"vtx[0:1]"}).data<host::geometry::MeshData>(),
              mesh.data<host::geometry::MeshData>());
}

TEST(PointGroups, WithoutPointsLeaveEverything)
{
    const Value mesh = pointMesh({{1, 0, 0}, {2, 0, 0}});
    ToyContext context = shiftingCluster(grouped(mesh, {}));
    context.setElement("groupId", {0}, 7.0);
    EXPECT_EQ(meshPoints(context.compute("outputGeometry", 0)), meshPoints(mesh));
}

TEST(WorldMesh, SaysWhichShapeItIsOf)
{
    ToyContext context(host::nodes::kMesh);
    context.number_ = 5;
    context.values["inMesh"] = pointMesh({{1, 0, 0}});
    const auto own = context.compute("outMesh").data<host::geometry::MeshData>();
    const auto world = context.compute("worldMesh", 2).data<host::geometry::MeshData>();
    EXPECT_EQ(own->shape, host::geometry::ShapeMark{});
    EXPECT_EQ(world->shape, (host::geometry::ShapeMark{5, 2}));
    EXPECT_EQ(world->points, own->points);
    context.values["inMesh"] = Value(world);
    EXPECT_EQ(context.compute("outMesh").data<host::geometry::MeshData>()->shape,
              host::geometry::ShapeMark{});
}

} // namespace
