// Plugs and the slots that hold something for them.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace host::graph {

bool Graph::isValid(const Plug& plug) const
{
    return plug.node < m_nodes.size() && plug.attribute < attributeCount(plug.node) &&
           (plug.context == kNoSlot || plug.context < m_nodes[plug.node].slots.size());
}

SlotId Graph::findSlot(const Plug& plug) const
{
    if (plug.node >= m_nodes.size()) {
        return kNoSlot;
    }
    const std::vector<Slot>& slots = m_nodes[plug.node].slots;
    const auto isIt = [&](const Slot& slot) {
        return slot.attribute == plug.attribute && slot.context == plug.context &&
               slot.index == plug.index;
    };
    if (slots.size() <= Index::kSmallNode) {
        const auto found = std::find_if(slots.begin(), slots.end(), isIt);
        return found == slots.end() ? kNoSlot : static_cast<SlotId>(found - slots.begin());
    }
    const IdTable& table = m_index->largeNodes.at(plug.node).slots;
    return table.find(Index::slotHash(plug.attribute, plug.context, plug.index),
                      [&](std::uint32_t, std::uint32_t id) { return isIt(slots[id]); });
}

SlotId Graph::ensureSlot(const Plug& plug)
{
    const SlotId existing = findSlot(plug);
    if (existing != kNoSlot || !isValid(plug)) {
        return existing;
    }
    std::vector<Slot>& slots = m_nodes[plug.node].slots;
    const auto id = static_cast<SlotId>(slots.size());
    Slot& slot = slots.emplace_back();
    slot.attribute = plug.attribute;
    slot.context = plug.context;
    slot.index = plug.index;
    if (slots.size() == Index::kSmallNode + 1) {
        for (SlotId earlier = 0; earlier < id; ++earlier) {
            indexSlot(plug.node, earlier);
        }
    }
    if (slots.size() > Index::kSmallNode) {
        indexSlot(plug.node, id);
    }
    return id;
}

/// Enters a slot in the index of a large node.
void Graph::indexSlot(NodeId node, SlotId id)
{
    const Slot& slot = m_nodes[node].slots[id];
    Index::LargeNode& large = m_index->largeNodes[node];
    large.slots.insert(Index::slotHash(slot.attribute, slot.context, slot.index), 0, id);
    if (slot.index >= 0) {
        Index::Elements& elements = large.arrays[Index::arrayKey(slot.attribute, slot.context)];
        elements.slots.push_back(id);
        if (slot.isUsed) {
            elements.highestUsed = std::max(elements.highestUsed, slot.index);
        }
    }
}

/// The plug's slot, which from now on counts as existing with all that it is inside of.
SlotId Graph::markUsed(const Plug& plug)
{
    const SlotId id = ensureSlot(plug);
    if (id == kNoSlot) {
        return id;
    }
    std::vector<Slot>& slots = m_nodes[plug.node].slots;
    for (SlotId at = id; at != kNoSlot && !slots[at].isUsed; at = slots[at].context) {
        Slot& slot = slots[at];
        slot.isUsed = true;
        if (slot.index >= 0 && slots.size() > Index::kSmallNode) {
            auto& arrays = m_index->largeNodes.at(plug.node).arrays;
            Index::Elements& elements = arrays[Index::arrayKey(slot.attribute, slot.context)];
            elements.highestUsed = std::max(elements.highestUsed, slot.index);
        }
    }
    return id;
}

Plug Graph::child(const Plug& plug, AttributeIndex child)
{
    const SlotId context = plug.index >= 0 ? ensureSlot(plug) : plug.context;
    return {plug.node, child, context, -1};
}

Plug Graph::element(const Plug& array, std::int32_t index) const
{
    return {array.node, array.attribute, array.context, index};
}

Plug Graph::parentPlug(const Plug& plug) const
{
    if (!isValid(plug)) {
        return {};
    }
    if (plug.index >= 0) {
        return {plug.node, plug.attribute, plug.context, -1};
    }
    const AttributeIndex parent = attribute(plug.node, plug.attribute).parent;
    if (parent == kNoAttribute) {
        return {};
    }
    if (plug.context != kNoSlot) {
        const Slot& element = m_nodes[plug.node].slots[plug.context];
        if (element.attribute == parent) {
            return {plug.node, parent, element.context, element.index};
        }
    }
    return {plug.node, parent, plug.context, -1};
}

std::vector<std::int32_t> Graph::elementIndices(const Plug& array) const
{
    std::vector<std::int32_t> indices;
    if (!isValid(array)) {
        return indices;
    }
    const std::vector<Slot>& slots = m_nodes[array.node].slots;
    const auto take = [&](const Slot& slot) {
        if (slot.isUsed && slot.index >= 0 && slot.attribute == array.attribute &&
            slot.context == array.context) {
            indices.push_back(slot.index);
        }
    };
    if (slots.size() <= Index::kSmallNode) {
        std::for_each(slots.begin(), slots.end(), take);
    } else {
        const auto& arrays = m_index->largeNodes.at(array.node).arrays;
        const auto found = arrays.find(Index::arrayKey(array.attribute, array.context));
        if (found != arrays.end()) {
            for (const SlotId id : found->second.slots) {
                take(slots[id]);
            }
        }
    }
    const bool hasSlots = !indices.empty();
    if (const NumericArray* numbers = findNumericArray(array)) {
        for (const NumericArray::Run& run : numbers->runs()) {
            for (std::uint32_t i = 0; i < run.count; ++i) {
                indices.push_back(static_cast<std::int32_t>(run.first + i));
            }
        }
    }
    if (hasSlots) { // runs alone are in order
        std::sort(indices.begin(), indices.end());
        indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    }
    return indices;
}

std::int32_t Graph::nextAvailable(const Plug& array)
{
    if (!isValid(array)) {
        return 0;
    }
    std::int64_t highest = -1;
    const std::vector<Slot>& slots = m_nodes[array.node].slots;
    if (slots.size() <= Index::kSmallNode) {
        for (const Slot& slot : slots) {
            if (slot.isUsed && slot.attribute == array.attribute && slot.context == array.context) {
                highest = std::max<std::int64_t>(highest, slot.index);
            }
        }
    } else {
        const auto& arrays = m_index->largeNodes.at(array.node).arrays;
        const auto found = arrays.find(Index::arrayKey(array.attribute, array.context));
        highest = found == arrays.end() ? -1 : found->second.highestUsed;
    }
    if (const NumericArray* numbers = findNumericArray(array)) {
        highest = std::max(highest, static_cast<std::int64_t>(numbers->endIndex()) - 1);
    }
    constexpr std::int64_t kLast = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(highest + 1, kLast));
}

std::string Graph::plugName(const Plug& plug) const
{
    if (!isValid(plug)) {
        return {};
    }
    const auto stepName = [&](AttributeIndex index, std::int32_t element) {
        std::string name(attribute(plug.node, index).longName);
        if (element >= 0) {
            name += '[' + std::to_string(element) + ']';
        }
        return name;
    };
    const std::vector<Slot>& slots = m_nodes[plug.node].slots;
    std::string name = stepName(plug.attribute, plug.index);
    for (SlotId at = plug.context; at != kNoSlot; at = slots[at].context) {
        name = stepName(slots[at].attribute, slots[at].index) + '.' + name;
    }
    return name;
}

} // namespace host::graph
