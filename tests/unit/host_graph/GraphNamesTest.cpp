#include "host/graph/Graph.h"

#include <gtest/gtest.h>

namespace host::graph {
namespace {

const NodeType kTransform = NodeType::find("transform");
const NodeType kMesh = NodeType::find("mesh");
const NodeType kLambert = NodeType::find("lambert");

TEST(GraphNames, HoldsTheWorldOnlyAtFirst)
{
    const Graph graph;
    EXPECT_EQ(graph.nodeCount(), 1u);
    EXPECT_EQ(graph.node(kWorld).name, "world");
    EXPECT_EQ(graph.node(kWorld).type.name(), "dagNode");
    EXPECT_EQ(graph.pathCount(kWorld), 1u);
}

TEST(GraphNames, LeavesTheNameOfTheWorldToScenes)
{
    Graph graph;
    EXPECT_EQ(graph.findNode("world"), kNoNode);
    const NodeId own = graph.createNode(kTransform, "world", kWorld);
    EXPECT_EQ(graph.node(own).name, "world");
    EXPECT_EQ(graph.findNode("world"), own);
}

TEST(GraphNames, RaisesTheNumberOfANameThatARivalHas)
{
    Graph graph;
    const auto make = [&](const char* name, NodeType type, NodeId parent) {
        return graph.node(graph.createNode(type, name, parent)).name;
    };
    EXPECT_EQ(make("a", kTransform, kWorld), "a");
    EXPECT_EQ(make("a", kTransform, kWorld), "a1");
    EXPECT_EQ(make("a", kTransform, kWorld), "a2");
    EXPECT_EQ(make("a1", kTransform, kWorld), "a3");
    EXPECT_EQ(make("b9", kTransform, kWorld), "b9");
    EXPECT_EQ(make("b9", kTransform, kWorld), "b10");
    EXPECT_EQ(make("c09", kTransform, kWorld), "c09");
    EXPECT_EQ(make("c09", kTransform, kWorld), "c10");
    EXPECT_EQ(make("m", kLambert, kWorld), "m");
    EXPECT_EQ(make("m", kLambert, kWorld), "m1");
}

TEST(GraphNames, LetsNodesUnderOtherParentsHaveTheSameName)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    EXPECT_EQ(graph.node(graph.createNode(kTransform, "x", a)).name, "x");
    EXPECT_EQ(graph.node(graph.createNode(kTransform, "x", b)).name, "x");
    EXPECT_EQ(graph.node(graph.createNode(kTransform, "x", b)).name, "x1");
    EXPECT_EQ(graph.node(graph.createNode(kLambert, "x", kNoNode)).name, "x");
}

TEST(GraphNames, InventsANameFromTheTypeAndStripsTheRootMark)
{
    Graph graph;
    EXPECT_EQ(graph.node(graph.createNode(kLambert, "", kWorld)).name, "lambert1");
    EXPECT_EQ(graph.node(graph.createNode(kLambert, "", kWorld)).name, "lambert2");
    EXPECT_EQ(graph.node(graph.createNode(kLambert, ":x", kWorld)).name, "x");
    EXPECT_EQ(graph.node(graph.createNode(kLambert, "ns:x", kWorld)).name, "ns:x");
}

TEST(GraphNames, IgnoresTheParentOfNodesOutsideTheDag)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId m = graph.createNode(kLambert, "m", a);
    EXPECT_TRUE(graph.node(m).parents.empty());
    EXPECT_TRUE(graph.node(a).children.empty());
    EXPECT_EQ(graph.pathCount(m), 0u);
}

TEST(GraphNames, PutsNodesBelowTheWorldWhereTheParentIsNone)
{
    Graph graph;
    const NodeId m = graph.createNode(kLambert, "m", kWorld);
    EXPECT_EQ(graph.node(graph.createNode(kMesh, "s", kNoNode)).parents,
              std::vector<NodeId>{kWorld});
    EXPECT_EQ(graph.node(graph.createNode(kMesh, "t", m)).parents, std::vector<NodeId>{kWorld});
}

TEST(GraphNames, FindsPlainNamesWithAndWithoutRootMark)
{
    Graph graph;
    const NodeId shape = graph.createNode(kMesh, "perspShape", kWorld);
    EXPECT_EQ(graph.findNode("perspShape"), shape);
    EXPECT_EQ(graph.findNode(":perspShape"), shape);
    EXPECT_EQ(graph.findNode("|:perspShape"), shape);
    EXPECT_EQ(graph.findNode("perspshape"), kNoNode);
    EXPECT_EQ(graph.findNode(""), kNoNode);
    EXPECT_EQ(graph.findNode(":"), kNoNode);
    EXPECT_EQ(graph.findNode("|"), kNoNode);
    EXPECT_EQ(graph.findNode("||"), kNoNode);
    EXPECT_EQ(graph.findNode("->"), kNoNode);
}

TEST(GraphNames, GivesTheFirstMadeWhereSeveralFit)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    const NodeId first = graph.createNode(kTransform, "x", b);
    graph.createNode(kTransform, "x", a);
    EXPECT_EQ(graph.findNode("x"), first);
    // The same holds when a node gets its name later.
    const NodeId late = graph.createNode(kTransform, "y", a);
    graph.createNode(kTransform, "z", b);
    graph.renameNode(graph.findNode("b|z"), "y");
    EXPECT_EQ(graph.findNode("y"), late);
    graph.renameNode(a, "y");
    EXPECT_EQ(graph.findNode("y"), a);
}

// |a|x|s   |b|x|s   |b|a|x
class GraphPaths : public testing::Test {
protected:
    Graph graph;
    NodeId a = graph.createNode(kTransform, "a", kWorld);
    NodeId b = graph.createNode(kTransform, "b", kWorld);
    NodeId ax = graph.createNode(kTransform, "x", a);
    NodeId axs = graph.createNode(kMesh, "s", ax);
    NodeId bx = graph.createNode(kTransform, "x", b);
    NodeId bxs = graph.createNode(kMesh, "s", bx);
    NodeId ba = graph.createNode(kTransform, "a", b);
    NodeId bax = graph.createNode(kTransform, "x", ba);
    std::vector<NodeId> chain;
};

TEST_F(GraphPaths, WalksFullPathsDown)
{
    EXPECT_EQ(graph.findNode("|a|x|s"), axs);
    EXPECT_EQ(graph.findNode("|b|x|s"), bxs);
    EXPECT_EQ(graph.findNode("|b|a|x"), bax);
    EXPECT_EQ(graph.findNode("|x"), kNoNode);
    EXPECT_EQ(graph.findNode("|a|x|s|t"), kNoNode);
    EXPECT_EQ(graph.findNode("|a|x|"), kNoNode);
}

TEST_F(GraphPaths, MatchesPartialPathsAnywhere)
{
    EXPECT_EQ(graph.findNode("b|x|s"), bxs);
    EXPECT_EQ(graph.findNode("x|s"), axs);
    EXPECT_EQ(graph.findNode("b|a|x"), bax);
    EXPECT_EQ(graph.findNode("a|x"), ax);
    EXPECT_EQ(graph.findNode("a|s"), kNoNode);
    EXPECT_EQ(graph.findNode("s|x"), kNoNode);
    EXPECT_EQ(graph.findNode(":b|:x|:s"), bxs);
}

TEST_F(GraphPaths, GivesTheChainOfTheInstanceThatAPathNames)
{
    ASSERT_TRUE(graph.addParent(axs, ba));
    EXPECT_EQ(graph.findPath("|b|a|s", chain), axs);
    EXPECT_EQ(chain, (std::vector<NodeId>{b, ba, axs}));
    EXPECT_EQ(graph.findPath("b|a|s", chain), axs);
    EXPECT_EQ(chain, (std::vector<NodeId>{b, ba, axs}));
    EXPECT_EQ(graph.findPath("|a|x|s", chain), axs);
    EXPECT_EQ(chain, (std::vector<NodeId>{a, ax, axs}));
    EXPECT_EQ(graph.findPath("s", chain), axs);
    EXPECT_EQ(chain, (std::vector<NodeId>{a, ax, axs})) << "the first path for a plain name";
}

TEST_F(GraphPaths, GivesNoChainForNodesOutsideTheDagAndForNone)
{
    const NodeId m = graph.createNode(kLambert, "m", kWorld);
    chain = {1, 2, 3};
    EXPECT_EQ(graph.findPath("m", chain), m);
    EXPECT_TRUE(chain.empty());
    chain = {1, 2, 3};
    EXPECT_EQ(graph.findPath("|a|nothing", chain), kNoNode);
    EXPECT_TRUE(chain.empty());
    chain = {1, 2, 3};
    EXPECT_EQ(graph.findPath("a|nothing", chain), kNoNode);
    EXPECT_TRUE(chain.empty());
}

TEST_F(GraphPaths, EntersTheUnderworld)
{
    const NodeId group = graph.createNode(NodeType::find("curveVarGroup"), "projection", bxs);
    const NodeId curve = graph.createNode(NodeType::find("nurbsCurve"), "curve", group);
    EXPECT_EQ(graph.findNode("|b|x|s->|projection|curve"), curve);
    EXPECT_EQ(graph.findNode("s->projection"), group);
    EXPECT_EQ(graph.findNode("b|x|s->|projection"), group);
}

TEST_F(GraphPaths, FollowsRenamedNodes)
{
    graph.renameNode(ax, "q");
    EXPECT_EQ(graph.node(ax).name, "q");
    EXPECT_EQ(graph.findNode("|a|q|s"), axs);
    EXPECT_EQ(graph.findNode("|a|x|s"), kNoNode);
    graph.renameNode(bx, "a"); // b has an a
    EXPECT_EQ(graph.node(bx).name, "a1");
    graph.renameNode(bx, "a1");
    EXPECT_EQ(graph.node(bx).name, "a1") << "a node is no rival of itself";
    graph.renameNode(bx, "");
    EXPECT_EQ(graph.node(bx).name, "a1");
}

TEST(GraphNames, GivesUpAPartialPathThatFitsTooManyPlaces)
{
    Graph graph;
    // 40,000 times |g..|a, a below the same names, and the path names nobody.
    for (int i = 0; i < 40000; ++i) {
        const NodeId group = graph.createNode(kTransform, "g", kWorld);
        graph.createNode(kTransform, "b", graph.createNode(kTransform, "a", group));
    }
    EXPECT_EQ(graph.findNode("a|a|b"), kNoNode);
    EXPECT_EQ(graph.findNode("g39999|a|b"), graph.nodeCount() - 1) << "one candidate is one step";
}

TEST(GraphNames, NumbersAHundredThousandEqualNamesInOrder)
{
    Graph graph;
    constexpr int kCount = 100000; // quadratic work would take minutes
    for (int i = 0; i < kCount; ++i) {
        graph.createNode(kTransform, "same", kWorld);
    }
    EXPECT_EQ(graph.node(kCount).name, "same" + std::to_string(kCount - 1));
    EXPECT_EQ(graph.findNode("|same777"), 778u);
}

} // namespace
} // namespace host::graph
