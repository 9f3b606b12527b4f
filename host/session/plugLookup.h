// From the text of a plug to the plug.
#pragma once

#include "host/graph/Graph.h"
#include "host/types/PlugPath.h"
#include "host/types/PlugShape.h"

#include <cstdint>

namespace host::session {

/// True for the multis that have one element per path of their node ("instObjGroups",
/// "worldMatrix", ...): an index that is left out means the instance of the path that was written.
bool isPerInstance(std::string_view longName);

/// The attribute that a path ends at; kNoAttribute when the node has no such attribute. Compounds
/// may be left out of the path.
AttributeIndex attributeAt(const graph::Graph& graph, graph::NodeId node, const PlugPath& path);

/// The plug of a path, for a multi the array as a whole: the last step's index is the caller's.
/// Elements on the way are made; where their index is left out it is `instance` for a multi per
/// instance, else 0. Null plug when the node has no such attribute.
graph::Plug plugAt(graph::Graph& graph, graph::NodeId node, const PlugPath& path,
                   std::int32_t instance = 0);

/// The plug of an attribute by its long or short name; null plug when there is no such node or
/// attribute.
graph::Plug topPlug(const graph::Graph& graph, graph::NodeId node, std::string_view attribute);

/// What is stored there; empty when nothing is.
Value storedValue(const graph::Graph& graph, graph::NodeId node, std::string_view attribute);

/// What an attribute takes.
PlugShape shapeOfAttribute(const graph::Graph& graph, graph::NodeId node, AttributeIndex attribute);

/// The numeric attributes at the ends of a compound, in order, at most PlugShape::kMaxWidth;
/// the attribute itself when it is numeric. Empty when something else is among them.
std::vector<AttributeIndex> numericLeaves(const graph::Graph& graph, graph::NodeId node,
                                          AttributeIndex attribute);

/// The children of a compound attribute in order.
std::vector<AttributeIndex> childAttributes(const graph::Graph& graph, graph::NodeId node,
                                            AttributeIndex compound);

} // namespace host::session
