// The rows of this folder, one file each; allDeformNodes.cpp lists them.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kBlendShape;
extern const NodeCompute kCluster;
extern const NodeCompute kDeformBend;
extern const NodeCompute kDeformFlare;
extern const NodeCompute kDeformSine;
extern const NodeCompute kDeformSquash;
extern const NodeCompute kDeformTwist;
extern const NodeCompute kDeformWave;
extern const NodeCompute kFfd;
extern const NodeCompute kLattice;
extern const NodeCompute kNonLinear;
extern const NodeCompute kSkinCluster;
extern const NodeCompute kSoftMod;
extern const NodeCompute kTransferAttributes;

} // namespace host::nodes
