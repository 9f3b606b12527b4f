// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kNurbsCurve;
extern const NodeCompute kNurbsSurface;
extern const NodeCompute kTransformGeometry;
extern const NodeCompute kTweak;

extern const NodeCompute kMakeNurbSphere;
extern const NodeCompute kMakeNurbCylinder;
extern const NodeCompute kMakeNurbCone;
extern const NodeCompute kMakeNurbTorus;
extern const NodeCompute kMakeNurbPlane;
extern const NodeCompute kMakeNurbCube;
extern const NodeCompute kMakeNurbCircle;
extern const NodeCompute kMakeNurbsSquare;

extern const NodeCompute kAttachCurve;
extern const NodeCompute kDetachCurve;
extern const NodeCompute kRebuildCurve;
extern const NodeCompute kInsertKnotCurve;
extern const NodeCompute kReverseCurve;
extern const NodeCompute kSubCurve;
extern const NodeCompute kCloseCurve;
extern const NodeCompute kOffsetCurve;
extern const NodeCompute kNurbsCurveToBezier;
extern const NodeCompute kBezierCurveToNurbs;

extern const NodeCompute kAttachSurface;
extern const NodeCompute kDetachSurface;
extern const NodeCompute kRebuildSurface;
extern const NodeCompute kReverseSurface;
extern const NodeCompute kInsertKnotSurface;
extern const NodeCompute kCloseSurface;
extern const NodeCompute kOffsetSurface;

extern const NodeCompute kMakeThreePointCircularArc;
extern const NodeCompute kMakeTwoPointCircularArc;
extern const NodeCompute kCurveFromMeshEdge;
extern const NodeCompute kCurveFromSurfaceIso;

extern const NodeCompute kRevolve;
extern const NodeCompute kLoft;
extern const NodeCompute kExtrude;
extern const NodeCompute kPlanarTrimSurface;
extern const NodeCompute kTrim;

extern const NodeCompute kCurveInfo;
extern const NodeCompute kPointOnCurveInfo;
extern const NodeCompute kNearestPointOnCurve;
extern const NodeCompute kPointOnSurfaceInfo;
extern const NodeCompute kClosestPointOnSurface;
extern const NodeCompute kMotionPath;

} // namespace host::nodes
