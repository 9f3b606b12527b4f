#include "host/graph/Graph.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace host::graph {
namespace {

class GraphPlugs : public testing::Test {
protected:
    Graph graph;
    NodeId mesh = graph.createNode(NodeType::find("mesh"), "m", kWorld);
    NodeId transform = graph.createNode(NodeType::find("transform"), "t", kWorld);

    Plug plug(NodeId node, std::string_view name)
    {
        const AttributeIndex attribute = graph.findAttribute(node, name);
        EXPECT_NE(attribute, kNoAttribute) << name;
        return {node, attribute, kNoSlot, -1};
    }
    Plug element(NodeId node, std::string_view name, std::int32_t index)
    {
        return graph.element(plug(node, name), index);
    }
    Plug child(const Plug& parent, std::string_view name)
    {
        return graph.child(parent, graph.findAttribute(parent.node, name));
    }
};

TEST_F(GraphPlugs, AddsAttributesAfterThoseOfTheType)
{
    const std::size_t before = graph.attributeCount(transform);
    std::string longName = "height";
    Attribute added;
    added.longName = longName;
    added.shortName = "hgt";
    added.kind = AttributeKind::DoubleLinear;
    added.initial = 2.5;
    const AttributeIndex index = graph.addAttribute(transform, added);
    longName = "gone"; // the graph keeps names of its own
    EXPECT_EQ(index, before);
    EXPECT_EQ(graph.attributeCount(transform), before + 1);
    EXPECT_EQ(graph.findAttribute(transform, "height"), index);
    EXPECT_EQ(graph.findAttribute(transform, "hgt"), index);
    EXPECT_EQ(graph.attribute(transform, index).initial, 2.5);
    EXPECT_EQ(graph.attributeCount(mesh), NodeType::find("mesh").attributeCount());
    EXPECT_EQ(graph.findAttribute(mesh, "height"), kNoAttribute);
}

TEST_F(GraphPlugs, KeepsAnAttributeThatIsThere)
{
    Attribute added;
    added.longName = "translateX";
    EXPECT_EQ(graph.addAttribute(transform, added), graph.findAttribute(transform, "tx"));
    added.longName = "own";
    const AttributeIndex own = graph.addAttribute(transform, added);
    added.kind = AttributeKind::String;
    EXPECT_EQ(graph.addAttribute(transform, added), own);
    EXPECT_EQ(graph.attribute(transform, own).kind, AttributeKind::Any);
    EXPECT_EQ(graph.attribute(transform, own).shortName, "own")
        << "without one it is the long name";
    added.longName = "";
    EXPECT_EQ(graph.addAttribute(transform, added), kNoAttribute);
}

TEST_F(GraphPlugs, LinksAddedChildrenInOrder)
{
    Attribute added;
    added.longName = "pair";
    added.kind = AttributeKind::Compound;
    const AttributeIndex pair = graph.addAttribute(transform, added);
    added.kind = AttributeKind::Float;
    added.parent = pair;
    std::vector<AttributeIndex> made;
    for (int i = 0; i < 40; ++i) {
        const std::string name = "child" + std::to_string(i);
        added.longName = name;
        made.push_back(graph.addAttribute(transform, added));
    }
    AttributeIndex at = graph.attribute(transform, pair).firstChild;
    for (const AttributeIndex expected : made) {
        ASSERT_EQ(at, expected);
        EXPECT_EQ(graph.attribute(transform, at).parent, pair);
        at = graph.attribute(transform, at).nextSibling;
    }
    EXPECT_EQ(at, kNoAttribute);
    EXPECT_EQ(graph.findAttribute(transform, "child39"), made[39]);
    EXPECT_EQ(graph.findAttribute(transform, "child0"), made[0]);
}

TEST_F(GraphPlugs, IgnoresParentsThatWereNotAdded)
{
    Attribute added;
    added.longName = "lost";
    added.parent = graph.findAttribute(transform, "translate");
    EXPECT_EQ(graph.attribute(transform, graph.addAttribute(transform, added)).parent,
              kNoAttribute);
    added.longName = "lost2";
    added.parent = 60000;
    EXPECT_EQ(graph.attribute(transform, graph.addAttribute(transform, added)).parent,
              kNoAttribute);
}

TEST_F(GraphPlugs, LimitsNestingAndNumberOfAddedAttributes)
{
    Attribute added;
    std::size_t deepest = 0;
    while (graph.attributeCount(transform) < kNoAttribute) {
        const std::string name = "a" + std::to_string(graph.attributeCount(transform));
        added.longName = name;
        const AttributeIndex index = graph.addAttribute(transform, added);
        ASSERT_NE(index, kNoAttribute);
        std::size_t levels = 0;
        for (AttributeIndex up = index; up != kNoAttribute; ++levels) {
            up = graph.attribute(transform, up).parent;
        }
        deepest = std::max(deepest, levels);
        added.parent = index;
    }
    EXPECT_EQ(deepest, 12u);
    added.longName = "one more";
    EXPECT_EQ(graph.addAttribute(transform, added), kNoAttribute);
}

TEST_F(GraphPlugs, MakesASlotOncePerPlug)
{
    const Plug tx = plug(transform, "tx");
    EXPECT_EQ(graph.findSlot(tx), kNoSlot);
    const SlotId slot = graph.ensureSlot(tx);
    EXPECT_EQ(graph.ensureSlot(tx), slot);
    EXPECT_EQ(graph.findSlot(tx), slot);
    EXPECT_EQ(graph.node(transform).slots.size(), 1u);
    EXPECT_EQ(graph.findSlot(plug(transform, "ty")), kNoSlot);
}

TEST_F(GraphPlugs, MakesNoSlotForPlugsThatCannotBe)
{
    EXPECT_EQ(graph.ensureSlot({}), kNoSlot);
    EXPECT_EQ(graph.ensureSlot({99, 0, kNoSlot, -1}), kNoSlot);
    EXPECT_EQ(graph.ensureSlot({transform, 60000, kNoSlot, -1}), kNoSlot);
    EXPECT_EQ(graph.ensureSlot({transform, 0, 5, -1}), kNoSlot);
    EXPECT_EQ(graph.findSlot({}), kNoSlot);
    EXPECT_TRUE(graph.elementIndices({}).empty());
    EXPECT_EQ(graph.nextAvailable({}), 0);
    EXPECT_EQ(graph.plugName({}), "");
    EXPECT_FALSE(graph.parentPlug({}));
    EXPECT_TRUE(graph.storedValue({}).isEmpty());
    graph.setValue({}, 1.0);
    graph.setComputed({}, 1.0);
    graph.touch({});
    EXPECT_FALSE(graph.connect({}, plug(transform, "tx")));
    EXPECT_FALSE(graph.disconnect({}, {}));
    EXPECT_FALSE(graph.inputOf({}));
    EXPECT_TRUE(graph.outputsOf({}).empty());
}

TEST_F(GraphPlugs, GoesFromElementsToChildrenAndBack)
{
    const Plug iog = plug(mesh, "iog");
    const Plug iog2 = graph.element(iog, 2);
    EXPECT_EQ(iog2.index, 2);
    const Plug og = child(iog2, "og");
    EXPECT_EQ(og.context, graph.findSlot(iog2)) << "the element's slot was made";
    EXPECT_EQ(og.index, -1);
    const Plug og1 = graph.element(og, 1);
    const Plug gcl = child(og1, "gcl");
    EXPECT_EQ(graph.plugName(gcl), "instObjGroups[2].objectGroups[1].objectGrpCompList");
    EXPECT_EQ(graph.parentPlug(gcl), og1);
    EXPECT_EQ(graph.parentPlug(og1), og);
    EXPECT_EQ(graph.parentPlug(og), iog2);
    EXPECT_EQ(graph.parentPlug(iog2), iog);
    EXPECT_FALSE(graph.parentPlug(iog));
}

TEST_F(GraphPlugs, GoesFromChildrenOfPlainCompoundsToTheCompound)
{
    const Plug t = plug(transform, "t");
    const Plug ty = child(t, "ty");
    EXPECT_EQ(ty, plug(transform, "ty"));
    EXPECT_EQ(graph.parentPlug(ty), t);
    EXPECT_FALSE(graph.parentPlug(t));
    EXPECT_EQ(graph.plugName(ty), "translateY");
    EXPECT_EQ(graph.plugName(element(transform, "worldMatrix", 0)), "worldMatrix[0]");
    EXPECT_TRUE(graph.node(transform).slots.empty()) << "nothing was made";
}

TEST_F(GraphPlugs, KnowsWhichElementsExist)
{
    const Plug gcl = child(graph.element(child(element(mesh, "iog", 3), "og"), 7), "gcl");
    EXPECT_TRUE(graph.elementIndices(plug(mesh, "iog")).empty()) << "asked for, but never set";
    graph.setValue(gcl, Value::of(ComponentList{{"f[0]"}}));
    EXPECT_EQ(graph.elementIndices(plug(mesh, "iog")), std::vector<std::int32_t>{3});
    EXPECT_EQ(graph.elementIndices(child(element(mesh, "iog", 3), "og")),
              std::vector<std::int32_t>{7});
    EXPECT_TRUE(graph.elementIndices(child(element(mesh, "iog", 4), "og")).empty());
    ASSERT_TRUE(graph.connect(element(mesh, "iog", 1),
                              {graph.createNode(NodeType::find("shadingEngine"), "sg", kWorld),
                               NodeType::find("shadingEngine").findAttribute("dsm"), kNoSlot, 0}));
    EXPECT_EQ(graph.elementIndices(plug(mesh, "iog")), (std::vector<std::int32_t>{1, 3}));
}

TEST_F(GraphPlugs, CountsElementsOfNumericArraysToo)
{
    const Plug points = plug(mesh, "pt");
    NumericArray& array = graph.numericArray(points, NumberStorage::Float, 3);
    const std::vector<float> numbers{1, 2, 3, 4, 5, 6};
    array.store<float>(4, std::span<const float>(numbers));
    graph.setValue(child(graph.element(points, 1), "blindDataNodes"), 1.0);
    EXPECT_EQ(graph.elementIndices(points), (std::vector<std::int32_t>{1, 4, 5}));
    EXPECT_EQ(graph.nextAvailable(points), 6);
    EXPECT_EQ(&graph.numericArray(points, NumberStorage::Double, 1), &array) << "made once";
}

TEST_F(GraphPlugs, OffersTheElementAfterTheHighest)
{
    const Plug indices = plug(mesh, "perInstanceIndex");
    EXPECT_EQ(graph.nextAvailable(indices), 0);
    graph.setValue(graph.element(indices, 5), 1.0);
    EXPECT_EQ(graph.nextAvailable(indices), 6);
    graph.setValue(graph.element(indices, 2), 1.0);
    EXPECT_EQ(graph.nextAvailable(indices), 6);
    graph.setValue(graph.element(indices, std::numeric_limits<std::int32_t>::max()), 1.0);
    EXPECT_EQ(graph.nextAvailable(indices), std::numeric_limits<std::int32_t>::max());
}

TEST_F(GraphPlugs, AnswersAlikeForSmallAndLargeNodes)
{
    const NodeId set = graph.createNode(NodeType::find("objectSet"), "set", kWorld);
    const Plug members = plug(set, "dsm");
    for (std::int32_t i = 0; i < 40; ++i) { // passes the size where searching changes
        const Plug member = graph.element(members, 2 * i);
        EXPECT_EQ(graph.findSlot(member), kNoSlot);
        EXPECT_EQ(graph.nextAvailable(members), i == 0 ? 0 : 2 * i - 1);
        const SlotId slot = graph.ensureSlot(member);
        EXPECT_EQ(graph.elementIndices(members).size(), static_cast<std::size_t>(i));
        graph.setValue(member, double(i));
        EXPECT_EQ(graph.findSlot(member), slot);
        EXPECT_EQ(graph.elementIndices(members).size(), static_cast<std::size_t>(i) + 1);
    }
    for (std::int32_t i = 0; i < 40; ++i) {
        EXPECT_EQ(graph.storedValue(graph.element(members, 2 * i)).number(), i);
    }
    graph.setValue(graph.element(members, 1), 1.0);
    const auto indices = graph.elementIndices(members);
    EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end()));
    EXPECT_EQ(indices[1], 1);
}

TEST_F(GraphPlugs, KeepsArraysInsideDifferentElementsApartInLargeNodes)
{
    const Plug iog = plug(mesh, "iog");
    for (std::int32_t i = 0; i < 30; ++i) {
        const Plug groups = child(graph.element(iog, i), "og");
        for (std::int32_t k = 0; k <= i % 3; ++k) {
            graph.setValue(child(graph.element(groups, k), "gid"), double(k));
        }
    }
    EXPECT_EQ(graph.elementIndices(iog).size(), 30u);
    for (std::int32_t i = 0; i < 30; ++i) {
        const Plug groups = child(graph.element(iog, i), "og");
        EXPECT_EQ(graph.elementIndices(groups).size(), static_cast<std::size_t>(i % 3 + 1));
        EXPECT_EQ(graph.nextAvailable(groups), i % 3 + 1);
    }
}

TEST_F(GraphPlugs, HoldsThreeHundredThousandMembersOfASet)
{
    const NodeId set = graph.createNode(NodeType::find("shadingEngine"), "sg", kWorld);
    const Plug members = plug(set, "dsm");
    const AttributeIndex groups = graph.findAttribute(mesh, "iog");
    constexpr std::int32_t kCount = 300000; // a scan per member would take hours
    for (std::int32_t i = 0; i < kCount; ++i) {
        const std::int32_t next = graph.nextAvailable(members);
        ASSERT_EQ(next, i);
        ASSERT_TRUE(graph.connect({mesh, groups, kNoSlot, i}, graph.element(members, next)));
    }
    EXPECT_EQ(graph.inputOf(graph.element(members, kCount - 1)).index, kCount - 1);
    EXPECT_EQ(graph.elementIndices(members).size(), static_cast<std::size_t>(kCount));
}

} // namespace
} // namespace host::graph
