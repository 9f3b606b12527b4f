// Nodes of types that nobody here knows, and what they turn out to be.
#pragma once

#include "host/graph/Graph.h"

namespace host::session {

/// True for a node of an unknown type that is not (yet) taken for a transform.
bool isUnknown(const graph::Graph& graph, graph::NodeId node);

/// Makes an unknown node a transform, because it has children or is placed like one. A node's type
/// decides where its own attributes are numbered, so another node takes its place: with the name,
/// the parents (the world for one outside the DAG), the attributes, values and connections. The
/// former one is dead from then on. Returns the new one.
graph::NodeId makeUnknownTransform(graph::Graph& graph, graph::NodeId node);

/// True for the compounds by which a transform is placed ("t", "rotate", ...).
bool isPlacement(std::string_view attributeName);

} // namespace host::session
