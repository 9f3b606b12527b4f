// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kNurbsCurve;
extern const NodeCompute kNurbsSurface;
extern const NodeCompute kTransformGeometry;

extern const NodeCompute kMakeNurbSphere;
extern const NodeCompute kMakeNurbCylinder;
extern const NodeCompute kMakeNurbCone;
extern const NodeCompute kMakeNurbTorus;
extern const NodeCompute kMakeNurbPlane;
extern const NodeCompute kMakeNurbCube;
extern const NodeCompute kMakeNurbCircle;
extern const NodeCompute kMakeNurbsSquare;

} // namespace host::nodes
