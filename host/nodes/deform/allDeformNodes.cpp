#include "host/nodes/deform/allDeformNodes.h"

#include "host/nodes/deform/deformTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 13> kDeformNodes{
    &kBlendShape,   &kCluster,     &kDeformBend, &kDeformFlare, &kDeformSine,
    &kDeformSquash, &kDeformTwist, &kDeformWave, &kFfd,         &kLattice,
    &kNonLinear,    &kSkinCluster, &kSoftMod,
};

} // namespace

std::span<const NodeCompute* const> allDeformNodes()
{
    return kDeformNodes;
}

} // namespace host::nodes
