#include "host/graph/Graph.h"

#include "host/graph/GraphIndex.h"

#include <cassert>
#include <utility>

namespace host::graph {
namespace {

constexpr std::size_t kMaxNumberDigits = 9; // of a name's end that is raised
constexpr NodeId kOutsideDag[] = {kNoNode}; // stands for the parent where there is none

/// Number of digits at the end of a name, at most kMaxNumberDigits.
std::size_t countEndDigits(std::string_view name)
{
    std::size_t count = 0;
    while (count < name.size() && count < kMaxNumberDigits) {
        const char letter = name[name.size() - 1 - count];
        if (letter < '0' || letter > '9') {
            break;
        }
        ++count;
    }
    return count;
}

std::string numbered(std::string_view stem, std::uint64_t number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    const std::size_t zeros = text.size() < digits ? digits - text.size() : 0;
    return std::string(stem) + std::string(zeros, '0') + text;
}

} // namespace

Graph::Graph() : m_index(std::make_shared<Index>())
{
    Node world;
    world.type = NodeType::find("dagNode");
    world.name = "world"; // no name that anyone finds it by: scenes may use it
    m_nodes.push_back(std::move(world));
    m_index->nextNamed.push_back(kNoNode);
    m_index->previousNamed.push_back(kNoNode);
    m_index->depths.push_back(0);
    m_index->visits.push_back(0);
}

NodeId Graph::createNode(NodeType type, std::string_view name, NodeId parent)
{
    assert(type && "a node needs a type");
    Index& index = *m_index;
    const auto id = static_cast<NodeId>(m_nodes.size());
    name = withoutRootMark(name);
    const std::string invented = name.empty() ? std::string(type.name()) + "1" : std::string();

    Node& node = m_nodes.emplace_back();
    node.type = type;
    index.nextNamed.push_back(kNoNode);
    index.previousNamed.push_back(kNoNode);
    index.depths.push_back(0);
    index.visits.push_back(0);
    if (node.isDag()) {
        if (parent >= id || !m_nodes[parent].isDag()) {
            parent = kWorld;
        }
        while (index.depths[parent] >= kMaxDagDepth) {
            parent = m_nodes[parent].parents.front();
        }
        node.parents.push_back(parent);
        m_nodes[parent].children.push_back(id);
        index.depths[id] = index.depths[parent] + 1;
    }
    nameNode(id, name.empty() ? invented : name);
    return id;
}

void Graph::renameNode(NodeId node, std::string_view name)
{
    name = withoutRootMark(name);
    if (node == kWorld || node >= m_nodes.size() || name.empty() || m_nodes[node].name == name) {
        return;
    }
    const std::string wanted(name); // may be a view of the name that goes
    forgetName(node);
    nameNode(node, wanted);
}

/// Enters a node under a name that is free among its rivals.
void Graph::nameNode(NodeId node, std::string_view name)
{
    Index& index = *m_index;
    Node& named = m_nodes[node];
    const std::span<const NodeId> rivals = named.isDag() ? std::span<const NodeId>(named.parents)
                                                         : std::span<const NodeId>(kOutsideDag);
    named.name = freeName(node, name, rivals);
    for (const NodeId parent : rivals) {
        index.children.insert(Index::childHash(parent, named.name), parent, node);
    }
    std::uint32_t chainId = findNameChain(named.name);
    if (chainId == kNoId) {
        chainId = static_cast<std::uint32_t>(index.chains.size());
        index.chains.emplace_back();
        index.names.insert(hashText(named.name), 0, chainId);
    }
    Index::NameChain& chain = index.chains[chainId];
    NodeId before = chain.last; // a renamed node stands where its creation puts it
    while (before != kNoNode && before > node) {
        before = index.previousNamed[before];
    }
    const NodeId after = before == kNoNode ? chain.first : index.nextNamed[before];
    index.previousNamed[node] = before;
    index.nextNamed[node] = after;
    (before == kNoNode ? chain.first : index.nextNamed[before]) = node;
    (after == kNoNode ? chain.last : index.previousNamed[after]) = node;
    ++chain.count;
}

/// Takes a node out of all indices of names.
void Graph::forgetName(NodeId node)
{
    Index& index = *m_index;
    const Node& named = m_nodes[node];
    const std::span<const NodeId> rivals = named.isDag() ? std::span<const NodeId>(named.parents)
                                                         : std::span<const NodeId>(kOutsideDag);
    for (const NodeId parent : rivals) {
        index.children.erase(Index::childHash(parent, named.name), parent, node);
    }
    const std::uint32_t chainId = findNameChain(named.name);
    Index::NameChain& chain = index.chains[chainId];
    const NodeId before = index.previousNamed[node];
    const NodeId after = index.nextNamed[node];
    (before == kNoNode ? chain.first : index.nextNamed[before]) = after;
    (after == kNoNode ? chain.last : index.previousNamed[after]) = before;
    if (--chain.count == 0) {
        index.names.erase(hashText(named.name), 0, chainId);
    }
}

/// The name itself, or the first free one with its trailing number raised.
std::string Graph::freeName(NodeId node, std::string_view name,
                            std::span<const NodeId> rivals) const
{
    const auto isFree = [&](std::string_view candidate) {
        for (const NodeId parent : rivals) {
            if (isNameTaken(node, candidate, parent)) {
                return false;
            }
        }
        return true;
    };
    if (isFree(name)) {
        return std::string(name);
    }
    const std::size_t digits = countEndDigits(name);
    const std::string_view stem = name.substr(0, name.size() - digits);
    std::uint64_t number = 0;
    for (const char digit : name.substr(stem.size())) {
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    const NodeId rival = rivals.empty() ? kNoNode : rivals.front();
    std::uint64_t& next = m_index->nextNumbers[std::to_string(rival) + '|' + std::string(stem)];
    number = next > number ? next : number + 1;
    std::string candidate = numbered(stem, number, digits);
    while (!isFree(candidate)) {
        candidate = numbered(stem, ++number, digits);
    }
    next = number + 1;
    return candidate;
}

bool Graph::isNameTaken(NodeId node, std::string_view name, NodeId parent) const
{
    const NodeId holder = findChild(parent, name);
    return holder != kNoNode && holder != node;
}

/// The child of a name; with kNoNode as parent, the node of that name outside the DAG.
NodeId Graph::findChild(NodeId parent, std::string_view name) const
{
    return m_index->children.find(Index::childHash(parent, name),
                                  [&](std::uint32_t owner, std::uint32_t id) {
                                      return owner == parent && m_nodes[id].name == name;
                                  });
}

std::uint32_t Graph::findNameChain(std::string_view name) const
{
    return m_index->names.find(hashText(name), [&](std::uint32_t, std::uint32_t id) {
        const NodeId first = m_index->chains[id].first;
        return first != kNoNode && m_nodes[first].name == name;
    });
}

} // namespace host::graph
