#include "host/graph/Graph.h"

#include <gtest/gtest.h>

#include <limits>

namespace host::graph {
namespace {

const NodeType kTransform = NodeType::find("transform");
const NodeType kMesh = NodeType::find("mesh");

TEST(GraphDag, KeepsParentsAndChildrenInOrder)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    const NodeId s = graph.createNode(kMesh, "s", a);
    const NodeId t = graph.createNode(kMesh, "t", b);
    ASSERT_TRUE(graph.addParent(s, b));
    EXPECT_EQ(graph.node(s).parents, (std::vector<NodeId>{a, b}));
    EXPECT_EQ(graph.node(b).children, (std::vector<NodeId>{t, s}));
    EXPECT_EQ(graph.pathCount(s), 2u);
    EXPECT_EQ(graph.findNode("|b|s"), s);
    ASSERT_TRUE(graph.removeParent(s, a));
    EXPECT_EQ(graph.node(s).parents, std::vector<NodeId>{b});
    EXPECT_TRUE(graph.node(a).children.empty());
    EXPECT_EQ(graph.findNode("|a|s"), kNoNode);
    EXPECT_EQ(graph.pathCount(s), 1u);
}

TEST(GraphDag, RefusesASecondLinkOfTheSamePair)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId s = graph.createNode(kMesh, "s", a);
    const auto again = graph.addParent(s, a);
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().code, ErrorCode::InvalidParameter);
    EXPECT_EQ(graph.node(s).parents.size(), 1u);
    EXPECT_EQ(graph.node(a).children.size(), 1u);
}

TEST(GraphDag, RefusesCycles)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", a);
    const NodeId c = graph.createNode(kTransform, "c", b);
    for (const NodeId below : {a, b, c}) {
        EXPECT_FALSE(graph.addParent(a, below));
        EXPECT_FALSE(graph.setParent(a, below));
    }
    EXPECT_FALSE(graph.addParent(kWorld, a));
    EXPECT_FALSE(graph.setParent(kWorld, a));
    EXPECT_EQ(graph.node(a).parents, std::vector<NodeId>{kWorld});
    EXPECT_EQ(graph.findNode("|a|b|c"), c);
}

TEST(GraphDag, RefusesNodesOutsideTheDagAndMissingOnes)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId m = graph.createNode(NodeType::find("lambert"), "m", kWorld);
    for (const NodeId bad : {m, kNoNode, NodeId(99)}) {
        EXPECT_FALSE(graph.addParent(a, bad));
        EXPECT_FALSE(graph.addParent(bad, a));
        EXPECT_FALSE(graph.setParent(a, bad));
        EXPECT_FALSE(graph.setParent(bad, a));
        EXPECT_FALSE(graph.removeParent(a, bad));
        EXPECT_FALSE(graph.removeParent(bad, a));
    }
}

TEST(GraphDag, KeepsTheOnlyParent)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const auto removed = graph.removeParent(a, kWorld);
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error().code, ErrorCode::InvalidParameter);
    EXPECT_EQ(graph.findNode("|a"), a);
}

TEST(GraphDag, MovesANodeWithEverythingBelow)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    const NodeId c = graph.createNode(kTransform, "c", a);
    const NodeId s = graph.createNode(kMesh, "s", c);
    ASSERT_TRUE(graph.addParent(c, kWorld));
    ASSERT_TRUE(graph.setParent(c, b));
    EXPECT_EQ(graph.node(c).parents, std::vector<NodeId>{b});
    EXPECT_TRUE(graph.node(a).children.empty());
    EXPECT_EQ(graph.node(kWorld).children, (std::vector<NodeId>{a, b}));
    EXPECT_EQ(graph.findNode("|b|c|s"), s);
    EXPECT_EQ(graph.findNode("|c|s"), kNoNode);
    ASSERT_TRUE(graph.setParent(c, b)) << "its place already";
    EXPECT_EQ(graph.node(b).children, std::vector<NodeId>{c});
}

TEST(GraphDag, RaisesANameThatIsTakenBelowTheNewParent)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    const NodeId ax = graph.createNode(kMesh, "x", a);
    const NodeId bx = graph.createNode(kMesh, "x", b);
    ASSERT_TRUE(graph.addParent(bx, a));
    EXPECT_EQ(graph.node(bx).name, "x1");
    EXPECT_EQ(graph.findNode("|a|x"), ax);
    EXPECT_EQ(graph.findNode("|a|x1"), bx);
    EXPECT_EQ(graph.findNode("|b|x1"), bx);
    EXPECT_EQ(graph.findNode("|b|x"), kNoNode);
}

/// A chain of `levels` transforms; the last of them.
NodeId makeChain(Graph& graph, std::size_t levels)
{
    NodeId node = kWorld;
    for (std::size_t i = 0; i < levels; ++i) {
        node = graph.createNode(kTransform, "t", node);
    }
    return node;
}

TEST(GraphDag, LimitsTheDepth)
{
    Graph graph;
    const NodeId deepest = makeChain(graph, kMaxDagDepth);
    const NodeId above = graph.node(deepest).parents.front();
    const NodeId extra = graph.createNode(kMesh, "s", deepest);
    EXPECT_EQ(graph.node(extra).parents, std::vector<NodeId>{above}) << "the last level that is";

    const NodeId group = graph.createNode(kTransform, "group", kWorld);
    const NodeId below = graph.createNode(kTransform, "below", group);
    for (const auto& failed : {graph.addParent(group, above), graph.setParent(group, above),
                               graph.addParent(below, deepest)}) {
        ASSERT_FALSE(failed);
        EXPECT_EQ(failed.error().code, ErrorCode::Limit);
    }
    EXPECT_EQ(graph.node(group).parents, std::vector<NodeId>{kWorld});
    EXPECT_EQ(graph.node(below).parents, std::vector<NodeId>{group});
    EXPECT_TRUE(graph.addParent(below, above)) << "the failures left nothing behind";
    ASSERT_TRUE(graph.removeParent(below, above));
    EXPECT_TRUE(graph.setParent(group, graph.node(above).parents.front()));
}

TEST(GraphDag, MeasuresDepthAlongTheLongestWay)
{
    Graph graph;
    const NodeId deep = makeChain(graph, kMaxDagDepth - 2);
    const NodeId shallow = graph.createNode(kTransform, "shallow", kWorld);
    ASSERT_TRUE(graph.addParent(shallow, deep)); // now on the last level but one
    const NodeId below = graph.createNode(kTransform, "below", shallow);
    EXPECT_EQ(graph.node(below).parents, std::vector<NodeId>{shallow});
    const NodeId tooDeep = graph.createNode(kTransform, "tooDeep", below);
    EXPECT_EQ(graph.node(tooDeep).parents, std::vector<NodeId>{shallow});
    ASSERT_TRUE(graph.removeParent(shallow, deep)); // near the world again
    const NodeId free = graph.createNode(kTransform, "free", below);
    EXPECT_EQ(graph.node(free).parents, std::vector<NodeId>{below});
}

/// `levels` levels, each an instance twice below the one before: 2^levels paths to the last.
std::vector<NodeId> makeBomb(Graph& graph, int levels)
{
    std::vector<NodeId> made;
    NodeId left = graph.createNode(kTransform, "l", kWorld);
    NodeId right = graph.createNode(kTransform, "r", kWorld);
    for (int i = 0; i < levels; ++i) {
        const NodeId next = graph.createNode(kTransform, "n" + std::to_string(i), left);
        EXPECT_TRUE(graph.addParent(next, right));
        made.push_back(next);
        left = graph.createNode(kTransform, "l", next);
        right = graph.createNode(kTransform, "r", next);
    }
    return made;
}

TEST(GraphDag, CountsPathsAndSaturates)
{
    Graph graph;
    const std::vector<NodeId> levels = makeBomb(graph, 200);
    EXPECT_EQ(graph.pathCount(levels[0]), 2u);
    EXPECT_EQ(graph.pathCount(levels[9]), 1024u);
    EXPECT_EQ(graph.pathCount(levels[199]), std::numeric_limits<std::size_t>::max());
}

TEST(GraphDag, DefusesInstancingBombs)
{
    Graph graph;
    const std::vector<NodeId> levels = makeBomb(graph, 200);
    const std::size_t removed = graph.limitPaths(10000);
    EXPECT_GT(removed, 0u);
    EXPECT_LT(removed, 200u) << "no more than needed";
    std::size_t total = 0;
    for (std::size_t i = 1; i < graph.nodeCount(); ++i) {
        total += graph.pathCount(static_cast<NodeId>(i));
    }
    EXPECT_LE(total, 10000u);
    for (std::size_t i = 0; i < 200; ++i) { // the first made lose theirs
        EXPECT_EQ(graph.node(levels[i]).parents.size(), i < removed ? 1u : 2u) << i;
    }
}

TEST(GraphDag, TakesNothingAwayWhereThePathsAreFewEnough)
{
    Graph graph;
    const NodeId a = graph.createNode(kTransform, "a", kWorld);
    const NodeId b = graph.createNode(kTransform, "b", kWorld);
    const NodeId s = graph.createNode(kMesh, "s", a);
    ASSERT_TRUE(graph.addParent(s, b));
    EXPECT_EQ(graph.limitPaths(4), 0u); // |a |a|s |b |b|s
    EXPECT_EQ(graph.node(s).parents.size(), 2u);
    EXPECT_EQ(graph.limitPaths(3), 1u);
    EXPECT_EQ(graph.node(s).parents, std::vector<NodeId>{a});
    EXPECT_TRUE(graph.node(b).children.empty());
    EXPECT_EQ(graph.findNode("|b|s"), kNoNode);
    EXPECT_EQ(graph.limitPaths(1), 0u) << "there are no instances left to take";
}

TEST(GraphDag, TakesTheLastParentsOfANodeFirst)
{
    Graph graph;
    std::vector<NodeId> groups;
    for (int i = 0; i < 5; ++i) {
        groups.push_back(graph.createNode(kTransform, "g", kWorld));
    }
    const NodeId s = graph.createNode(kMesh, "s", groups[0]);
    for (int i = 1; i < 5; ++i) {
        ASSERT_TRUE(graph.addParent(s, groups[static_cast<std::size_t>(i)]));
    }
    EXPECT_EQ(graph.limitPaths(8), 2u); // five groups and three paths
    EXPECT_EQ(graph.node(s).parents, (std::vector<NodeId>{groups[0], groups[1], groups[2]}));
}

TEST(GraphDag, HoldsAHundredThousandChildrenAndInstances)
{
    Graph graph;
    constexpr NodeId kCount = 100000; // quadratic work would take minutes
    const NodeId shape = graph.createNode(kMesh, "shape", kWorld);
    for (NodeId i = 0; i < kCount; ++i) {
        const NodeId group = graph.createNode(kTransform, "g" + std::to_string(i), kWorld);
        ASSERT_TRUE(graph.addParent(shape, group));
    }
    EXPECT_EQ(graph.node(kWorld).children.size(), kCount + 1);
    EXPECT_EQ(graph.pathCount(shape), kCount + 1);
    EXPECT_EQ(graph.findNode("|g99999|shape"), shape);
    // Of the shape's 100,001 parents 11 may stay beside the paths of the groups.
    EXPECT_EQ(graph.limitPaths(kCount + 11), kCount - 10);
    EXPECT_EQ(graph.node(shape).parents.size(), 11u);
}

} // namespace
} // namespace host::graph
