#include "host/eval/plugSource.h"

#include <algorithm>
#include <array>

namespace host::eval {
namespace {

using graph::Graph;
using graph::NodeId;
using graph::Plug;

constexpr std::size_t kMaxNesting = 12;
constexpr std::size_t kMaxChildren = 4096; ///< a list of siblings that is longer is no list

/// One step down from a plug to a part of it: to an element, or to the child at a position.
struct Descent {
    bool isElement = false;
    std::int32_t index = 0;
    std::size_t position = 0;
};

std::size_t positionAmongSiblings(const Graph& graph, NodeId node, AttributeIndex attribute,
                                  AttributeIndex parent)
{
    AttributeIndex at = graph.attribute(node, parent).firstChild;
    for (std::size_t position = 0; at != kNoAttribute && position < kMaxChildren; ++position) {
        if (at == attribute) {
            return position;
        }
        at = graph.attribute(node, at).nextSibling;
    }
    return kMaxChildren;
}

Descent descentTo(const Graph& graph, const Plug& part, const Plug& whole)
{
    if (part.attribute == whole.attribute) {
        return {true, part.index, 0};
    }
    return {false, -1, positionAmongSiblings(graph, part.node, part.attribute, whole.attribute)};
}

/// The part of `source` at which a descent arrives; null plug when the source is built otherwise.
Plug partOf(Graph& graph, const Plug& source, const Descent& descent)
{
    const Attribute attribute = graph.attribute(source.node, source.attribute);
    if (descent.isElement) {
        const bool isArray = attribute.isMulti && source.index < 0;
        return isArray ? graph.element(source, descent.index) : Plug{};
    }
    const AttributeIndex child = childAt(graph, source.node, source.attribute, descent.position);
    return child == kNoAttribute ? Plug{} : graph.child(source, child);
}

} // namespace

bool hasNoInputs(const graph::Node& node)
{
    constexpr std::size_t kSmall = 32;
    if (node.slots.size() > kSmall) {
        return false;
    }
    return std::none_of(node.slots.begin(), node.slots.end(),
                        [](const graph::Slot& slot) { return slot.input != 0xffffffff; });
}

AttributeIndex childAt(const Graph& graph, NodeId node, AttributeIndex compound,
                       std::size_t position)
{
    if (position >= kMaxChildren) {
        return kNoAttribute;
    }
    AttributeIndex at = graph.attribute(node, compound).firstChild;
    for (; at != kNoAttribute && position > 0; --position) {
        at = graph.attribute(node, at).nextSibling;
    }
    return at;
}

Plug sourceOf(Graph& graph, const Plug& plug)
{
    if (!plug || hasNoInputs(graph.node(plug.node))) {
        return {};
    }
    std::array<Descent, kMaxNesting> way;
    Plug at = plug;
    for (std::size_t depth = 0; depth < kMaxNesting; ++depth) {
        Plug source = graph.inputOf(at);
        if (source) {
            for (std::size_t step = depth; step > 0 && source; --step) {
                source = partOf(graph, source, way[step - 1]);
            }
            return source;
        }
        const Plug around = graph.parentPlug(at);
        if (!around) {
            return {};
        }
        way[depth] = descentTo(graph, at, around);
        at = around;
    }
    return {};
}

} // namespace host::eval
