// The rows of the node types, one file each; allNodeTypes.cpp puts them in order.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kDagNode;
extern const NodeCompute kFile;
extern const NodeCompute kGroupId;
extern const NodeCompute kGroupParts;
extern const NodeCompute kJoint;
extern const NodeCompute kMesh;
extern const NodeCompute kTexture2d;
extern const NodeCompute kTexture3d;
extern const NodeCompute kTransform;
extern const NodeCompute kUnitConversion;

} // namespace host::nodes
