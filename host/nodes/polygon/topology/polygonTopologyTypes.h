// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kDeleteComponent;
extern const NodeCompute kPolyCut;
extern const NodeCompute kPolyDelEdge;
extern const NodeCompute kPolyDelFacet;
extern const NodeCompute kPolyDelVertex;
extern const NodeCompute kPolyExtrudeFace;
extern const NodeCompute kPolyMergeVert;
extern const NodeCompute kPolyMirror;
extern const NodeCompute kPolySeparate;
extern const NodeCompute kPolySplit;
extern const NodeCompute kPolySplitRing;
extern const NodeCompute kPolySubdFace;
extern const NodeCompute kPolyTriangulate;
extern const NodeCompute kPolyUnite;

} // namespace host::nodes
