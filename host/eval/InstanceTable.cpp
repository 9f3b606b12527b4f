#include "host/eval/InstanceTable.h"

#include <algorithm>
#include <limits>

namespace host::eval {
namespace {

using graph::NodeId;

std::uint32_t saturatingSum(std::uint32_t a, std::uint32_t b)
{
    const std::uint64_t sum = std::uint64_t{a} + b;
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(sum, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

InstanceTable::InstanceTable(const graph::Graph& graph)
    : m_graph(&graph), m_pathCounts(graph.nodeCount(), 0), m_linksOf(graph.nodeCount(), 0)
{
    std::vector<std::uint32_t> waitingFor(graph.nodeCount());
    for (NodeId node = 0; node < graph.nodeCount(); ++node) {
        waitingFor[node] = static_cast<std::uint32_t>(graph.node(node).parents.size());
    }
    m_pathCounts[graph::kWorld] = 1;
    std::vector<NodeId> ready{graph::kWorld};
    while (!ready.empty()) {
        const NodeId node = ready.back();
        ready.pop_back();
        const auto& parents = graph.node(node).parents;
        if (parents.size() == 1) {
            m_pathCounts[node] = m_pathCounts[parents.front()];
        } else if (!parents.empty()) {
            addLinks(node, parents);
        }
        for (const NodeId child : graph.node(node).children) {
            if (--waitingFor[child] == 0) {
                ready.push_back(child);
            }
        }
    }
}

void InstanceTable::addLinks(NodeId node, const std::vector<NodeId>& parents)
{
    Links links;
    std::uint32_t count = 0;
    for (const NodeId parent : parents) {
        links.inOrder.push_back({parent, count});
        count = saturatingSum(count, m_pathCounts[parent]);
    }
    links.byParent = links.inOrder;
    std::sort(links.byParent.begin(), links.byParent.end(),
              [](const Link& a, const Link& b) { return a.parent < b.parent; });
    m_pathCounts[node] = count;
    m_links.push_back(std::move(links));
    m_linksOf[node] = static_cast<std::uint32_t>(m_links.size());
}

std::uint32_t InstanceTable::pathCount(NodeId node) const
{
    return node < m_pathCounts.size() ? m_pathCounts[node] : 0;
}

std::uint32_t InstanceTable::firstThrough(NodeId child, NodeId parent) const
{
    if (child >= m_linksOf.size() || m_linksOf[child] == 0) {
        return 0;
    }
    const auto& links = m_links[m_linksOf[child] - 1].byParent;
    const auto found =
        std::lower_bound(links.begin(), links.end(), parent,
                         [](const Link& link, NodeId wanted) { return link.parent < wanted; });
    return found != links.end() && found->parent == parent ? found->first : 0;
}

InstanceTable::Step InstanceTable::above(NodeId node, std::uint32_t instance) const
{
    if (node == graph::kWorld || instance >= pathCount(node)) {
        return {};
    }
    if (m_linksOf[node] == 0) {
        return {m_graph->node(node).parents.front(), instance};
    }
    const auto& links = m_links[m_linksOf[node] - 1].inOrder;
    auto next = std::upper_bound(
        links.begin(), links.end(), instance,
        [](std::uint32_t wanted, const Link& link) { return wanted < link.first; });
    --next; // the first link begins at 0
    return {next->parent, instance - next->first};
}

} // namespace host::eval
