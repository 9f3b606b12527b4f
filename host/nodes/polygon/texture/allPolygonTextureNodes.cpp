#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"

#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 36> kNodes{
    &kBlendColorSets,  &kCopyColorSet,    &kCopyUVSet,
    &kCreateColorSet,  &kCreateUVSet,     &kDeleteColorSet,
    &kDeleteUVSet,     &kPolyAutoProj,    &kPolyBlindData,
    &kPolyColorDel,    &kPolyColorMod,    &kPolyColorPerVertex,
    &kPolyContourProj, &kPolyCopyUV,      &kPolyCrease,
    &kPolyCreaseEdge,  &kPolyCylProj,     &kPolyFlipUV,
    &kPolyLayoutUV,    &kPolyMapCut,      &kPolyMapDel,
    &kPolyMapSew,      &kPolyMapSewMove,  &kPolyMergeUV,
    &kPolyMoveFacetUV, &kPolyMoveUV,      &kPolyNormalizeUV,
    &kPolyOptUvs,      &kPolyPinUV,       &kPolyPlanarProj,
    &kPolyProj,        &kPolySphProj,     &kPolyStraightenUVBorder,
    &kPolyTweakUV,     &kPolyUVRectangle, &kUnfold3DUnfold,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTextureNodes()
{
    return kNodes;
}

} // namespace host::nodes
