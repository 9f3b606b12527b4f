// A small graph made by hand, for tests of what stands on graphs.
#pragma once

#include "host/graph/Graph.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace test {

class GraphScene {
public:
    host::graph::Graph graph;

    host::graph::NodeId node(std::string_view type, std::string_view name,
                             host::graph::NodeId parent = host::graph::kWorld)
    {
        const host::NodeType found = host::NodeType::find(type);
        if (!found) {
            throw std::logic_error("no node type " + std::string(type));
        }
        return graph.createNode(found, name, parent);
    }

    host::graph::Plug plug(host::graph::NodeId node, std::string_view attribute) const
    {
        const host::AttributeIndex index = graph.findAttribute(node, attribute);
        if (index == host::kNoAttribute) {
            throw std::logic_error("no attribute " + std::string(attribute));
        }
        return {node, index, host::graph::kNoSlot, -1};
    }

    host::graph::Plug element(host::graph::NodeId node, std::string_view attribute,
                              std::int32_t index) const
    {
        return graph.element(plug(node, attribute), index);
    }

    /// "array[index].child".
    host::graph::Plug child(host::graph::NodeId node, std::string_view array, std::int32_t index,
                            std::string_view name)
    {
        return graph.child(element(node, array, index), plug(node, name).attribute);
    }

    void connect(const host::graph::Plug& source, const host::graph::Plug& destination)
    {
        const auto done = graph.connect(source, destination);
        if (!done) {
            throw std::logic_error(done.error().message);
        }
    }
};

} // namespace test
