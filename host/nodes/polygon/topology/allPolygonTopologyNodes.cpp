#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 14> kNodes{
    &kDeleteComponent, &kPolyCut,       &kPolyDelEdge,     &kPolyDelFacet, &kPolyDelVertex,
    &kPolyExtrudeFace, &kPolyMergeVert, &kPolyMirror,      &kPolySeparate, &kPolySplit,
    &kPolySplitRing,   &kPolySubdFace,  &kPolyTriangulate, &kPolyUnite,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
