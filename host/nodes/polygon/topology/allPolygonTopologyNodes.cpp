#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 0> kNodes{};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
