#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"

#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 11> kNodes{
    &kBlendColorSets, &kCopyColorSet, &kCreateColorSet,     &kDeleteColorSet,
    &kPolyColorDel,   &kPolyColorMod, &kPolyColorPerVertex, &kPolyCylProj,
    &kPolyPlanarProj, &kPolySphProj,  &kPolyTweakUV,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTextureNodes()
{
    return kNodes;
}

} // namespace host::nodes
