// animLayer: the weights that a layer gives to the nodes that blend its curves with what lies
// below.
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

enum Input : std::size_t {
    kWeight,
    kParentWeight,
    kMute,
    kParentMute,
    kSolo,
    kSiblingSolo,
    kOverride,
    kPassthrough,
    kRotationMode,
    kChildrenSolo,
};
constexpr std::array<std::string_view, 10> kInputs{
    "weight",      "parentWeight", "mute",
    "parentMute",  "solo",         "siblingSolo",
    "override",    "passthrough",  "rotationAccumulationMode",
    "childrenSolo"};

enum Output : std::size_t {
    kForegroundWeight,
    kBackgroundWeight,
    kOutMute,
    kChildSoloed,
    kOutRotationMode
};
constexpr std::array<std::string_view, 5> kOutputs{"foregroundWeight", "backgroundWeight",
                                                   "outMute", "childsoloed",
                                                   "outRotationAccumulationMode"};

bool isOn(ComputeContext& context, std::size_t position)
{
    return context.number(position, 0) != 0;
}

bool isChildSoloed(ComputeContext& context)
{
    bool isSoloed = false;
    for (const std::int32_t index : context.elementIndices(kChildrenSolo)) {
        isSoloed |= context.element(kChildrenSolo, index).number() != 0;
    }
    return isSoloed;
}

/// A layer is silent when it or its parent is muted, or when another one beside it plays alone.
bool isSilent(ComputeContext& context)
{
    const bool isAlone = isOn(context, kSolo) || isChildSoloed(context);
    return isOn(context, kMute) || isOn(context, kParentMute) ||
           (isOn(context, kSiblingSolo) && !isAlone);
}

double foreground(ComputeContext& context)
{
    return isSilent(context) ? 0 : context.number(kWeight, 1) * context.number(kParentWeight, 1);
}

/// What is left of the layers below: all of it under an additive layer, nothing under an overriding
/// one, the rest of its weight where it lets them pass through.
double background(ComputeContext& context)
{
    const double weight = foreground(context);
    if (!isOn(context, kOverride) || weight == 0) {
        return 1;
    }
    return context.number(kPassthrough, 1) != 0 ? 1 - weight : 0;
}

Expected<Value> compute(ComputeContext& context)
{
    switch (context.output()) {
    case kForegroundWeight:
        return Value(foreground(context));
    case kBackgroundWeight:
        return Value(background(context));
    case kOutMute:
        return Value(isOn(context, kMute) || isOn(context, kParentMute) ? 1.0 : 0.0);
    case kChildSoloed:
        return Value(isChildSoloed(context) ? 1.0 : 0.0);
    default:
        return Value(context.number(kRotationMode, 0));
    }
}

} // namespace

constinit const NodeCompute kAnimLayer{
    .type = "animLayer", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
