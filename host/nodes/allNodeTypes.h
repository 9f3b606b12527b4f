// The list of everything that node types compute.
#pragma once

#include "host/types/ComputeContext.h"

#include <span>

namespace host::nodes {

/// The rows of all computed node types, sorted by type name; a type may have several rows with
/// different outputs.
std::span<const NodeCompute* const> allNodeTypes();

} // namespace host::nodes
