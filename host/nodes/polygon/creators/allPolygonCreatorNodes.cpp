#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"

#include "host/nodes/polygon/creators/polygonCreatorTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 16> kNodes{
    &kNurbsTessellate, &kPolyCone,     &kPolyCreateFace,    &kPolyCube,
    &kPolyCylinder,    &kPolyDisc,     &kPolyHelix,         &kPolyPipe,
    &kPolyPlane,       &kPolyPlatonic, &kPolyPlatonicSolid, &kPolyPrimitiveMisc,
    &kPolyPrism,       &kPolyPyramid,  &kPolySphere,        &kPolyTorus,
};

} // namespace

std::span<const NodeCompute* const> allPolygonCreatorNodes()
{
    return kNodes;
}

} // namespace host::nodes
