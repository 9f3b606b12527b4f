// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kBlendColorSets;
extern const NodeCompute kCopyColorSet;
extern const NodeCompute kCreateColorSet;
extern const NodeCompute kDeleteColorSet;
extern const NodeCompute kPolyColorDel;
extern const NodeCompute kPolyColorMod;
extern const NodeCompute kPolyColorPerVertex;
extern const NodeCompute kPolyCylProj;
extern const NodeCompute kPolyPlanarProj;
extern const NodeCompute kPolySphProj;
extern const NodeCompute kPolyTweakUV;

} // namespace host::nodes
