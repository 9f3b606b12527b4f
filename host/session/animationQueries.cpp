// Whether a node is animated. The graph is searched; nothing is evaluated. This is the one place
// that decides what counts: curves do, driven ones too; expressions, dynamics, and the targets of
// constraints do not.
#include "host/session/SessionState.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_set>

namespace host::session {
namespace {

using graph::Graph;
using graph::Slot;

/// Nodes that hand animation on.
constexpr std::array<std::string_view, 5> kCarriers{"blendWeighted", "character", "mute",
                                                    "pairBlend", "unitConversion"};

bool isCurve(std::string_view type)
{
    return type.starts_with("animCurve");
}

bool isCarrier(std::string_view type)
{
    return type.starts_with("animBlendNode") ||
           std::find(kCarriers.begin(), kCarriers.end(), type) != kCarriers.end();
}

std::string_view typeWord(const graph::Node& node)
{
    return node.unknownType.empty() ? node.type.name() : std::string_view(node.unknownType);
}

void addSources(const Graph& graph, NodeId node, std::vector<Plug>& sources)
{
    for (const Slot& slot : graph.node(node).slots) {
        if (slot.input != 0xffffffff) {
            sources.push_back(graph.connections()[slot.input].source);
        }
    }
}

} // namespace

bool Session::isFedByCurve(NodeId node) const
{
    std::vector<Plug> sources;
    addSources(*m_graph, node, sources);
    std::unordered_set<std::uint64_t> met; // carriers, and channels of characters
    const auto isNew = [&](NodeId id, graph::SlotId slot) {
        return met.insert(std::uint64_t{id} << 32 | slot).second;
    };
    while (!sources.empty()) {
        const Plug source = sources.back();
        sources.pop_back();
        const std::string_view type = typeWord(m_graph->node(source.node));
        if (isCurve(type)) {
            return true;
        }
        if (type == "character") {
            // It holds the channels of many objects: only this one's counts.
            const Plug above = m_graph->inputOf(source);
            if (above && isNew(source.node, m_graph->findSlot(source))) {
                sources.push_back(above);
            }
        } else if (isCarrier(type) && isNew(source.node, graph::kNoSlot)) {
            addSources(*m_graph, source.node, sources);
        }
    }
    return false;
}

bool Session::isAnimated(NodeId node) const
{
    return node != kWorld && node < m_graph->nodeCount() && isFedByCurve(node);
}

bool Session::isAnimated(const DagPath& path, bool checkParents) const
{
    if (!checkParents) {
        return isAnimated(path.end());
    }
    return std::any_of(path.nodes.begin(), path.nodes.end(),
                       [this](NodeId node) { return isAnimated(node); });
}

} // namespace host::session
