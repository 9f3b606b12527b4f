// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kPolyCone;
extern const NodeCompute kPolyCube;
extern const NodeCompute kPolyCylinder;
extern const NodeCompute kPolyDisc;
extern const NodeCompute kPolyPipe;
extern const NodeCompute kPolyPlane;
extern const NodeCompute kPolyPrism;
extern const NodeCompute kPolyPyramid;
extern const NodeCompute kPolySphere;
extern const NodeCompute kPolyTorus;

} // namespace host::nodes
