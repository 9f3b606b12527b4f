#include "host/nodes/animation/allAnimationNodes.h"

namespace host::nodes {

std::span<const NodeCompute* const> allAnimationNodes()
{
    return {};
}

} // namespace host::nodes
