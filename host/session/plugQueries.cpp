// Plugs, their values and their connections.
#include "host/session/SessionState.h"
#include "host/session/plugLookup.h"

#include <algorithm>

namespace host::session {
namespace {

using graph::Graph;
using graph::kNoSlot;
using graph::Slot;

constexpr std::size_t kMaxNesting = 12;

Plug plugOf(NodeId node, const Slot& slot)
{
    return {node, slot.attribute, slot.context, slot.index};
}

/// Where a plug stands among the plugs of its node: attribute and index of each level, outside
/// first.
std::vector<std::int64_t> orderKey(const Graph& graph, Plug plug)
{
    std::vector<std::int64_t> key;
    for (std::size_t depth = 0; plug && depth < kMaxNesting; ++depth) {
        key.push_back(plug.index);
        key.push_back(plug.attribute);
        if (plug.context == kNoSlot) {
            break;
        }
        plug = plugOf(plug.node, graph.node(plug.node).slots[plug.context]);
    }
    std::reverse(key.begin(), key.end());
    return key;
}

/// The plugs of a node for which `wanted` holds, in attribute order.
template<class Wanted>
std::vector<Plug> orderedPlugs(const Graph& graph, NodeId node, Wanted wanted)
{
    struct Entry {
        std::vector<std::int64_t> key;
        Plug plug;
    };
    std::vector<Entry> entries;
    for (const Slot& slot : graph.node(node).slots) {
        if (wanted(slot)) {
            const Plug plug = plugOf(node, slot);
            entries.push_back({orderKey(graph, plug), plug});
        }
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.key < b.key; });
    std::vector<Plug> plugs;
    for (const Entry& entry : entries) {
        plugs.push_back(entry.plug);
    }
    return plugs;
}

bool hasInput(const Slot& slot)
{
    return slot.input != 0xffffffff;
}

bool hasConnection(const Slot& slot)
{
    return hasInput(slot) || slot.firstOutput != 0xffffffff;
}

/// True when `part` is `whole` or lies inside it.
bool isPartOf(const Graph& graph, Plug part, const Plug& whole)
{
    for (std::size_t depth = 0; part && depth < kMaxNesting; ++depth) {
        if (part == whole) {
            return true;
        }
        part = graph.parentPlug(part);
    }
    return false;
}

} // namespace

Plug Session::findPlug(NodeId node, std::string_view attributeName)
{
    return node < m_graph->nodeCount() ? topPlug(*m_graph, node, attributeName) : Plug{};
}

Plug Session::element(const Plug& array, std::int32_t logicalIndex)
{
    if (!array || logicalIndex < 0) {
        return {};
    }
    const Plug plug = m_graph->element(array, logicalIndex);
    m_graph->ensureSlot(plug);
    return plug;
}

std::vector<Plug> Session::children(const Plug& plug)
{
    std::vector<Plug> plugs;
    if (!plug || (plug.index < 0 && m_graph->attribute(plug.node, plug.attribute).isMulti)) {
        return plugs;
    }
    for (const AttributeIndex child : childAttributes(*m_graph, plug.node, plug.attribute)) {
        plugs.push_back(m_graph->child(plug, child));
    }
    return plugs;
}

Value Session::value(const Plug& plug)
{
    return m_evaluation->evaluator.value(plug);
}

double Session::number(const Plug& plug, double fallback)
{
    return plug ? value(plug).number(fallback) : fallback;
}

std::string Session::text(const Plug& plug)
{
    const auto held = value(plug).data<std::string>();
    return held != nullptr ? *held : std::string();
}

std::string Session::plugName(const Plug& plug) const
{
    return plug ? m_graph->node(plug.node).name + "." + m_graph->plugName(plug) : std::string();
}

Plug Session::source(const Plug& plug) const
{
    return plug ? m_graph->inputOf(plug) : Plug{};
}

std::vector<Plug> Session::destinations(const Plug& plug) const
{
    return plug ? m_graph->outputsOf(plug) : std::vector<Plug>{};
}

std::vector<Plug> Session::connectedPlugs(NodeId node) const
{
    if (node >= m_graph->nodeCount()) {
        return {};
    }
    return orderedPlugs(*m_graph, node, hasConnection);
}

std::vector<NodeId> Session::upstreamNodes(const Plug& plug) const
{
    std::vector<NodeId> nodes;
    if (!plug) {
        return nodes;
    }
    std::vector<bool> isMet(m_graph->nodeCount(), false);
    const auto meet = [&](NodeId node) {
        if (!isMet[node]) {
            isMet[node] = true;
            nodes.push_back(node);
        }
    };
    meet(plug.node);
    for (const Plug& fed : orderedPlugs(*m_graph, plug.node, hasInput)) {
        if (isPartOf(*m_graph, fed, plug)) {
            meet(m_graph->inputOf(fed).node);
        }
    }
    for (std::size_t next = 1; next < nodes.size(); ++next) {
        for (const Plug& fed : orderedPlugs(*m_graph, nodes[next], hasInput)) {
            meet(m_graph->inputOf(fed).node);
        }
    }
    return nodes;
}

} // namespace host::session
