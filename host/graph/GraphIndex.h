// What the graph keeps beside its nodes to find things in one step. Only the graph's own files
// include this.
#pragma once

#include "host/graph/Graph.h"
#include "host/graph/IdTable.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace host::graph {

/// A name without the ':' that pins it to the root namespace.
constexpr std::string_view withoutRootMark(std::string_view name)
{
    return name.substr(0, 1) == ":" ? name.substr(1) : name;
}

/// A path taken apart: "|a|b" is full, "a|b" is not; "->" separates like "|".
struct Graph::NamePath {
    std::vector<std::string_view> parts;
    bool isFull = false;
};

struct Graph::Index {
    /// Nodes of one name, a list in order of creation.
    struct NameChain {
        NodeId first = kNoNode;
        NodeId last = kNoNode;
        std::uint32_t count = 0;
    };
    /// Plugs that are elements of one multi.
    struct Elements {
        std::vector<SlotId> slots;
        std::int32_t highestUsed = -1;
    };
    /// A node with more slots than a search from the first to the last is good for.
    struct LargeNode {
        IdTable slots;
        std::unordered_map<std::uint64_t, Elements> arrays; ///< by `arrayKey`
    };
    /// The attributes that were added to a node, by long and short name.
    struct DynamicNames {
        std::unordered_map<std::string_view, AttributeIndex> byName;
        std::unordered_map<AttributeIndex, AttributeIndex> lastChild;
    };

    static constexpr std::size_t kSmallNode = 12; ///< slots that are searched one by one

    std::vector<NameChain> chains;
    IdTable names;                 ///< name -> chain
    std::vector<NodeId> nextNamed; ///< of each node: the next of its chain
    std::vector<NodeId> previousNamed;
    IdTable children; ///< (parent, name) -> child; kNoNode for those outside the DAG
    std::unordered_map<std::string, std::uint64_t> nextNumbers; ///< after a clash: rival and stem
    std::vector<std::uint32_t> depths;                          ///< longest way from the world
    std::vector<std::uint32_t> visits;                          ///< last visit of each node
    std::uint32_t visit = 0;
    std::unordered_map<NodeId, LargeNode> largeNodes;
    std::unordered_map<NodeId, DynamicNames> dynamicNames;
    std::unordered_set<std::string> texts; ///< names of dynamic attributes
    bool isAnyClean = false;               ///< something was computed

    static std::uint64_t childHash(NodeId parent, std::string_view name)
    {
        return hashText(name, mixBits(parent));
    }
    static std::uint64_t arrayKey(AttributeIndex attribute, SlotId context)
    {
        return std::uint64_t{context} << 16 | attribute;
    }
    static std::uint64_t slotHash(AttributeIndex attribute, SlotId context, std::int32_t index)
    {
        return mixBits(mixBits(arrayKey(attribute, context)) + static_cast<std::uint32_t>(index));
    }

    void beginVisit()
    {
        if (++visit == 0) {
            visits.assign(visits.size(), 0);
            visit = 1;
        }
    }
    /// True the first time in this round.
    bool visitOnce(NodeId node)
    {
        if (visits[node] == visit) {
            return false;
        }
        visits[node] = visit;
        return true;
    }
};

} // namespace host::graph
