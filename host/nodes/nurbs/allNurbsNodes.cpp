#include "host/nodes/nurbs/allNurbsNodes.h"

#include "host/nodes/nurbs/nurbsTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 11> kNurbsNodes{
    &kMakeNurbCircle, &kMakeNurbCone,   &kMakeNurbCube,      &kMakeNurbCylinder,
    &kMakeNurbPlane,  &kMakeNurbSphere, &kMakeNurbTorus,     &kMakeNurbsSquare,
    &kNurbsCurve,     &kNurbsSurface,   &kTransformGeometry,
};

} // namespace

std::span<const NodeCompute* const> allNurbsNodes()
{
    return kNurbsNodes;
}

} // namespace host::nodes
