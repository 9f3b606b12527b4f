// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kNurbsTessellate;
extern const NodeCompute kPolyCone;
extern const NodeCompute kPolyCreateFace;
extern const NodeCompute kPolyCube;
extern const NodeCompute kPolyCylinder;
extern const NodeCompute kPolyDisc;
extern const NodeCompute kPolyHelix;
extern const NodeCompute kPolyPipe;
extern const NodeCompute kPolyPlane;
extern const NodeCompute kPolyPlatonic;
extern const NodeCompute kPolyPlatonicSolid;
extern const NodeCompute kPolyPrimitiveMisc;
extern const NodeCompute kPolyPrism;
extern const NodeCompute kPolyPyramid;
extern const NodeCompute kPolySphere;
extern const NodeCompute kPolyTorus;

} // namespace host::nodes
