// Where a plug's value comes from when something is connected to it or to a compound around it.
#pragma once

#include "host/graph/Graph.h"

namespace host::eval {

/// The plug that feeds `plug`: the source connected to it, else the matching part, by position, of
/// the source connected to the nearest compound, element or array around it. Null plug: none.
graph::Plug sourceOf(graph::Graph& graph, const graph::Plug& plug);

/// True for a small node without any connection to it; false may also mean that nobody looked.
bool hasNoInputs(const graph::Node& node);

/// The child attribute at a position of a compound attribute; kNoAttribute when it has fewer.
AttributeIndex childAt(const graph::Graph& graph, graph::NodeId node, AttributeIndex compound,
                       std::size_t position);

} // namespace host::eval
