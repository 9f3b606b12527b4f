#include "host/nodes/hair/allHairNodes.h"

#include "host/nodes/hair/hairNodes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 2> kHairNodes{&kFollicle, &kHairSystem};

} // namespace

std::span<const NodeCompute* const> allHairNodes()
{
    return kHairNodes;
}

} // namespace host::nodes
