// The node types of this folder: operations that move points, smooth, or turn normals.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

std::span<const NodeCompute* const> allPolygonShapeNodes();

} // namespace host::nodes
