// Which attributes of nodes without a computation are results, so that their defaults say nothing.
#pragma once

#include "host/types/NodeType.h"

namespace host::eval {

/// True for an attribute that its node computes and no file stores: a destination connected to it
/// keeps its own value while nothing computes it.
bool isResult(NodeType type, std::string_view longName);

/// True for an attribute through which geometry comes into a node.
bool isGeometryInput(std::string_view longName);

} // namespace host::eval
