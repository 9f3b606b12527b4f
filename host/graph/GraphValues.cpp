// Values on plugs, and which of them still hold.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <limits>
#include <utility>

namespace host::graph {
namespace {

constexpr std::size_t kNoPosition = std::numeric_limits<std::size_t>::max();

} // namespace

/// Position of a leaf among the leaves of a compound, in order; kNoPosition if it is none of them.
std::size_t Graph::leafPosition(NodeId node, AttributeIndex compound, AttributeIndex leaf) const
{
    std::size_t position = 0;
    AttributeIndex at = attribute(node, compound).firstChild;
    while (at != kNoAttribute && at != compound) {
        Attribute current = attribute(node, at);
        if (current.firstChild != kNoAttribute) {
            at = current.firstChild;
            continue;
        }
        if (at == leaf) {
            return position;
        }
        ++position;
        while (at != compound && current.nextSibling == kNoAttribute) { // up to the next branch
            at = current.parent;
            current = attribute(node, at);
        }
        at = at == compound ? compound : current.nextSibling;
    }
    return kNoPosition;
}

/// The numeric array that would hold a number of this plug, with the place in it: for an element of
/// plain numbers its array, for a leaf inside an element the array of those elements.
const NumericArray* Graph::arrayHolding(const Plug& plug, std::uint32_t& index,
                                        std::size_t& component) const
{
    if (!isValid(plug)) {
        return nullptr;
    }
    if (plug.index >= 0) {
        const NumericArray* array = findNumericArray({plug.node, plug.attribute, plug.context, -1});
        index = static_cast<std::uint32_t>(plug.index);
        component = 0;
        return array != nullptr && array->width() == 1 ? array : nullptr;
    }
    if (plug.context == kNoSlot) {
        return nullptr;
    }
    const Slot& element = m_nodes[plug.node].slots[plug.context];
    const NumericArray* array =
        findNumericArray({plug.node, element.attribute, element.context, -1});
    if (array == nullptr || element.index < 0) {
        return nullptr;
    }
    index = static_cast<std::uint32_t>(element.index);
    component = leafPosition(plug.node, element.attribute, plug.attribute);
    return component < array->width() ? array : nullptr;
}

NumericArray* Graph::arrayHolding(const Plug& plug, std::uint32_t& index, std::size_t& component)
{
    return const_cast<NumericArray*>(std::as_const(*this).arrayHolding(plug, index, component));
}

void Graph::setValue(const Plug& plug, Value value)
{
    if (!isValid(plug)) {
        return;
    }
    std::uint32_t index = 0;
    std::size_t component = 0;
    NumericArray* array = value.isNumber() ? arrayHolding(plug, index, component) : nullptr;
    if (array != nullptr) {
        array->storeComponent(index, component, value.number());
    }
    if (array == nullptr || findSlot(plug) != kNoSlot) {
        Slot& slot = m_nodes[plug.node].slots[markUsed(plug)];
        slot.isClean = false; // what is stored outlives the next touch
        slot.value = std::move(value);
    }
    touch(plug);
}

NumericArray& Graph::numericArray(const Plug& array, NumberStorage storage, std::size_t width)
{
    const SlotId id = markUsed({array.node, array.attribute, array.context, -1});
    Slot& slot = m_nodes[array.node].slots[id];
    if (!slot.array) {
        slot.array = std::make_unique<NumericArray>(storage, width);
    }
    return *slot.array;
}

const NumericArray* Graph::findNumericArray(const Plug& array) const
{
    const SlotId id = findSlot({array.node, array.attribute, array.context, -1});
    return id == kNoSlot ? nullptr : m_nodes[array.node].slots[id].array.get();
}

Value Graph::storedValue(const Plug& plug) const
{
    const SlotId id = findSlot(plug);
    if (id != kNoSlot && !m_nodes[plug.node].slots[id].value.isEmpty()) {
        return m_nodes[plug.node].slots[id].value;
    }
    std::uint32_t index = 0;
    std::size_t component = 0;
    const NumericArray* array = arrayHolding(plug, index, component);
    return array != nullptr && array->has(index) ? Value(array->number(index, component)) : Value();
}

void Graph::touch(const Plug& plug)
{
    if (plug.node < m_nodes.size()) {
        touchNode(plug.node);
    }
}

void Graph::touchNode(NodeId node)
{
    if (!m_index->isAnyClean) {
        return;
    }
    m_index->beginVisit();
    m_index->visitOnce(node);
    std::vector<NodeId> open{node};
    const auto reach = [&](NodeId next) {
        if (m_index->visitOnce(next)) {
            open.push_back(next);
        }
    };
    while (!open.empty()) {
        Node& current = m_nodes[open.back()];
        open.pop_back();
        for (Slot& slot : current.slots) {
            if (slot.isClean) {
                slot.isClean = false;
                slot.value = Value();
            }
            for (std::uint32_t at = slot.firstOutput; at != kNoId;
                 at = m_connections[at].nextOutput) {
                reach(m_connections[at].destination.node);
            }
        }
        current.hasClean = false;
        for (const NodeId child : current.children) {
            reach(child);
        }
    }
}

void Graph::setComputed(const Plug& plug, Value value)
{
    const SlotId id = markUsed(plug);
    if (id == kNoSlot) {
        return;
    }
    Node& node = m_nodes[plug.node];
    node.slots[id].value = std::move(value);
    node.slots[id].isClean = true;
    node.hasClean = true;
    m_index->isAnyClean = true;
}

} // namespace host::graph
