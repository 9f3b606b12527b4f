// The few script commands that have an answer.
#include "host/session/SessionState.h"

#include <unordered_map>

namespace host::session {
namespace {

using graph::Graph;

std::vector<NodeId> shapesOf(const Graph& graph)
{
    std::vector<NodeId> shapes;
    for (NodeId node = 1; node < graph.nodeCount(); ++node) {
        if (graph.node(node).isAlive && graph.node(node).type.isShape()) {
            shapes.push_back(node);
        }
    }
    return shapes;
}

} // namespace

/// The shortest end of each node's first path that no other node of the scene has.
std::vector<std::string> Session::shortestNames(const std::vector<NodeId>& nodes) const
{
    std::unordered_map<std::string_view, std::uint32_t> bearers;
    for (NodeId node = 1; node < m_graph->nodeCount(); ++node) {
        ++bearers[m_graph->node(node).name];
    }
    std::vector<std::string> names(nodes.size());
    struct Pending {
        std::size_t position;
        DagPath path;
    };
    std::vector<Pending> pending;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::string& name = m_graph->node(nodes[i]).name;
        names[i] = name;
        if (bearers[name] > 1) {
            pending.push_back({i, firstPathTo(nodes[i])});
        }
    }
    for (std::size_t length = 2; !pending.empty() && length <= graph::kMaxDagDepth + 1; ++length) {
        std::unordered_map<std::string, std::uint32_t> counts;
        for (const Pending& entry : pending) {
            const auto& path = entry.path.nodes;
            std::string& name = names[entry.position];
            if (length <= path.size()) {
                name = m_graph->node(path[path.size() - length]).name + "|" + name;
            } else if (name.front() != '|') {
                name = "|" + name;
            }
            ++counts[name];
        }
        std::erase_if(pending, [&](const Pending& entry) {
            return counts[names[entry.position]] == 1 || names[entry.position].front() == '|';
        });
    }
    return names;
}

Expected<std::vector<std::string>> Session::executeCommand(std::string_view command)
{
    if (command == "ls -shapes") {
        return shortestNames(shapesOf(*m_graph));
    }
    if (command == "currentUnit -query -linear") {
        return std::vector<std::string>{m_units.linear};
    }
    return Error{ErrorCode::InvalidParameter, "unknown command '" + std::string(command) + "'", {}};
}

} // namespace host::session
