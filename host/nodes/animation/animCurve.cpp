// animCurve*: keys over time or over a number.
#include "host/nodes/animation/animationNodes.h"
#include "host/nodes/animation/keptCurve.h"
#include "host/nodes/wholeNumber.h"

#include <array>

namespace host::nodes {
namespace {

enum Input : std::size_t {
    kInput,
    kKeys,
    kInTypes,
    kOutTypes,
    kInX,
    kInY,
    kOutX,
    kOutY,
    kTangentType,
    kWeighted,
    kBefore,
    kAfter,
};
constexpr std::array<std::string_view, 12> kInputs{
    "input",       "keyTimeValue",     "keyTanInType", "keyTanOutType",
    "keyTanInX",   "keyTanInY",        "keyTanOutX",   "keyTanOutY",
    "tangentType", "weightedTangents", "preInfinity",  "postInfinity"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

int whole(ComputeContext& context, std::size_t position, int fallback)
{
    return wholeNumber(context.number(position, fallback), fallback);
}

std::shared_ptr<const KeptCurve> prepare(ComputeContext& context, const CurveMeasure& measure)
{
    StoredKeys stored;
    stored.timesAndValues = context.array(kKeys);
    stored.inTypes = context.array(kInTypes);
    stored.outTypes = context.array(kOutTypes);
    stored.inX = context.array(kInX);
    stored.inY = context.array(kInY);
    stored.outX = context.array(kOutX);
    stored.outY = context.array(kOutY);
    stored.tangentType = whole(context, kTangentType, stored.tangentType);
    stored.isWeighted = context.number(kWeighted, 1) != 0;
    stored.before = whole(context, kBefore, 0);
    stored.after = whole(context, kAfter, 0);
    auto kept = std::make_shared<KeptCurve>();
    kept->curve = geometry::AnimationCurve(curveKeys(stored, measure));
    return kept;
}

/// Whether what the curve is made of may be another at another time.
bool hasConnectedSettings(ComputeContext& context)
{
    for (std::size_t input = kTangentType; input <= kAfter; ++input) {
        if (context.isConnected(input)) {
            return true;
        }
    }
    return false;
}

Expected<Value> computeCurve(ComputeContext& context, const CurveMeasure& measure)
{
    const bool runsByItself = measure.isTimed && !context.isConnected(kInput);
    const double at =
        runsByItself ? static_cast<double>(context.time()) : context.number(kInput, 0);
    if (!context.isComplete()) {
        return Value();
    }
    std::shared_ptr<const void>& kept = context.kept();
    std::shared_ptr<const void> made = kept;
    if (made == nullptr) {
        made = prepare(context, measure);
        if (!context.isComplete()) {
            return Value();
        }
        if (!hasConnectedSettings(context)) {
            kept = made;
        }
    }
    const auto& curve = *static_cast<const KeptCurve*>(made.get());
    if (curve.rotation != nullptr) {
        return Value(curve.rotation->at(at, curve.axis));
    }
    return Value(curve.curve.at(at));
}

template<bool IsTimed, bool GivesTime>
Expected<Value> compute(ComputeContext& context)
{
    return computeCurve(context, {.isTimed = IsTimed, .givesTime = GivesTime});
}

constexpr NodeCompute row(std::string_view type, Expected<Value> (*function)(ComputeContext&))
{
    return {.type = type, .inputs = kInputs, .outputs = kOutputs, .compute = function};
}

} // namespace

constinit const NodeCompute kAnimCurveTA = row("animCurveTA", compute<true, false>);
constinit const NodeCompute kAnimCurveTL = row("animCurveTL", compute<true, false>);
constinit const NodeCompute kAnimCurveTT = row("animCurveTT", compute<true, true>);
constinit const NodeCompute kAnimCurveTU = row("animCurveTU", compute<true, false>);
constinit const NodeCompute kAnimCurveUA = row("animCurveUA", compute<false, false>);
constinit const NodeCompute kAnimCurveUL = row("animCurveUL", compute<false, false>);
constinit const NodeCompute kAnimCurveUT = row("animCurveUT", compute<false, true>);
constinit const NodeCompute kAnimCurveUU = row("animCurveUU", compute<false, false>);

} // namespace host::nodes
