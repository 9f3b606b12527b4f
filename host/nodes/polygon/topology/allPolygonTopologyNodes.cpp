#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 11> kNodes{
    &kDeleteComponent, &kPolyDelEdge,     &kPolyDelFacet, &kPolyDelVertex,
    &kPolyExtrudeFace, &kPolyMergeVert,   &kPolySeparate, &kPolySplitRing,
    &kPolySubdFace,    &kPolyTriangulate, &kPolyUnite,
};

} // namespace

std::span<const NodeCompute* const> allPolygonTopologyNodes()
{
    return kNodes;
}

} // namespace host::nodes
