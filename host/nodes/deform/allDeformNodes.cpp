#include "host/nodes/deform/allDeformNodes.h"

#include "host/nodes/deform/deformTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 14> kDeformNodes{
    &kBlendShape,  &kCluster,
    &kDeformBend,  &kDeformFlare,
    &kDeformSine,  &kDeformSquash,
    &kDeformTwist, &kDeformWave,
    &kFfd,         &kLattice,
    &kNonLinear,   &kSkinCluster,
    &kSoftMod,     &kTransferAttributes,
};

} // namespace

std::span<const NodeCompute* const> allDeformNodes()
{
    return kDeformNodes;
}

} // namespace host::nodes
