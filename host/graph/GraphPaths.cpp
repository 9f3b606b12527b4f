// How names and paths find nodes.
#include "host/graph/Graph.h"
#include "host/graph/GraphIndex.h"

#include <algorithm>
#include <utility>

namespace host::graph {
namespace {

constexpr std::size_t kMaxSearchSteps = 20000; // of one partial path

/// Length of the separator at a position: "|", "->" or "->|"; 0 if there is none.
std::size_t separatorAt(std::string_view text, std::size_t at)
{
    if (text[at] == '|') {
        return 1;
    }
    if (text.substr(at, 2) != "->") {
        return 0;
    }
    return text.substr(at, 3) == "->|" ? 3 : 2;
}

bool isPlainName(std::string_view text)
{
    return text.find('|') == std::string_view::npos && text.find("->") == std::string_view::npos;
}

} // namespace

NodeId Graph::findNode(std::string_view nameOrPath) const
{
    if (isPlainName(nameOrPath)) {
        const std::uint32_t chain = findNameChain(withoutRootMark(nameOrPath));
        return chain == kNoId ? kNoNode : m_index->chains[chain].first;
    }
    std::vector<NodeId> chain;
    return findPath(nameOrPath, chain);
}

NodeId Graph::findPath(std::string_view nameOrPath, std::vector<NodeId>& chain) const
{
    chain.clear();
    if (isPlainName(nameOrPath)) {
        const NodeId node = findNode(nameOrPath);
        if (node != kNoNode && m_nodes[node].isDag()) {
            chain.push_back(node);
            prependFirstPath(chain);
        }
        return node;
    }
    NamePath path;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < nameOrPath.size();) {
        const std::size_t length = separatorAt(nameOrPath, at);
        if (length == 0) {
            ++at;
            continue;
        }
        if (at == 0) {
            path.isFull = true;
        } else {
            path.parts.push_back(withoutRootMark(nameOrPath.substr(begin, at - begin)));
        }
        at += length;
        begin = at;
    }
    path.parts.push_back(withoutRootMark(nameOrPath.substr(begin)));
    return path.isFull ? walkDown(path, 0, kWorld, chain) : findPartial(path, chain);
}

/// Follows the parts from `first` on downwards and appends them to `chain`; the last node, or
/// kNoNode with an empty chain.
NodeId Graph::walkDown(const NamePath& path, std::size_t first, NodeId from,
                       std::vector<NodeId>& chain) const
{
    for (std::size_t i = first; i < path.parts.size(); ++i) {
        from = findChild(from, path.parts[i]);
        if (from == kNoNode) {
            chain.clear();
            return kNoNode;
        }
        chain.push_back(from);
    }
    return from;
}

/// Finds ancestors of `from`, the part `last`, that bear the names of the parts before it; `chain`
/// begins with them and ends with `from`.
bool Graph::walkUp(const NamePath& path, std::size_t last, NodeId from, std::vector<NodeId>& chain,
                   std::size_t& budget) const
{
    std::vector<std::pair<NodeId, std::size_t>> levels{{from, 0}}; // node, next parent to try
    while (!levels.empty() && levels.size() <= last) {
        const std::string_view wanted = path.parts[last - levels.size()];
        auto& [node, next] = levels.back();
        const std::vector<NodeId>& parents = m_nodes[node].parents;
        NodeId found = kNoNode;
        while (found == kNoNode && next < parents.size() && budget > 0) {
            --budget;
            const NodeId parent = parents[next++];
            found = parent != kWorld && m_nodes[parent].name == wanted ? parent : kNoNode;
        }
        if (found != kNoNode) {
            levels.emplace_back(found, 0);
        } else {
            levels.pop_back();
        }
    }
    chain.clear();
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        chain.push_back(level->first);
    }
    return !levels.empty();
}

/// The first made node that a partial path fits. Begins at the part with the fewest candidates.
NodeId Graph::findPartial(const NamePath& path, std::vector<NodeId>& chain) const
{
    const Index& index = *m_index;
    const Index::NameChain* fewest = nullptr;
    std::size_t anchor = 0;
    for (std::size_t i = 0; i < path.parts.size(); ++i) {
        const std::uint32_t id = findNameChain(path.parts[i]);
        if (id == kNoId) {
            return kNoNode;
        }
        if (fewest == nullptr || index.chains[id].count < fewest->count) {
            fewest = &index.chains[id];
            anchor = i;
        }
    }
    NodeId best = kNoNode;
    std::vector<NodeId> tried;
    std::size_t budget = kMaxSearchSteps;
    for (NodeId candidate = fewest->first; candidate != kNoNode && budget > 0;
         candidate = index.nextNamed[candidate]) {
        --budget;
        if (!walkUp(path, anchor, candidate, tried, budget)) {
            continue;
        }
        const NodeId end = walkDown(path, anchor + 1, candidate, tried);
        if (end < best) {
            best = end;
            chain.swap(tried);
        }
    }
    if (best != kNoNode) {
        prependFirstPath(chain);
    }
    return best;
}

/// Completes a chain upwards through first parents.
void Graph::prependFirstPath(std::vector<NodeId>& chain) const
{
    std::vector<NodeId> above;
    for (NodeId node = m_nodes[chain.front()].parents.front(); node != kWorld;
         node = m_nodes[node].parents.front()) {
        above.push_back(node);
    }
    chain.insert(chain.begin(), above.rbegin(), above.rend());
}

} // namespace host::graph
