#include "host/nodes/polygon/shape/allPolygonShapeNodes.h"

#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 0> kNodes{};

} // namespace

std::span<const NodeCompute* const> allPolygonShapeNodes()
{
    return kNodes;
}

} // namespace host::nodes
