// nurbsCurve (and bezierCurve): what comes in, else what the file stored, with the shape's own
// control points; in local space or in the world's.
#include "host/nodes/nurbs/controlPointTweaks.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/nurbs/repeatOverlap.h"
#include "host/geometry/nurbs/transformSpline.h"

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 7> kInputs{"create", "cached", "tweak", "relativeTweak",
                                                  "xValue", "yValue", "zValue"};
constexpr std::array<std::string_view, 7> kOutputs{"local",  "worldSpace", "minValue", "maxValue",
                                                   "degree", "spans",      "form"};
enum Output : std::size_t { kLocal, kWorldSpace, kMinValue, kMaxValue, kDegree, kSpans, kForm };

SharedCurve ownCurve(ComputeContext& context)
{
    SharedCurve curve = curveInput(context, 0);
    if (curve == nullptr) {
        curve = curveInput(context, 1);
    }
    const ControlPointTweaks tweaks = readTweaks(context, 2);
    if (curve == nullptr || !context.isComplete() || tweaks.empty() || curve->dimension != 3) {
        return curve;
    }
    auto moved = std::make_shared<geometry::CurveData>(*curve);
    applyTweaks(tweaks, moved->stride(), moved->poles);
    geometry::repeatOverlap(*moved);
    return moved;
}

Expected<Value> compute(ComputeContext& context)
{
    const Matrix4 world = context.output() == kWorldSpace ? context.parentWorldMatrix() : Matrix4{};
    const SharedCurve curve = ownCurve(context);
    if (curve == nullptr || !context.isComplete()) {
        return Value();
    }
    switch (context.output()) {
    case kLocal:
        return Value(curve);
    case kWorldSpace:
        return Value::of(geometry::transformed(*curve, world));
    case kMinValue:
    case kMaxValue:
        if (!geometry::isValidCurve(*curve)) {
            return Value();
        }
        return Value(context.output() == kMinValue ? curve->start() : curve->end());
    case kDegree:
        return Value(double{static_cast<double>(curve->degree)});
    case kSpans:
        return Value(double{static_cast<double>(curve->spans)});
    default:
        return Value(static_cast<double>(curve->form));
    }
}

} // namespace

constinit const NodeCompute kNurbsCurve{
    .type = "nurbsCurve", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
