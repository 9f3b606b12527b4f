// The node types of this folder: operations that change which parts a mesh has.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

std::span<const NodeCompute* const> allPolygonTopologyNodes();

} // namespace host::nodes
