// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kDeleteComponent;
extern const NodeCompute kPolyAppend;
extern const NodeCompute kPolyAppendVertex;
extern const NodeCompute kPolyBevel;
extern const NodeCompute kPolyBevel2;
extern const NodeCompute kPolyBevel3;
extern const NodeCompute kPolyBoolOp;
extern const NodeCompute kPolyBridgeEdge;
extern const NodeCompute kPolyCBoolOp;
extern const NodeCompute kPolyChipOff;
extern const NodeCompute kPolyCloseBorder;
extern const NodeCompute kPolyCollapseEdge;
extern const NodeCompute kPolyCollapseF;
extern const NodeCompute kPolyConnectComponents;
extern const NodeCompute kPolyCut;
extern const NodeCompute kPolyDelEdge;
extern const NodeCompute kPolyDelFacet;
extern const NodeCompute kPolyDelVertex;
extern const NodeCompute kPolyDuplicateEdge;
extern const NodeCompute kPolyExtrudeEdge;
extern const NodeCompute kPolyExtrudeFace;
extern const NodeCompute kPolyExtrudeVertex;
extern const NodeCompute kPolyFlipEdge;
extern const NodeCompute kPolyHoleFace;
extern const NodeCompute kPolyMergeEdge;
extern const NodeCompute kPolyMergeVert;
extern const NodeCompute kPolyMirror;
extern const NodeCompute kPolyPoke;
extern const NodeCompute kPolyQuad;
extern const NodeCompute kPolyReduce;
extern const NodeCompute kPolySeparate;
extern const NodeCompute kPolySewEdge;
extern const NodeCompute kPolySpinEdge;
extern const NodeCompute kPolySplit;
extern const NodeCompute kPolySplitEdge;
extern const NodeCompute kPolySplitRing;
extern const NodeCompute kPolySplitVert;
extern const NodeCompute kPolySubdEdge;
extern const NodeCompute kPolySubdFace;
extern const NodeCompute kPolyTransfer;
extern const NodeCompute kPolyTriangulate;
extern const NodeCompute kPolyUnite;
extern const NodeCompute kPolyWedgeFace;

} // namespace host::nodes
