// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kBlendColorSets;
extern const NodeCompute kCopyColorSet;
extern const NodeCompute kCopyUVSet;
extern const NodeCompute kCreateColorSet;
extern const NodeCompute kCreateUVSet;
extern const NodeCompute kDeleteColorSet;
extern const NodeCompute kDeleteUVSet;
extern const NodeCompute kPolyAutoProj;
extern const NodeCompute kPolyBlindData;
extern const NodeCompute kPolyColorDel;
extern const NodeCompute kPolyColorMod;
extern const NodeCompute kPolyColorPerVertex;
extern const NodeCompute kPolyContourProj;
extern const NodeCompute kPolyCopyUV;
extern const NodeCompute kPolyCrease;
extern const NodeCompute kPolyCreaseEdge;
extern const NodeCompute kPolyCylProj;
extern const NodeCompute kPolyFlipUV;
extern const NodeCompute kPolyLayoutUV;
extern const NodeCompute kPolyMapCut;
extern const NodeCompute kPolyMapDel;
extern const NodeCompute kPolyMapSew;
extern const NodeCompute kPolyMapSewMove;
extern const NodeCompute kPolyMergeUV;
extern const NodeCompute kPolyMoveFacetUV;
extern const NodeCompute kPolyMoveUV;
extern const NodeCompute kPolyNormalizeUV;
extern const NodeCompute kPolyOptUvs;
extern const NodeCompute kPolyPinUV;
extern const NodeCompute kPolyPlanarProj;
extern const NodeCompute kPolyProj;
extern const NodeCompute kPolySphProj;
extern const NodeCompute kPolyStraightenUVBorder;
extern const NodeCompute kPolyTweakUV;
extern const NodeCompute kPolyUVRectangle;
extern const NodeCompute kUnfold3DUnfold;

} // namespace host::nodes
