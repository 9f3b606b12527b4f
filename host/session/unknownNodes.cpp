#include "host/session/unknownNodes.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

namespace host::session {
namespace {

using graph::Graph;
using graph::kNoNode;
using graph::kNoSlot;
using graph::kWorld;
using graph::Node;
using graph::NodeId;
using graph::Plug;
using graph::Slot;
using graph::SlotId;

constexpr std::array<std::string_view, 18> kPlacements{
    "r",
    "ra",
    "rotate",
    "rotateAxis",
    "rotatePivot",
    "rp",
    "rpt",
    "s",
    "scale",
    "scalePivot",
    "sh",
    "shear",
    "sp",
    "spt",
    "t",
    "translate",
    "rotatePivotTranslate",
    "scalePivotTranslate",
};

/// Moves what one node is and has to another one of another type.
class Replacement {
public:
    Replacement(Graph& graph, NodeId from) : m_graph(graph), m_from(from) {}
    NodeId run();

private:
    void takePlace();
    void copyAttributes();
    AttributeIndex mapped(AttributeIndex attribute) const;
    Plug mapped(const Plug& plug);
    void moveSlots();
    void moveConnections();

    Graph& m_graph;
    NodeId m_from;
    NodeId m_to = kNoNode;
    std::unordered_map<AttributeIndex, AttributeIndex> m_dynamic; ///< old index -> new index
};

NodeId Replacement::run()
{
    takePlace();
    copyAttributes();
    moveSlots();
    moveConnections();
    m_graph.node(m_from).isAlive = false;
    return m_to;
}

/// The new node stands where the old one stood, under its name.
void Replacement::takePlace()
{
    const std::string name = m_graph.node(m_from).name;
    std::vector<NodeId> parents = std::move(m_graph.node(m_from).parents);
    m_graph.node(m_from).parents = parents;
    if (parents.empty()) {
        parents.push_back(kWorld);
    }
    m_graph.renameNode(m_from, "replaced " + std::to_string(m_from)); // no name has a blank
    m_graph.node(m_from).parents.clear();
    m_to = m_graph.createNode(unknownTransformType(), name, parents.front());
    for (std::size_t i = 1; i < parents.size(); ++i) {
        (void)m_graph.addParent(m_to, parents[i]); // it stood there before
    }
    for (const NodeId parent : parents) {
        auto& children = m_graph.node(parent).children;
        const auto place = std::find(children.begin(), children.end(), m_from);
        if (place != children.end() && children.back() == m_to) {
            *place = m_to;
            children.pop_back();
        }
    }
    m_graph.node(m_to).unknownType = m_graph.node(m_from).unknownType;
    m_graph.node(m_to).isDefault = m_graph.node(m_from).isDefault;
}

void Replacement::copyAttributes()
{
    const auto first = static_cast<AttributeIndex>(m_graph.node(m_from).type.attributeCount());
    const std::size_t count = m_graph.attributeCount(m_from);
    for (AttributeIndex index = first; index < count; ++index) {
        Attribute attribute = m_graph.attribute(m_from, index);
        attribute.parent =
            attribute.parent == kNoAttribute ? kNoAttribute : mapped(attribute.parent);
        attribute.firstChild = kNoAttribute;
        attribute.nextSibling = kNoAttribute;
        AttributeIndex added = m_graph.findAttribute(m_to, attribute.longName);
        if (added == kNoAttribute) {
            added = m_graph.addAttribute(m_to, attribute);
        }
        m_dynamic[index] = added;
    }
}

AttributeIndex Replacement::mapped(AttributeIndex attribute) const
{
    const NodeType type = m_graph.node(m_from).type;
    if (attribute < type.attributeCount()) {
        return m_graph.findAttribute(m_to, type.attribute(attribute).longName);
    }
    const auto found = m_dynamic.find(attribute);
    return found == m_dynamic.end() ? kNoAttribute : found->second;
}

/// The same plug of the new node; null plug where that has no such attribute.
Plug Replacement::mapped(const Plug& plug)
{
    Plug result{m_to, mapped(plug.attribute), kNoSlot, plug.index};
    if (result.attribute == kNoAttribute) {
        return {};
    }
    if (plug.context != kNoSlot) {
        const Slot& context = m_graph.node(m_from).slots[plug.context];
        const Plug around = mapped({m_from, context.attribute, context.context, context.index});
        if (!around) {
            return {};
        }
        result.context = m_graph.ensureSlot(around);
    }
    return result;
}

void Replacement::moveSlots()
{
    for (SlotId id = 0; id < m_graph.node(m_from).slots.size(); ++id) {
        Slot& slot = m_graph.node(m_from).slots[id];
        if (slot.value.isEmpty() && slot.array == nullptr) {
            continue;
        }
        const Plug plug = mapped({m_from, slot.attribute, slot.context, slot.index});
        if (!plug) {
            continue;
        }
        if (!slot.value.isEmpty()) {
            m_graph.setValue(plug, slot.value);
        }
        if (slot.array != nullptr) {
            m_graph.numericArray(plug, slot.array->storage(), slot.array->width()) =
                std::move(*slot.array);
        }
    }
}

void Replacement::moveConnections()
{
    const auto reconnect = [&](const Plug& source, const Plug& destination) {
        m_graph.disconnect(source, destination);
        const Plug from = source.node == m_from ? mapped(source) : source;
        const Plug to = destination.node == m_from ? mapped(destination) : destination;
        if (from && to) {
            (void)m_graph.connect(from, to); // it was connected before
        }
    };
    for (SlotId id = 0; id < m_graph.node(m_from).slots.size(); ++id) {
        const Slot& slot = m_graph.node(m_from).slots[id];
        const Plug plug{m_from, slot.attribute, slot.context, slot.index};
        if (const Plug source = m_graph.inputOf(plug)) {
            reconnect(source, plug);
        }
        for (const Plug& destination : m_graph.outputsOf(plug)) {
            reconnect(plug, destination);
        }
    }
}

} // namespace

bool isUnknown(const Graph& graph, NodeId node)
{
    const Node& candidate = graph.node(node);
    return candidate.type == unknownType() || candidate.type == unknownDagType();
}

bool isPlacement(std::string_view attributeName)
{
    return std::find(kPlacements.begin(), kPlacements.end(), attributeName) != kPlacements.end();
}

NodeId makeUnknownTransform(Graph& graph, NodeId node)
{
    return Replacement(graph, node).run();
}

} // namespace host::session
