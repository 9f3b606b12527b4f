#include "host/graph/Graph.h"

#include <gtest/gtest.h>

#include <string>

namespace host::graph {
namespace {

class GraphConnections : public testing::Test {
protected:
    Graph graph;
    NodeId a = graph.createNode(NodeType::find("transform"), "a", kWorld);
    NodeId b = graph.createNode(NodeType::find("transform"), "b", kWorld);
    NodeId c = graph.createNode(NodeType::find("transform"), "c", kWorld);

    Plug plug(NodeId node, std::string_view name)
    {
        const AttributeIndex attribute = graph.findAttribute(node, name);
        EXPECT_NE(attribute, kNoAttribute) << name;
        return {node, attribute, kNoSlot, -1};
    }
    /// An attribute of a kind on node a or b, made for the purpose.
    Plug any(NodeId node, AttributeKind kind)
    {
        const std::string name = "kind" + std::to_string(static_cast<int>(kind));
        Attribute added;
        added.longName = name;
        added.kind = kind;
        return {node, graph.addAttribute(node, added), kNoSlot, -1};
    }
    bool meet(AttributeKind from, AttributeKind to)
    {
        return static_cast<bool>(graph.connect(any(a, from), any(b, to)));
    }
    std::size_t alive() const
    {
        std::size_t count = 0;
        for (const ConnectionRecord& record : graph.connections()) {
            count += record.isAlive ? 1 : 0;
        }
        return count;
    }
};

TEST_F(GraphConnections, KeepsDestinationsInOrderOfConnection)
{
    const Plug source = plug(a, "tx");
    ASSERT_TRUE(graph.connect(source, plug(c, "tx")));
    ASSERT_TRUE(graph.connect(source, plug(b, "tz")));
    ASSERT_TRUE(graph.connect(source, plug(b, "tx")));
    EXPECT_EQ(graph.outputsOf(source),
              (std::vector<Plug>{plug(c, "tx"), plug(b, "tz"), plug(b, "tx")}));
    EXPECT_EQ(graph.inputOf(plug(b, "tz")), source);
    EXPECT_FALSE(graph.inputOf(plug(b, "ty")));
    EXPECT_FALSE(graph.inputOf(source));
    ASSERT_EQ(graph.connections().size(), 3u);
    EXPECT_EQ(graph.connections()[1].destination, plug(b, "tz"));
}

TEST_F(GraphConnections, ReplacesTheFormerInput)
{
    ASSERT_TRUE(graph.connect(plug(a, "tx"), plug(c, "tx")));
    ASSERT_TRUE(graph.connect(plug(b, "tx"), plug(c, "tx")));
    EXPECT_EQ(graph.inputOf(plug(c, "tx")), plug(b, "tx"));
    EXPECT_TRUE(graph.outputsOf(plug(a, "tx")).empty());
    EXPECT_FALSE(graph.connections()[0].isAlive);
    EXPECT_EQ(alive(), 1u);
}

TEST_F(GraphConnections, MakesTheSameConnectionOnce)
{
    ASSERT_TRUE(graph.connect(plug(a, "tx"), plug(c, "tx")));
    ASSERT_TRUE(graph.connect(plug(a, "tx"), plug(c, "tx")));
    EXPECT_EQ(graph.connections().size(), 1u);
    EXPECT_EQ(graph.outputsOf(plug(a, "tx")).size(), 1u);
}

TEST_F(GraphConnections, TakesConnectionsOutOfTheMiddleOfAList)
{
    const Plug source = plug(a, "tx");
    const std::vector<Plug> all{plug(b, "tx"), plug(b, "ty"), plug(b, "tz"), plug(c, "tx")};
    for (const Plug& destination : all) {
        ASSERT_TRUE(graph.connect(source, destination));
    }
    EXPECT_TRUE(graph.disconnect(source, all[1]));
    EXPECT_EQ(graph.outputsOf(source), (std::vector<Plug>{all[0], all[2], all[3]}));
    EXPECT_TRUE(graph.disconnect(source, all[3]));
    EXPECT_TRUE(graph.disconnect(source, all[0]));
    EXPECT_EQ(graph.outputsOf(source), std::vector<Plug>{all[2]});
    ASSERT_TRUE(graph.connect(source, all[1]));
    EXPECT_EQ(graph.outputsOf(source), (std::vector<Plug>{all[2], all[1]}));
    EXPECT_FALSE(graph.disconnect(source, all[0])) << "gone already";
    EXPECT_FALSE(graph.disconnect(plug(b, "sx"), all[1])) << "not its source";
    EXPECT_EQ(alive(), 2u);
}

TEST_F(GraphConnections, RefusesAPlugThatFeedsItself)
{
    EXPECT_FALSE(graph.connect(plug(a, "tx"), plug(a, "tx")));
    EXPECT_TRUE(graph.connect(plug(a, "tx"), plug(a, "ty"))) << "its node may";
}

TEST_F(GraphConnections, LetsNumbersMeetNumbers)
{
    using K = AttributeKind;
    EXPECT_TRUE(meet(K::Bool, K::DoubleAngle));
    EXPECT_TRUE(meet(K::Time, K::Float));
    EXPECT_TRUE(meet(K::Enum, K::Long));
    EXPECT_TRUE(graph.connect(plug(a, "translate"), plug(b, "scale")));
    EXPECT_TRUE(graph.connect(plug(a, "translateX"), plug(b, "rotateY")));
    EXPECT_FALSE(graph.connect(plug(a, "translate"), plug(b, "translateX"))) << "three and one";
    EXPECT_FALSE(graph.connect(plug(a, "rotateQuaternion"), plug(b, "translate"))) << "four, three";
}

TEST_F(GraphConnections, LetsDataMeetItsOwnKindOrAnyGeometry)
{
    using K = AttributeKind;
    EXPECT_TRUE(meet(K::Mesh, K::Mesh));
    EXPECT_TRUE(meet(K::Mesh, K::Geometry));
    EXPECT_TRUE(meet(K::Geometry, K::NurbsSurface));
    EXPECT_TRUE(meet(K::Matrix, K::FloatMatrix));
    EXPECT_TRUE(meet(K::Int32Array, K::DoubleArray));
    EXPECT_TRUE(meet(K::String, K::String));
    EXPECT_FALSE(meet(K::Mesh, K::NurbsCurve));
    EXPECT_FALSE(meet(K::Mesh, K::Double));
    EXPECT_FALSE(meet(K::Matrix, K::Mesh));
    EXPECT_FALSE(meet(K::ComponentList, K::Mesh));
}

TEST_F(GraphConnections, RefusesNonsense)
{
    using K = AttributeKind;
    EXPECT_FALSE(meet(K::String, K::Double));
    EXPECT_FALSE(meet(K::Double, K::String));
    EXPECT_FALSE(meet(K::Message, K::Double));
    EXPECT_FALSE(meet(K::Message, K::String));
    const auto failed = graph.connect(any(a, K::String), any(b, K::Double));
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, ErrorCode::InvalidParameter);
    EXPECT_NE(failed.error().message.find("a.kind"), std::string::npos);
    EXPECT_EQ(alive(), 0u);
    EXPECT_TRUE(graph.node(b).slots.empty()) << "a refused connection leaves nothing";
}

TEST_F(GraphConnections, LetsMessagesAndUnknownKindsMeetWhatFilesConnect)
{
    using K = AttributeKind;
    EXPECT_TRUE(meet(K::Message, K::Message));
    for (const K kind : {K::Double, K::String, K::Mesh, K::Message, K::Compound, K::Matrix}) {
        EXPECT_TRUE(meet(kind, K::Any));
        EXPECT_TRUE(meet(K::Any, kind));
    }
    const NodeId sg = graph.createNode(NodeType::find("shadingEngine"), "sg", kWorld);
    const NodeId lambert = graph.createNode(NodeType::find("lambert"), "l", kWorld);
    const NodeId shape = graph.createNode(NodeType::find("mesh"), "s", a);
    const NodeId id = graph.createNode(NodeType::find("groupId"), "g", kWorld);
    EXPECT_TRUE(graph.connect(plug(lambert, "oc"), plug(sg, "ss")));
    EXPECT_TRUE(
        graph.connect(graph.element(plug(shape, "iog"), 0), graph.element(plug(sg, "dsm"), 0)));
    EXPECT_TRUE(graph.connect(plug(id, "msg"), graph.element(plug(sg, "gn"), 0)));
    const Plug group = graph.element(
        graph.child(graph.element(plug(shape, "iog"), 0), graph.findAttribute(shape, "og")), 0);
    EXPECT_TRUE(
        graph.connect(plug(id, "id"), graph.child(group, graph.findAttribute(shape, "gid"))));
    EXPECT_TRUE(
        graph.connect(plug(sg, "mwc"), graph.child(group, graph.findAttribute(shape, "gco"))));
    EXPECT_TRUE(graph.connect(group, graph.element(plug(sg, "dsm"), 1)));
    const NodeId layer = graph.createNode(NodeType::find("displayLayer"), "layer", kWorld);
    EXPECT_TRUE(graph.connect(plug(layer, "drawInfo"), plug(a, "drawOverride")));
    const NodeId skin = graph.createNode(NodeType::find("skinCluster"), "skin", kWorld);
    const NodeId set = graph.createNode(NodeType::find("objectSet"), "set", kWorld);
    EXPECT_TRUE(graph.connect(plug(skin, "msg"), graph.element(plug(set, "ub"), 0)));
}

TEST_F(GraphConnections, ReplacesOneOfManyDestinationsInOneStep)
{
    constexpr std::int32_t kCount = 100000; // walking the list each time would take minutes
    const Plug source = plug(a, "tx");
    const Plug other = plug(a, "ty");
    const NodeId sum = graph.createNode(NodeType::find("plusMinusAverage"), "sum", kWorld);
    const Plug inputs = plug(sum, "input1D");
    for (std::int32_t i = 0; i < kCount; ++i) {
        ASSERT_TRUE(graph.connect(source, graph.element(inputs, i)));
    }
    for (std::int32_t i = kCount; i-- > 0;) {
        ASSERT_TRUE(graph.connect(other, graph.element(inputs, i)));
    }
    EXPECT_TRUE(graph.outputsOf(source).empty());
    EXPECT_EQ(graph.outputsOf(other).front().index, kCount - 1);
    EXPECT_EQ(alive(), static_cast<std::size_t>(kCount));
}

} // namespace
} // namespace host::graph
