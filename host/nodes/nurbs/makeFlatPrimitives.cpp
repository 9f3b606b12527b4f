// makeNurbPlane and makeNurbCube.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/nurbs/primitives.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::PlanePrimitive;

constexpr std::array<std::string_view, 12> kInputs{"pivotX",   "pivotY",   "pivotZ", "axisX",
                                                   "axisY",    "axisZ",    "width",  "lengthRatio",
                                                   "patchesU", "patchesV", "degree", "heightRatio"};
constexpr std::array<std::string_view, 1> kPlaneOutputs{"outputSurface"};
constexpr std::array<std::string_view, 6> kCubeOutputs{"outputSurface",  "outputSurface1",
                                                       "outputSurface2", "outputSurface3",
                                                       "outputSurface4", "outputSurface5"};

PlanePrimitive readPlane(ComputeContext& context)
{
    PlanePrimitive plane;
    plane.pivot = vectorInput(context, 0, {});
    plane.axis = vectorInput(context, 3, {1, 0, 0});
    plane.width = context.number(6, 1);
    plane.lengthRatio = context.number(7, 1);
    plane.patchesU = countInput(context, 8, 1, geometry::kMaxPatches);
    plane.patchesV = countInput(context, 9, 1, geometry::kMaxPatches);
    plane.degree = wholeInput(context, 10, 3, 0, 7);
    return plane;
}

Expected<Value> computePlane(ComputeContext& context)
{
    const PlanePrimitive plane = readPlane(context);
    return context.isComplete() ? surfaceValue(geometry::planeSurface(plane)) : Value();
}

Expected<Value> computeCube(ComputeContext& context)
{
    const PlanePrimitive plane = readPlane(context);
    const double heightRatio = context.number(11, 1);
    if (!context.isComplete()) {
        return Value();
    }
    return surfaceValue(geometry::boxSurfaces(plane, heightRatio)[context.output()]);
}

} // namespace

constinit const NodeCompute kMakeNurbPlane{
    .type = "makeNurbPlane", .inputs = kInputs, .outputs = kPlaneOutputs, .compute = computePlane};
constinit const NodeCompute kMakeNurbCube{
    .type = "makeNurbCube", .inputs = kInputs, .outputs = kCubeOutputs, .compute = computeCube};

} // namespace host::nodes
