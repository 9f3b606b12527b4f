// makeNurbSphere, makeNurbCylinder, makeNurbCone, makeNurbTorus.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/primitives.h"
#include "host/geometry/nurbs/surfaceAlgebra.h"

#include <array>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::RoundPrimitive;
using geometry::SurfaceData;

constexpr double kTurn = 2 * std::numbers::pi;
constexpr std::array<std::string_view, 16> kInputs{
    "pivotX",       "pivotY",     "pivotZ",      "axisX",     "axisY",    "axisZ",
    "radius",       "startSweep", "endSweep",    "degree",    "sections", "spans",
    "useTolerance", "tolerance",  "heightRatio", "minorSweep"};
constexpr std::array<std::string_view, 3> kOutputs{"outputSurface", "bottomCapCurve",
                                                   "topCapCurve"};
enum Position : std::size_t {
    kPivot = 0,
    kAxis = 3,
    kRadius = 6,
    kStartSweep,
    kEndSweep,
    kDegree,
    kSections,
    kSpans,
    kUseTolerance,
    kTolerance,
    kHeightRatio,
    kMinorSweep
};

RoundPrimitive readPrimitive(ComputeContext& context, std::int32_t usualSpans)
{
    RoundPrimitive primitive;
    primitive.pivot = vectorInput(context, kPivot, {});
    primitive.axis = vectorInput(context, kAxis, {1, 0, 0});
    primitive.radius = context.number(kRadius, 1);
    primitive.startSweep = context.number(kStartSweep, 0);
    primitive.endSweep = context.number(kEndSweep, kTurn);
    primitive.degree = wholeInput(context, kDegree, 3, 0, 7);
    primitive.sections = countInput(context, kSections, 8, geometry::kMaxPatches);
    primitive.spans = countInput(context, kSpans, usualSpans, geometry::kMaxPatches);
    primitive.heightRatio = context.number(kHeightRatio, 2);
    primitive.minorSweep = context.number(kMinorSweep, kTurn);
    const double tolerance = context.number(kTolerance, 0.01);
    if (flagInput(context, kUseTolerance, false)) {
        primitive.sections = geometry::sectionsWithin(tolerance, primitive.radius,
                                                      primitive.endSweep - primitive.startSweep);
        context.noteUncomputed(); // how many sections a tolerance takes is not documented
    }
    return primitive;
}

/// The surface, or the circle at the start or end of its profile.
Value outputOf(SurfaceData surface, std::size_t output)
{
    const geometry::SurfaceEvaluator evaluator(surface);
    if (output == 0 || !evaluator.isValid()) {
        return output == 0 ? surfaceValue(std::move(surface)) : Value();
    }
    const double u = output == 1 ? evaluator.startU() : evaluator.endU();
    return curveValue(geometry::isoparametricCurve(surface, geometry::SurfaceDirection::U, u));
}

template<SurfaceData (*make)(const RoundPrimitive&), std::int32_t usualSpans>
Expected<Value> compute(ComputeContext& context)
{
    const RoundPrimitive primitive = readPrimitive(context, usualSpans);
    return context.isComplete() ? outputOf(make(primitive), context.output()) : Value();
}

} // namespace

constinit const NodeCompute kMakeNurbSphere{.type = "makeNurbSphere",
                                            .inputs = kInputs,
                                            .outputs = kOutputs,
                                            .compute = compute<geometry::sphereSurface, 4>};
constinit const NodeCompute kMakeNurbCylinder{.type = "makeNurbCylinder",
                                              .inputs = kInputs,
                                              .outputs = kOutputs,
                                              .compute = compute<geometry::cylinderSurface, 1>};
constinit const NodeCompute kMakeNurbCone{.type = "makeNurbCone",
                                          .inputs = kInputs,
                                          .outputs = kOutputs,
                                          .compute = compute<geometry::coneSurface, 1>};
constinit const NodeCompute kMakeNurbTorus{.type = "makeNurbTorus",
                                           .inputs = kInputs,
                                           .outputs = kOutputs,
                                           .compute = compute<geometry::torusSurface, 1>};

} // namespace host::nodes
