#include "host/nodes/nodeTypes.h"

#include "host/geometry/mesh/MeshData.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

namespace {

using host::ComponentList;
using host::NumberStorage;
using host::NumericArray;
using host::Value;
using host::geometry::MeshData;
using host::geometry::MeshTopology;
using host::nodes::kGroupParts;
using host::nodes::kMesh;
using test::ToyContext;
using Faces = std::vector<std::uint32_t>;

/// `faceCount` triangles on the vertices 0, 1 and 2; all points at (x, 0, 0).
MeshData triangles(std::uint32_t faceCount, float x)
{
    MeshTopology topology;
    topology.vertexCount = 3;
    topology.edges = {{0, 1}, {1, 2}, {2, 0}};
    topology.loopStart.push_back(0);
    for (std::uint32_t face = 0; face < faceCount; ++face) {
        topology.corners.insert(topology.corners.end(), {0, 1, 2});
        topology.loopStart.push_back((face + 1) * 3);
    }
    MeshData mesh;
    mesh.topology = std::make_shared<const MeshTopology>(std::move(topology));
    mesh.points = std::make_shared<const std::vector<host::Vec3f>>(3, host::Vec3f{x, 0, 0});
    return mesh;
}

std::shared_ptr<const MeshData> meshFrom(const Value& value)
{
    return value.data<MeshData>();
}

TEST(Mesh, IsWhatComesInElseWhatIsStored)
{
    ToyContext context(kMesh);
    EXPECT_TRUE(context.compute("outMesh").isEmpty());
    context.values["cachedInMesh"] = Value::of(triangles(1, 1));
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->points->front().x, 1);
    context.values["inMesh"] = Value::of(triangles(1, 2));
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->points->front().x, 2);
    EXPECT_EQ(meshFrom(context.compute("worldMesh", 0))->points->front().x, 2);
}

TEST(Mesh, CutsAndShadesAsTheShapeSaysWhereverTheMeshComesFrom)
{
    using host::geometry::NormalWeighting;
    using host::geometry::QuadSplit;
    ToyContext context(kMesh);
    context.values["inMesh"] = Value::of(triangles(1, 1));
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->quadSplit, QuadSplit::BestShape);
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->normalWeighting, NormalWeighting::AngleAndArea);
    context.values["quadSplit"] = Value(0.0);
    context.values["vertexNormalMethod"] = Value(2.0);
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->quadSplit, QuadSplit::Left);
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->normalWeighting, NormalWeighting::Area);
    context.values["quadSplit"] = Value(7.0); // no such choice: as the mesh had it
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->quadSplit, QuadSplit::BestShape);
}

TEST(Mesh, AddsItsTweaksToStoredAndToIncomingPoints)
{
    NumericArray tweaks(NumberStorage::Double, 3);
    const std::vector<double> offset{0.5, 1, 2};
    tweaks.store<double>(1, offset); // the second point only
    ToyContext context(kMesh);
    context.arrays["pnts"] = &tweaks;
    for (const std::string name : {"cachedInMesh", "inMesh"}) {
        context.values.clear();
        context.values[name] = Value::of(triangles(1, 3));
        const auto mesh = meshFrom(context.compute("outMesh"));
        EXPECT_EQ((*mesh->points)[0], (host::Vec3f{3, 0, 0})) << name;
        EXPECT_EQ((*mesh->points)[1], (host::Vec3f{3.5F, 1, 2})) << name;
        EXPECT_EQ((*mesh->points)[2], (host::Vec3f{3, 0, 0})) << name;
    }
}

/// Tweaks of a shape with a history are of its result; a triangle has three points.
TEST(Mesh, SaysOfWhatComesInThatItHasFewerPointsThanTweaks)
{
    NumericArray tweaks(NumberStorage::Float, 3);
    tweaks.store<float>(2, std::vector<float>{1, 0, 0, 1, 0, 0});
    ToyContext context(kMesh);
    context.arrays["pnts"] = &tweaks;
    context.values["cachedInMesh"] = Value::of(triangles(1, 1));
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->points->back().x, 2);
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.values["inMesh"] = Value::of(triangles(1, 1));
    EXPECT_EQ(meshFrom(context.compute("outMesh"))->points->back().x, 2);
    EXPECT_EQ(context.lack, host::Lack::Components);
}

TEST(Mesh, WithoutTweaksIsTheSameMeshAndNoCopy)
{
    const Value stored = Value::of(triangles(1, 3));
    ToyContext context(kMesh);
    context.values["cachedInMesh"] = stored;
    EXPECT_EQ(meshFrom(context.compute("outMesh")), meshFrom(stored));
}

class GroupParts : public ::testing::Test {
protected:
    GroupParts()
    {
        context.values["inputGeometry"] = Value::of(triangles(6, 0));
        context.set("groupId", 17);
    }
    void setFaces(const char* name, std::vector<std::string> components)
    {
        context.values[name] = Value::of(ComponentList{std::move(components)});
    }
    std::shared_ptr<const MeshData> run() { return meshFrom(context.compute("outputGeometry")); }
    ToyContext context{kGroupParts};
};

TEST_F(GroupParts, PutsItsFacesOnTheMeshUnderItsNumber)
{
    setFaces("inputComponents", {"f[4]", "f[0:1]"});
    const auto mesh = run();
    ASSERT_EQ(mesh->groups.size(), 1U);
    EXPECT_EQ(mesh->groups[0].id, 17);
    EXPECT_EQ(*mesh->groups[0].faces, (Faces{0, 1, 4}));
}

TEST_F(GroupParts, LeavesOutWhatIsTakenAway)
{
    setFaces("inputComponents", {"f[0:5]"});
    setFaces("inputRemoveComponent", {"f[1:4]"});
    EXPECT_EQ(*run()->groups[0].faces, (Faces{0, 5}));
}

TEST_F(GroupParts, ReplacesAGroupOfTheSameNumberAndKeepsOthers)
{
    setFaces("inputComponents", {"f[0]"});
    context.values["inputGeometry"] = Value(run());
    context.set("groupId", 18);
    context.values["inputGeometry"] = Value(run());
    setFaces("inputComponents", {"f[3]"});
    const auto mesh = run();
    ASSERT_EQ(mesh->groups.size(), 2U);
    EXPECT_EQ(*mesh->groups[0].faces, (Faces{0}));
    EXPECT_EQ(*mesh->groups[1].faces, (Faces{3}));
}

TEST_F(GroupParts, WithoutANumberPassesTheMeshOn)
{
    setFaces("inputComponents", {"f[0]"});
    context.set("groupId", -1);
    EXPECT_TRUE(run()->groups.empty());
}

TEST_F(GroupParts, OfVerticesPassesTheMeshOn)
{
    setFaces("inputComponents", {"vtx[*]"});
    EXPECT_TRUE(run()->groups.empty());
}

TEST_F(GroupParts, IgnoresFacesThatTheMeshDoesNotHave)
{
    setFaces("inputComponents", {"f[5:2000000000]"});
    EXPECT_EQ(*run()->groups[0].faces, (Faces{5}));
}

} // namespace
