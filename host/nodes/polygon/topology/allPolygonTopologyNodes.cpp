#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 34> kNodes{
    &kDeleteComponent, &kPolyAppend,      &kPolyAppendVertex, &kPolyBevel,
    &kPolyBevel2,      &kPolyBevel3,      &kPolyBoolOp,       &kPolyBridgeEdge,
    &kPolyCBoolOp,     &kPolyChipOff,     &kPolyCloseBorder,  &kPolyCollapseEdge,
    &kPolyCollapseF,   &kPolyCut,         &kPolyDelEdge,      &kPolyDelFacet,
    &kPolyDelVertex,   &kPolyExtrudeEdge, &kPolyExtrudeFace,  &kPolyExtrudeVertex,
    &kPolyFlipEdge,    &kPolyMergeEdge,   &kPolyMergeVert,    &kPolyMirror,
    &kPolyPoke,        &kPolyQuad,        &kPolySeparate,     &kPolySewEdge,
    &kPolySplit,       &kPolySplitRing,   &kPolySubdEdge,     &kPolySubdFace,
    &kPolyTriangulate, &kPolyUnite,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
