// Instance numbers: which path of a node is which, in tables that make every question cheap.
#pragma once

#include "host/graph/Graph.h"

#include <cstdint>
#include <vector>

namespace host::eval {

/// The paths of a node are numbered: for each parent in order, for each path of that parent. Made
/// once for a DAG that does not change any more.
class InstanceTable {
public:
    InstanceTable() = default;
    explicit InstanceTable(const graph::Graph& graph);

    /// Number of paths from the world to a node; 0 outside the DAG, 1 for the world. Saturates.
    std::uint32_t pathCount(graph::NodeId node) const;
    /// Number of the first path that comes through `parent`.
    std::uint32_t firstThrough(graph::NodeId child, graph::NodeId parent) const;

    struct Step {
        graph::NodeId parent = graph::kNoNode;
        std::uint32_t instance = 0;
    };
    /// The parent, and the parent's own path, of the node's path `instance`; no parent when there
    /// is no such path.
    Step above(graph::NodeId node, std::uint32_t instance) const;

private:
    struct Link {
        graph::NodeId parent = graph::kNoNode;
        std::uint32_t first = 0;
    };
    struct Links {
        std::vector<Link> inOrder;
        std::vector<Link> byParent;
    };
    void addLinks(graph::NodeId node, const std::vector<graph::NodeId>& parents);

    const graph::Graph* m_graph = nullptr;
    std::vector<std::uint32_t> m_pathCounts;
    std::vector<std::uint32_t> m_linksOf; ///< position in m_links + 1 for nodes of several parents
    std::vector<Links> m_links;
};

} // namespace host::eval
