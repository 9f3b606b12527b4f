#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 23> kNodes{
    &kDeleteComponent,  &kPolyAppend,      &kPolyAppendVertex, &kPolyChipOff,   &kPolyCloseBorder,
    &kPolyCollapseEdge, &kPolyCollapseF,   &kPolyCut,          &kPolyDelEdge,   &kPolyDelFacet,
    &kPolyDelVertex,    &kPolyExtrudeFace, &kPolyMergeEdge,    &kPolyMergeVert, &kPolyMirror,
    &kPolyQuad,         &kPolySeparate,    &kPolySewEdge,      &kPolySplit,     &kPolySplitRing,
    &kPolySubdFace,     &kPolyTriangulate, &kPolyUnite,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
