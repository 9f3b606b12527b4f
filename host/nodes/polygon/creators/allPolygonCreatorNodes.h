// The node types of this folder: meshes out of nothing, or out of curves and surfaces.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

std::span<const NodeCompute* const> allPolygonCreatorNodes();

} // namespace host::nodes
