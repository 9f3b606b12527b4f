#include "host/session/plugLookup.h"

#include <algorithm>
#include <array>

namespace host::session {
namespace {

using graph::Graph;
using graph::kNoSlot;
using graph::NodeId;
using graph::Plug;

constexpr std::size_t kMaxNesting = 12;
constexpr std::size_t kMaxChildren = 4096;

constexpr std::array<std::string_view, 10> kPerInstance{
    "compInstObjGroups",  "instObjGroups",      "parentInverseMatrix", "parentMatrix",
    "worldInverseMatrix", "worldLattice",       "worldMatrix",         "worldMesh",
    "worldSpace",         "worldSubdivSurface",
};

/// A child of a compound by its name, or a child of a child.
AttributeIndex findBelow(const Graph& graph, NodeId node, AttributeIndex compound,
                         std::string_view name)
{
    for (const AttributeIndex child : childAttributes(graph, node, compound)) {
        const Attribute attribute = graph.attribute(node, child);
        if (attribute.longName == name || attribute.shortName == name) {
            return child;
        }
    }
    return kNoAttribute;
}

AttributeIndex findStep(const Graph& graph, NodeId node, AttributeIndex around,
                        std::string_view name)
{
    if (around != kNoAttribute) {
        const AttributeIndex below = findBelow(graph, node, around, name);
        if (below != kNoAttribute) {
            return below;
        }
    }
    return graph.findAttribute(node, name);
}

/// The plug of an attribute below `around` (a null plug: below the node), with the compounds in
/// between made up.
Plug plugBelow(Graph& graph, NodeId node, const Plug& around, AttributeIndex attribute,
               std::int32_t instance)
{
    std::array<AttributeIndex, kMaxNesting> chain{};
    std::size_t length = 0;
    AttributeIndex at = attribute;
    while (at != kNoAttribute && length < kMaxNesting && (!around || at != around.attribute)) {
        chain[length++] = at;
        at = graph.attribute(node, at).parent;
    }
    const bool isBelow = around && at == around.attribute;
    Plug plug = isBelow ? around : Plug{};
    for (std::size_t step = length; step > 0; --step) {
        const AttributeIndex next = chain[step - 1];
        plug = plug ? graph.child(plug, next) : Plug{node, next, kNoSlot, -1};
        const Attribute row = graph.attribute(node, next);
        if (step > 1 && row.isMulti) {
            plug = graph.element(plug, isPerInstance(row.longName) ? instance : 0);
        }
    }
    return plug;
}

bool appendLeaves(const Graph& graph, NodeId node, AttributeIndex attribute, std::size_t depth,
                  std::vector<AttributeIndex>& leaves)
{
    const Attribute row = graph.attribute(node, attribute);
    if (isNumeric(row.kind)) {
        leaves.push_back(attribute);
        return leaves.size() <= PlugShape::kMaxWidth;
    }
    if (row.kind != AttributeKind::Compound || depth == kMaxNesting) {
        return false;
    }
    const auto children = childAttributes(graph, node, attribute);
    return std::all_of(children.begin(), children.end(), [&](AttributeIndex child) {
        return !graph.attribute(node, child).isMulti &&
               appendLeaves(graph, node, child, depth + 1, leaves);
    });
}

} // namespace

bool isPerInstance(std::string_view longName)
{
    return std::find(kPerInstance.begin(), kPerInstance.end(), longName) != kPerInstance.end();
}

std::vector<AttributeIndex> childAttributes(const Graph& graph, NodeId node,
                                            AttributeIndex compound)
{
    std::vector<AttributeIndex> children;
    AttributeIndex child = graph.attribute(node, compound).firstChild;
    while (child != kNoAttribute && children.size() < kMaxChildren) {
        children.push_back(child);
        child = graph.attribute(node, child).nextSibling;
    }
    return children;
}

AttributeIndex attributeAt(const Graph& graph, NodeId node, const PlugPath& path)
{
    AttributeIndex at = kNoAttribute;
    for (std::size_t step = 0; step < path.stepCount; ++step) {
        at = findStep(graph, node, at, path.steps[step].name);
        if (at == kNoAttribute) {
            return kNoAttribute;
        }
    }
    return at;
}

Plug plugAt(Graph& graph, NodeId node, const PlugPath& path, std::int32_t instance)
{
    Plug at;
    for (std::size_t number = 0; number < path.stepCount; ++number) {
        const PlugStep& step = path.steps[number];
        const AttributeIndex attribute =
            findStep(graph, node, at ? at.attribute : kNoAttribute, step.name);
        if (attribute == kNoAttribute) {
            return {};
        }
        at = plugBelow(graph, node, at, attribute, instance);
        const Attribute row = graph.attribute(node, attribute);
        if (number + 1 < path.stepCount && row.isMulti) {
            const std::int32_t implied = isPerInstance(row.longName) ? instance : 0;
            at = graph.element(at,
                               step.hasIndex() ? static_cast<std::int32_t>(step.first) : implied);
        }
    }
    return at;
}

std::vector<AttributeIndex> numericLeaves(const Graph& graph, NodeId node, AttributeIndex attribute)
{
    std::vector<AttributeIndex> leaves;
    if (!appendLeaves(graph, node, attribute, 0, leaves)) {
        leaves.clear();
    }
    return leaves;
}

graph::Plug topPlug(const graph::Graph& graph, graph::NodeId node, std::string_view attribute)
{
    const AttributeIndex index =
        node == graph::kNoNode ? kNoAttribute : graph.findAttribute(node, attribute);
    return index == kNoAttribute ? graph::Plug{} : graph::Plug{node, index, graph::kNoSlot, -1};
}

Value storedValue(const graph::Graph& graph, graph::NodeId node, std::string_view attribute)
{
    const graph::Plug plug = topPlug(graph, node, attribute);
    return plug ? graph.storedValue(plug) : Value();
}

PlugShape shapeOfAttribute(const Graph& graph, NodeId node, AttributeIndex attribute)
{
    const Attribute row = graph.attribute(node, attribute);
    PlugShape shape;
    shape.isKnown = true;
    shape.kind = row.kind;
    shape.isMulti = row.isMulti;
    const std::vector<AttributeIndex> leaves = numericLeaves(graph, node, attribute);
    if (leaves.empty() || leaves.size() > PlugShape::kMaxWidth) {
        return shape;
    }
    shape.isNumbers = true;
    shape.width = leaves.size();
    shape.storage = storageOf(graph.attribute(node, leaves.front()).kind);
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        const AttributeKind kind = graph.attribute(node, leaves[i]).kind;
        shape.units[i] = unitOf(kind);
        if (storageOf(kind) != shape.storage) {
            shape.storage = NumberStorage::Double;
        }
    }
    return shape;
}

} // namespace host::session
