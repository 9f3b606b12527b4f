#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"

#include "host/nodes/polygon/creators/polygonCreatorTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 10> kNodes{
    &kPolyCone,  &kPolyCube,  &kPolyCylinder, &kPolyDisc,   &kPolyPipe,
    &kPolyPlane, &kPolyPrism, &kPolyPyramid,  &kPolySphere, &kPolyTorus,
};

} // namespace

std::span<const NodeCompute* const> allPolygonCreatorNodes()
{
    return kNodes;
}

} // namespace host::nodes
