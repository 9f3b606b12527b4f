// Whether a node is animated. The graph is searched; nothing is evaluated. This is the one place
// that decides what counts: curves do, driven ones too; expressions, dynamics, and the targets of
// constraints do not.
#include "host/session/SessionState.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_set>
#include <utility>

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

bool isMessage(const Graph& graph, const Plug& plug)
{
    return graph.attribute(plug.node, plug.attribute).kind == AttributeKind::Message;
}

/// Marks what curves feed, going down from them once.
class CurveSpread {
public:
    explicit CurveSpread(const Graph& graph) : m_graph(graph), m_isFed(graph.nodeCount(), false) {}

    std::vector<bool> run()
    {
        for (NodeId node = 0; node < m_graph.nodeCount(); ++node) {
            if (isCurve(typeWord(m_graph.node(node)))) {
                spreadFrom(node);
            }
        }
        while (!m_open.empty() || !m_openChannels.empty()) {
            if (!m_open.empty()) {
                const NodeId carrier = m_open.back();
                m_open.pop_back();
                spreadFrom(carrier);
                continue;
            }
            const auto [character, channel] = m_openChannels.back();
            m_openChannels.pop_back();
            spread(m_graph.node(character).slots[channel]);
        }
        return std::move(m_isFed);
    }

private:
    void spreadFrom(NodeId node)
    {
        for (const Slot& slot : m_graph.node(node).slots) {
            spread(slot);
        }
    }

    void spread(const Slot& slot)
    {
        for (std::uint32_t at = slot.firstOutput; at != kNone;
             at = m_graph.connections()[at].nextOutput) {
            const graph::ConnectionRecord& connection = m_graph.connections()[at];
            if (!isMessage(m_graph, connection.source) &&
                !isMessage(m_graph, connection.destination)) {
                reach(connection.destination);
            }
        }
    }

    void reach(const Plug& plug)
    {
        const bool isNew = !m_isFed[plug.node];
        m_isFed[plug.node] = true;
        const std::string_view type = typeWord(m_graph.node(plug.node));
        if (type == "character") {
            // It holds the channels of many objects: only what this one feeds is fed.
            const graph::SlotId channel = m_graph.findSlot(plug);
            if (m_channels.insert(std::uint64_t{plug.node} << 32 | channel).second) {
                m_openChannels.emplace_back(plug.node, channel);
            }
        } else if (isNew && isCarrier(type)) {
            m_open.push_back(plug.node);
        }
    }

    static constexpr std::uint32_t kNone = 0xffffffff;
    const Graph& m_graph;
    std::vector<bool> m_isFed;
    std::vector<NodeId> m_open;                                   ///< carriers that curves feed
    std::vector<std::pair<NodeId, graph::SlotId>> m_openChannels; ///< channels that curves feed
    std::unordered_set<std::uint64_t> m_channels; ///< of characters, that were followed
};

} // namespace

bool Session::isAnimated(NodeId node) const
{
    const std::uint32_t round = m_graph->connectionRound() + 1;
    if (m_evaluation->fedRound != round) {
        m_evaluation->fedRound = round;
        m_evaluation->fedByCurves = CurveSpread(*m_graph).run();
    }
    return node != kWorld && node < m_evaluation->fedByCurves.size() &&
           m_evaluation->fedByCurves[node];
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
