#include "host/nodes/polygon/shape/allPolygonShapeNodes.h"

#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 12> kNodes{
    &kPolyAverageVertex, &kPolyCircularize, &kPolyMoveEdge,        &kPolyMoveFace,
    &kPolyMoveVertex,    &kPolyNormal,      &kPolyNormalPerVertex, &kPolySmooth,
    &kPolySmoothFace,    &kPolySmoothProxy, &kPolySoftEdge,        &kPolyTweak,
};

} // namespace

std::span<const NodeCompute* const> allPolygonShapeNodes()
{
    return kNodes;
}

} // namespace host::nodes
