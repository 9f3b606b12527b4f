#include "host/eval/InstanceTable.h"

#include "tests/support/GraphScene.h"

#include <gtest/gtest.h>

namespace {

using host::eval::InstanceTable;
using host::graph::kWorld;

/// top1 and top2 both hold mid, top2 only after top1; mid and top2 both hold leaf:
///   leaf: top1|mid (0), top2|mid (1), top2 (2).
class Instances : public ::testing::Test, public test::GraphScene {
protected:
    Instances()
    {
        top1 = node("transform", "top1");
        top2 = node("transform", "top2");
        mid = node("transform", "mid", top1);
        EXPECT_TRUE(graph.addParent(mid, top2));
        leaf = node("mesh", "leaf", mid);
        EXPECT_TRUE(graph.addParent(leaf, top2));
        outside = node("lambert", "outside");
    }
    host::graph::NodeId top1, top2, mid, leaf, outside;
};

TEST_F(Instances, CountsTheWaysDownFromTheWorld)
{
    const InstanceTable table(graph);
    EXPECT_EQ(table.pathCount(kWorld), 1U);
    EXPECT_EQ(table.pathCount(top1), 1U);
    EXPECT_EQ(table.pathCount(mid), 2U);
    EXPECT_EQ(table.pathCount(leaf), 3U);
    EXPECT_EQ(table.pathCount(outside), 0U);
    EXPECT_EQ(table.pathCount(9999), 0U);
}

TEST_F(Instances, NumberEachParentInOrderAndEachPathOfIt)
{
    const InstanceTable table(graph);
    EXPECT_EQ(table.firstThrough(mid, top1), 0U);
    EXPECT_EQ(table.firstThrough(mid, top2), 1U);
    EXPECT_EQ(table.firstThrough(leaf, mid), 0U);
    EXPECT_EQ(table.firstThrough(leaf, top2), 2U);
}

TEST_F(Instances, LeadBackFromANumberToTheParentAndItsOwnNumber)
{
    const InstanceTable table(graph);
    const auto expectStep = [&](std::uint32_t instance, host::graph::NodeId parent,
                                std::uint32_t above) {
        const InstanceTable::Step step = table.above(leaf, instance);
        EXPECT_EQ(step.parent, parent) << instance;
        EXPECT_EQ(step.instance, above) << instance;
    };
    expectStep(0, mid, 0);
    expectStep(1, mid, 1);
    expectStep(2, top2, 0);
    EXPECT_EQ(table.above(leaf, 3).parent, host::graph::kNoNode);
    EXPECT_EQ(table.above(outside, 0).parent, host::graph::kNoNode);
    EXPECT_EQ(table.above(kWorld, 0).parent, host::graph::kNoNode);
}

TEST_F(Instances, OfOneNodeUnderManyParentsAreFoundByEachParent)
{
    std::vector<host::graph::NodeId> parents;
    const auto shared = node("mesh", "shared", mid);
    for (int i = 0; i < 1000; ++i) {
        parents.push_back(node("transform", std::string("parent").append(std::to_string(i))));
        ASSERT_TRUE(graph.addParent(shared, parents.back()));
    }
    const InstanceTable table(graph);
    ASSERT_EQ(table.pathCount(shared), 1002U); // mid has two
    for (std::uint32_t i = 0; i < 1000; ++i) {
        EXPECT_EQ(table.firstThrough(shared, parents[i]), i + 2);
        EXPECT_EQ(table.above(shared, i + 2).parent, parents[i]);
    }
}

} // namespace
