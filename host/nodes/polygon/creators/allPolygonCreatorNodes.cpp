#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"

#include "host/nodes/polygon/creators/polygonCreatorTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 4> kNodes{
    &kPolyCube,
    &kPolyCylinder,
    &kPolyPlane,
    &kPolySphere,
};

} // namespace

std::span<const NodeCompute* const> allPolygonCreatorNodes()
{
    return kNodes;
}

} // namespace host::nodes
