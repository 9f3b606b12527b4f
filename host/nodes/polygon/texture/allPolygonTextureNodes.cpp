#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"

#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 27> kNodes{
    &kBlendColorSets,     &kCopyColorSet, &kCopyUVSet,       &kCreateColorSet, &kCreateUVSet,
    &kDeleteColorSet,     &kDeleteUVSet,  &kPolyAutoProj,    &kPolyColorDel,   &kPolyColorMod,
    &kPolyColorPerVertex, &kPolyCopyUV,   &kPolyCrease,      &kPolyCylProj,    &kPolyFlipUV,
    &kPolyLayoutUV,       &kPolyMapCut,   &kPolyMapDel,      &kPolyMapSew,     &kPolyMapSewMove,
    &kPolyMergeUV,        &kPolyMoveUV,   &kPolyNormalizeUV, &kPolyPinUV,      &kPolyPlanarProj,
    &kPolySphProj,        &kPolyTweakUV,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTextureNodes()
{
    return kNodes;
}

} // namespace host::nodes
