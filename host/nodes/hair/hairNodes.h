// The rows of this folder, one file each; allHairNodes.cpp lists them.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kFollicle;
extern const NodeCompute kHairSystem;

} // namespace host::nodes
