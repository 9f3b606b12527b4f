#include "host/nodes/nurbs/allNurbsNodes.h"

#include "host/nodes/nurbs/nurbsTypes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array kNurbsNodes{
    &kAttachCurve,
    &kAttachSurface,
    &kBezierCurveToNurbs,
    &kCloseCurve,
    &kCloseSurface,
    &kClosestPointOnSurface,
    &kCurveFromMeshEdge,
    &kCurveFromSurfaceIso,
    &kCurveInfo,
    &kDetachCurve,
    &kDetachSurface,
    &kExtrude,
    &kInsertKnotCurve,
    &kInsertKnotSurface,
    &kLoft,
    &kMakeNurbCircle,
    &kMakeNurbCone,
    &kMakeNurbCube,
    &kMakeNurbCylinder,
    &kMakeNurbPlane,
    &kMakeNurbSphere,
    &kMakeNurbTorus,
    &kMakeNurbsSquare,
    &kMakeThreePointCircularArc,
    &kMakeTwoPointCircularArc,
    &kMotionPath,
    &kNearestPointOnCurve,
    &kNurbsCurve,
    &kNurbsCurveToBezier,
    &kNurbsSurface,
    &kOffsetCurve,
    &kOffsetSurface,
    &kPlanarTrimSurface,
    &kPointOnCurveInfo,
    &kPointOnSurfaceInfo,
    &kRebuildCurve,
    &kRebuildSurface,
    &kReverseCurve,
    &kReverseSurface,
    &kRevolve,
    &kSubCurve,
    &kTransformGeometry,
    &kTrim,
    &kTweak,
};

} // namespace

std::span<const NodeCompute* const> allNurbsNodes()
{
    return kNurbsNodes;
}

} // namespace host::nodes
