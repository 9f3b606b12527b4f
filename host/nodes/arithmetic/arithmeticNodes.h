// The rows of the node types of this folder.
#pragma once

#include "host/types/ComputeContext.h"

#include <span>

namespace host::nodes {

std::span<const NodeCompute> componentNodes(); ///< three numbers in, three out
std::span<const NodeCompute> scalarNodes();    ///< one number out
std::span<const NodeCompute> sumNodes();       ///< lists of numbers in
std::span<const NodeCompute> rampNodes();
std::span<const NodeCompute> vectorNodes();
std::span<const NodeCompute> matrixNodes();

} // namespace host::nodes
