#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 43> kNodes{
    &kDeleteComponent,   &kPolyAppend,
    &kPolyAppendVertex,  &kPolyBevel,
    &kPolyBevel2,        &kPolyBevel3,
    &kPolyBoolOp,        &kPolyBridgeEdge,
    &kPolyCBoolOp,       &kPolyChipOff,
    &kPolyCloseBorder,   &kPolyCollapseEdge,
    &kPolyCollapseF,     &kPolyConnectComponents,
    &kPolyCut,           &kPolyDelEdge,
    &kPolyDelFacet,      &kPolyDelVertex,
    &kPolyDuplicateEdge, &kPolyExtrudeEdge,
    &kPolyExtrudeFace,   &kPolyExtrudeVertex,
    &kPolyFlipEdge,      &kPolyHoleFace,
    &kPolyMergeEdge,     &kPolyMergeVert,
    &kPolyMirror,        &kPolyPoke,
    &kPolyQuad,          &kPolyReduce,
    &kPolySeparate,      &kPolySewEdge,
    &kPolySpinEdge,      &kPolySplit,
    &kPolySplitEdge,     &kPolySplitRing,
    &kPolySplitVert,     &kPolySubdEdge,
    &kPolySubdFace,      &kPolyTransfer,
    &kPolyTriangulate,   &kPolyUnite,
    &kPolyWedgeFace,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
