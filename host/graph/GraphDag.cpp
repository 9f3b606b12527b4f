// Parents and children.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <utility>

namespace host::graph {
namespace {

Error badLink(std::string message, const Node& child)
{
    return {ErrorCode::InvalidParameter, std::move(message), child.name};
}

std::size_t saturatingSum(std::size_t a, std::size_t b)
{
    return b > std::numeric_limits<std::size_t>::max() - a ? std::numeric_limits<std::size_t>::max()
                                                           : a + b;
}

} // namespace

/// Whether both may be child and parent at all, and no cycle would come of it.
Expected<void> Graph::checkLink(NodeId child, NodeId parent) const
{
    if (child >= m_nodes.size() || parent >= m_nodes.size() || child == kWorld) {
        return Error{ErrorCode::InvalidParameter, "no such child or parent", {}};
    }
    if (!m_nodes[child].isDag() || !m_nodes[parent].isDag()) {
        return badLink("child and parent must both be DAG nodes", m_nodes[child]);
    }
    if (child == parent || isAncestor(child, parent)) {
        return badLink("a node cannot lie below itself", m_nodes[child]);
    }
    return {};
}

/// True when some way up from `node` leads through `ancestor`.
bool Graph::isAncestor(NodeId ancestor, NodeId node) const
{
    if (m_nodes[ancestor].children.empty()) {
        return false;
    }
    m_index->beginVisit();
    std::vector<NodeId> open{node};
    while (!open.empty()) {
        const NodeId current = open.back();
        open.pop_back();
        for (const NodeId parent : m_nodes[current].parents) {
            if (parent == ancestor) {
                return true;
            }
            if (m_index->visitOnce(parent)) {
                open.push_back(parent);
            }
        }
    }
    return false;
}

/// Brings the depths of a node and of all below it up to date; false when one is too deep (the
/// caller then takes the change back and calls again).
bool Graph::updateDepths(NodeId from)
{
    std::vector<std::uint32_t>& depths = m_index->depths;
    std::deque<NodeId> open{from};
    while (!open.empty()) {
        const NodeId node = open.front();
        open.pop_front();
        std::uint32_t depth = 0;
        for (const NodeId parent : m_nodes[node].parents) {
            depth = std::max(depth, depths[parent] + 1);
        }
        if (depth > kMaxDagDepth) {
            return false;
        }
        if (depth != depths[node]) {
            depths[node] = depth;
            open.insert(open.end(), m_nodes[node].children.begin(), m_nodes[node].children.end());
        }
    }
    return true;
}

/// The other half of a link whose parent is in the child's list already: the child's place with its
/// parent, under a name that is free there.
void Graph::link(NodeId child, NodeId parent)
{
    m_nodes[parent].children.push_back(child);
    if (!isNameTaken(child, m_nodes[child].name, parent)) {
        const std::uint64_t hash = Index::childHash(parent, m_nodes[child].name);
        m_index->children.insert(hash, parent, child);
        return;
    }
    const std::string name = m_nodes[child].name;
    forgetName(child);
    nameNode(child, name);
}

/// Takes the child from its parent's list and index, not the parent from the child's.
void Graph::unlink(NodeId child, NodeId parent)
{
    std::vector<NodeId>& children = m_nodes[parent].children;
    children.erase(std::find(children.begin(), children.end(), child));
    const std::uint64_t hash = Index::childHash(parent, m_nodes[child].name);
    m_index->children.erase(hash, parent, child);
}

Expected<void> Graph::addParent(NodeId child, NodeId parent)
{
    if (const auto check = checkLink(child, parent); !check) {
        return check;
    }
    std::vector<NodeId>& parents = m_nodes[child].parents;
    if (findChild(parent, m_nodes[child].name) == child) {
        return badLink("the parent is one already", m_nodes[child]);
    }
    parents.push_back(parent);
    if (m_index->depths[child] <= m_index->depths[parent] && !updateDepths(child)) {
        parents.pop_back();
        updateDepths(child);
        return Error{ErrorCode::Limit, "the DAG would become too deep", m_nodes[child].name};
    }
    link(child, parent);
    touchNode(child);
    return {};
}

Expected<void> Graph::removeParent(NodeId child, NodeId parent)
{
    if (child >= m_nodes.size() || parent >= m_nodes.size()) {
        return Error{ErrorCode::InvalidParameter, "no such child or parent", {}};
    }
    std::vector<NodeId>& parents = m_nodes[child].parents;
    const auto found = std::find(parents.begin(), parents.end(), parent);
    if (found == parents.end()) {
        return badLink("the parent is none of the node's", m_nodes[child]);
    }
    if (parents.size() == 1) {
        return badLink("the only parent must stay", m_nodes[child]);
    }
    unlink(child, parent);
    parents.erase(found);
    updateDepths(child);
    touchNode(child);
    return {};
}

Expected<void> Graph::setParent(NodeId child, NodeId parent)
{
    if (const auto check = checkLink(child, parent); !check) {
        return check;
    }
    std::vector<NodeId> former{parent};
    if (m_nodes[child].parents == former) {
        return {};
    }
    m_nodes[child].parents.swap(former);
    if (!updateDepths(child)) {
        m_nodes[child].parents.swap(former);
        updateDepths(child);
        return Error{ErrorCode::Limit, "the DAG would become too deep", m_nodes[child].name};
    }
    for (const NodeId old : former) {
        unlink(child, old);
    }
    link(child, parent);
    touchNode(child);
    return {};
}

/// All DAG nodes, each after its parents; the world first.
std::vector<NodeId> Graph::parentsFirst() const
{
    std::vector<std::size_t> missing(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        missing[i] = m_nodes[i].parents.size();
    }
    std::vector<NodeId> order{kWorld};
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (const NodeId child : m_nodes[order[i]].children) {
            if (--missing[child] == 0) {
                order.push_back(child);
            }
        }
    }
    return order;
}

namespace {

/// The links that make instances, in a row: nodes in order of creation, of each node its last
/// parent first and its first parent never.
struct ExtraLinks {
    explicit ExtraLinks(const std::vector<Node>& nodes) : m_nodes(nodes)
    {
        for (const Node& node : nodes) {
            starts.push_back(count);
            count += node.parents.empty() ? 0 : node.parents.size() - 1;
        }
    }
    /// Parents that a node keeps when the first `removed` links are gone.
    std::size_t kept(NodeId node, std::size_t removed) const
    {
        const std::size_t parents = m_nodes[node].parents.size();
        const std::size_t mine = removed > starts[node] ? removed - starts[node] : 0;
        return parents == 0 ? 0 : parents - std::min(mine, parents - 1);
    }
    /// Paths of all nodes below the world together.
    std::size_t pathsWithout(std::size_t removed, std::span<const NodeId> parentsFirst) const
    {
        std::vector<std::size_t> paths(m_nodes.size());
        paths[kWorld] = 1;
        std::size_t total = 0;
        for (const NodeId node : parentsFirst.subspan(1)) {
            for (std::size_t i = 0; i < kept(node, removed); ++i) {
                paths[node] = saturatingSum(paths[node], paths[m_nodes[node].parents[i]]);
            }
            total = saturatingSum(total, paths[node]);
        }
        return total;
    }

    std::size_t count = 0;
    std::vector<std::size_t> starts; ///< of each node: links of the nodes before it

private:
    const std::vector<Node>& m_nodes;
};

} // namespace

std::size_t Graph::limitPaths(std::size_t maxPaths)
{
    const ExtraLinks extras(m_nodes);
    if (extras.count == 0) {
        return 0;
    }
    const std::vector<NodeId> order = parentsFirst();
    std::size_t low = 0, high = extras.count; // the fewest that are enough lie in between
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const bool isEnough = extras.pathsWithout(middle, order) <= maxPaths;
        (isEnough ? high : low) = isEnough ? middle : middle + 1;
    }
    if (low > 0) {
        std::vector<std::size_t> kept(m_nodes.size());
        for (const NodeId node : order) {
            kept[node] = extras.kept(node, low);
        }
        cutParents(kept, order);
        touchNode(kWorld);
    }
    return low;
}

/// Leaves each node so many of its first parents.
void Graph::cutParents(const std::vector<std::size_t>& kept, std::span<const NodeId> order)
{
    std::vector<std::pair<NodeId, NodeId>> lost; // parent, child
    for (const NodeId child : order) {
        std::vector<NodeId>& parents = m_nodes[child].parents;
        for (std::size_t i = kept[child]; i < parents.size(); ++i) {
            lost.emplace_back(parents[i], child);
            const std::uint64_t hash = Index::childHash(parents[i], m_nodes[child].name);
            m_index->children.erase(hash, parents[i], child);
        }
        parents.resize(kept[child]);
        std::uint32_t depth = 0;
        for (const NodeId parent : parents) {
            depth = std::max(depth, m_index->depths[parent] + 1);
        }
        m_index->depths[child] = depth;
    }
    std::sort(lost.begin(), lost.end());
    for (std::size_t i = 0; i < lost.size(); ++i) {
        const NodeId parent = lost[i].first;
        if (i == 0 || lost[i - 1].first != parent) {
            std::erase_if(m_nodes[parent].children, [&](NodeId child) {
                return std::binary_search(lost.begin(), lost.end(), std::pair(parent, child));
            });
        }
    }
}

std::size_t Graph::pathCount(NodeId node) const
{
    NodeId top = node;
    while (m_nodes[top].parents.size() == 1) {
        top = m_nodes[top].parents.front();
    }
    if (top == kWorld) {
        return 1;
    }
    std::unordered_map<NodeId, std::size_t> counts{{kWorld, 1}};
    std::vector<NodeId> open{node};
    while (!open.empty()) {
        const NodeId current = open.back();
        if (counts.count(current) != 0) {
            open.pop_back();
            continue;
        }
        std::size_t total = 0;
        bool isReady = true;
        for (const NodeId parent : m_nodes[current].parents) {
            const auto known = counts.find(parent);
            if (known == counts.end()) {
                open.push_back(parent);
                isReady = false;
            } else {
                total = saturatingSum(total, known->second);
            }
        }
        if (isReady) {
            counts.emplace(current, total);
            open.pop_back();
        }
    }
    return counts[node];
}

} // namespace host::graph
