// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kPolyAverageVertex;
extern const NodeCompute kPolyCircularize;
extern const NodeCompute kPolyMoveEdge;
extern const NodeCompute kPolyMoveFace;
extern const NodeCompute kPolyMoveVertex;
extern const NodeCompute kPolyNormal;
extern const NodeCompute kPolyNormalPerVertex;
extern const NodeCompute kPolySmooth;
extern const NodeCompute kPolySmoothFace;
extern const NodeCompute kPolySmoothProxy;
extern const NodeCompute kPolySoftEdge;
extern const NodeCompute kPolyTweak;

} // namespace host::nodes
