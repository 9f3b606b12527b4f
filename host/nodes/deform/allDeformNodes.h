// The node types of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

std::span<const NodeCompute* const> allDeformNodes();

} // namespace host::nodes
