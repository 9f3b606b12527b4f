#include "host/nodes/hair/allHairNodes.h"

namespace host::nodes {

std::span<const NodeCompute* const> allHairNodes()
{
    return {};
}

} // namespace host::nodes
