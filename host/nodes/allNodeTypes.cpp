#include "host/nodes/allNodeTypes.h"

#include "host/nodes/nodeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 10> kAllNodeTypes{
    &kDagNode, &kFile,      &kGroupId,   &kGroupParts, &kJoint,
    &kMesh,    &kTexture2d, &kTexture3d, &kTransform,  &kUnitConversion,
};

} // namespace

std::span<const NodeCompute* const> allNodeTypes()
{
    return kAllNodeTypes;
}

} // namespace host::nodes
