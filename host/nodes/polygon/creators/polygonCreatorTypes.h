// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kPolyCube;
extern const NodeCompute kPolyCylinder;
extern const NodeCompute kPolyPlane;
extern const NodeCompute kPolySphere;

} // namespace host::nodes
