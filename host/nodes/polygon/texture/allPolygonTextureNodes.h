// The node types of this folder: operations on texture coordinates and colours.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

std::span<const NodeCompute* const> allPolygonTextureNodes();

} // namespace host::nodes
