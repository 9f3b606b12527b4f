#include "host/graph/Graph.h"

#include <gtest/gtest.h>

namespace host::graph {
namespace {

class GraphValues : public testing::Test {
protected:
    Graph graph;
    NodeId mesh = graph.createNode(NodeType::find("mesh"), "m", kWorld);
    NodeId transform = graph.createNode(NodeType::find("transform"), "t", kWorld);

    Plug plug(NodeId node, std::string_view name)
    {
        return {node, graph.findAttribute(node, name), kNoSlot, -1};
    }
    Plug child(const Plug& parent, std::string_view name)
    {
        return graph.child(parent, graph.findAttribute(parent.node, name));
    }
    NodeId make(const char* type, const char* name)
    {
        return graph.createNode(NodeType::find(type), name, kWorld);
    }
    bool isClean(const Plug& which)
    {
        const SlotId slot = graph.findSlot(which);
        return slot != kNoSlot && graph.node(which.node).slots[slot].isClean;
    }
};

TEST_F(GraphValues, GivesBackWhatWasStored)
{
    const Plug tx = plug(transform, "tx");
    EXPECT_TRUE(graph.storedValue(tx).isEmpty());
    graph.setValue(tx, 3.5);
    EXPECT_EQ(graph.storedValue(tx).number(), 3.5);
    graph.setValue(tx, Value::of(std::string("x")));
    EXPECT_EQ(*graph.storedValue(tx).data<std::string>(), "x");
}

TEST_F(GraphValues, ReadsElementsOutOfNumericArrays)
{
    const Plug weights = plug(mesh, "weights");
    graph.numericArray(weights, NumberStorage::Double, 1).storeComponent(6, 0, 0.25);
    EXPECT_EQ(graph.storedValue(graph.element(weights, 6)).number(), 0.25);
    EXPECT_TRUE(graph.storedValue(graph.element(weights, 5)).isEmpty());
}

TEST_F(GraphValues, ReadsChildrenOfElementsOutOfNumericArrays)
{
    const Plug points = plug(mesh, "pt");
    NumericArray& array = graph.numericArray(points, NumberStorage::Float, 3);
    array.storeComponent(2, 0, 1);
    array.storeComponent(2, 2, 3);
    const Plug point = graph.element(points, 2);
    EXPECT_EQ(graph.storedValue(child(point, "px")).number(), 1);
    EXPECT_EQ(graph.storedValue(child(point, "py")).number(9), 0);
    EXPECT_EQ(graph.storedValue(child(point, "pz")).number(), 3);
    EXPECT_TRUE(graph.storedValue(point).isEmpty()) << "three numbers are no value";
    EXPECT_TRUE(graph.storedValue(child(graph.element(points, 3), "px")).isEmpty());
}

TEST_F(GraphValues, ReadsNumericArraysInsideElements)
{
    const NodeId skin = make("skinCluster", "skin");
    const Plug weights = child(graph.element(plug(skin, "wl"), 5), "w");
    graph.numericArray(weights, NumberStorage::Double, 1).storeComponent(2, 0, 0.75);
    EXPECT_EQ(graph.storedValue(graph.element(weights, 2)).number(), 0.75);
    EXPECT_EQ(graph.elementIndices(plug(skin, "wl")), std::vector<std::int32_t>{5});
}

TEST_F(GraphValues, FindsLeavesOfNestedCompounds)
{
    // two levels: outer(a, inner(b, c), d); leaves in order a b c d
    Attribute added;
    const auto add = [&](const char* name, AttributeKind kind, AttributeIndex parent) {
        added.longName = name;
        added.kind = kind;
        added.parent = parent;
        added.isMulti = parent == kNoAttribute;
        return graph.addAttribute(transform, added);
    };
    const AttributeIndex outer = add("outer", AttributeKind::Compound, kNoAttribute);
    const AttributeIndex a = add("leafA", AttributeKind::Double, outer);
    const AttributeIndex inner = add("inner", AttributeKind::Compound, outer);
    const AttributeIndex d = add("leafD", AttributeKind::Double, outer);
    const AttributeIndex b = add("leafB", AttributeKind::Double, inner);
    const AttributeIndex c = add("leafC", AttributeKind::Double, inner);
    const Plug array{transform, outer, kNoSlot, -1};
    NumericArray& numbers = graph.numericArray(array, NumberStorage::Double, 4);
    for (std::size_t i = 0; i < 4; ++i) {
        numbers.storeComponent(0, i, double(10 + i));
    }
    const Plug first = graph.element(array, 0);
    EXPECT_EQ(graph.storedValue(graph.child(first, a)).number(), 10);
    EXPECT_EQ(graph.storedValue(graph.child(first, b)).number(), 11);
    EXPECT_EQ(graph.storedValue(graph.child(first, c)).number(), 12);
    EXPECT_EQ(graph.storedValue(graph.child(first, d)).number(), 13);
    EXPECT_TRUE(graph.storedValue(graph.child(first, inner)).isEmpty());
    const AttributeIndex foreign = graph.findAttribute(transform, "tx");
    EXPECT_TRUE(graph.storedValue(graph.child(first, foreign)).isEmpty());
}

TEST_F(GraphValues, StoresNumbersOfElementsWhereTheirKindIsHeld)
{
    const Plug points = plug(mesh, "pt");
    NumericArray& array = graph.numericArray(points, NumberStorage::Float, 3);
    const Plug y = child(graph.element(points, 8), "py");
    graph.setValue(y, 2.0);
    EXPECT_EQ(array.number(8, 1), 2);
    EXPECT_EQ(graph.storedValue(y).number(), 2);
}

TEST_F(GraphValues, KeepsComputedValuesUntilTheirNodeIsTouched)
{
    const Plug matrix = graph.element(plug(transform, "worldMatrix"), 0);
    graph.setComputed(matrix, Value::of(Matrix4()));
    EXPECT_TRUE(isClean(matrix));
    EXPECT_TRUE(graph.node(transform).hasClean);
    EXPECT_NE(graph.storedValue(matrix).data<Matrix4>(), nullptr);
    graph.setValue(plug(transform, "tx"), 1.0);
    EXPECT_FALSE(isClean(matrix));
    EXPECT_FALSE(graph.node(transform).hasClean);
    EXPECT_TRUE(graph.storedValue(matrix).isEmpty()) << "a stale result is no value";
    EXPECT_EQ(graph.storedValue(plug(transform, "tx")).number(), 1) << "a stored one stays";
}

TEST_F(GraphValues, LosesWhatWasComputedWhenAValueIsStoredOnTheSamePlug)
{
    const Plug tx = plug(transform, "tx");
    graph.setComputed(tx, 1.0);
    graph.setValue(tx, 2.0);
    EXPECT_FALSE(isClean(tx));
    EXPECT_EQ(graph.storedValue(tx).number(), 2);
    graph.touch(tx);
    EXPECT_EQ(graph.storedValue(tx).number(), 2);
}

TEST_F(GraphValues, DirtiesEverythingDownstreamThroughNodesWithoutComputedPlugs)
{
    const NodeId first = make("multDoubleLinear", "first");
    const NodeId second = make("multDoubleLinear", "second");
    const NodeId apart = make("multDoubleLinear", "apart");
    ASSERT_TRUE(graph.connect(plug(transform, "tx"), plug(first, "i1")));
    ASSERT_TRUE(graph.connect(plug(first, "o"), plug(second, "i1")));
    graph.setComputed(plug(second, "o"), 1.0); // nothing in between was kept
    graph.setComputed(plug(apart, "o"), 1.0);
    graph.setValue(plug(transform, "tx"), 2.0);
    EXPECT_FALSE(isClean(plug(second, "o")));
    EXPECT_TRUE(isClean(plug(apart, "o")));
}

TEST_F(GraphValues, DirtiesWhatLiesBelowInTheDag)
{
    const NodeId below = graph.createNode(NodeType::find("transform"), "below", transform);
    const NodeId constrained = make("multMatrix", "sum");
    const Plug world = graph.element(plug(below, "worldMatrix"), 0);
    ASSERT_TRUE(graph.connect(world, graph.element(plug(constrained, "matrixIn"), 0)));
    graph.setComputed(world, Value::of(Matrix4()));
    graph.setComputed(plug(constrained, "matrixSum"), Value::of(Matrix4()));
    graph.touch(plug(transform, "rotateX"));
    EXPECT_FALSE(isClean(world));
    EXPECT_FALSE(isClean(plug(constrained, "matrixSum")));
    graph.setComputed(world, Value::of(Matrix4()));
    ASSERT_TRUE(graph.setParent(below, kWorld));
    EXPECT_FALSE(isClean(world)) << "another place";
}

TEST_F(GraphValues, DirtiesTheDestinationOfNewAndGoneConnections)
{
    const NodeId sum = make("addDoubleLinear", "sum");
    graph.setComputed(plug(sum, "o"), 1.0);
    ASSERT_TRUE(graph.connect(plug(transform, "tx"), plug(sum, "i1")));
    EXPECT_FALSE(isClean(plug(sum, "o")));
    graph.setComputed(plug(sum, "o"), 1.0);
    ASSERT_TRUE(graph.disconnect(plug(transform, "tx"), plug(sum, "i1")));
    EXPECT_FALSE(isClean(plug(sum, "o")));
}

TEST_F(GraphValues, EndsOnCyclesAndOnLongChains)
{
    constexpr int kCount = 100000; // a recursion of this depth would not end well
    std::vector<NodeId> chain;
    for (int i = 0; i < kCount; ++i) {
        chain.push_back(make("addDoubleLinear", "n"));
        if (i > 0) {
            ASSERT_TRUE(
                graph.connect(plug(chain[chain.size() - 2], "o"), plug(chain.back(), "i1")));
        }
    }
    ASSERT_TRUE(graph.connect(plug(chain.back(), "o"), plug(chain.front(), "i2")));
    graph.setComputed(plug(chain.back(), "o"), 1.0);
    graph.setValue(plug(chain[1], "i2"), 1.0);
    EXPECT_FALSE(isClean(plug(chain.back(), "o")));
}

} // namespace
} // namespace host::graph
