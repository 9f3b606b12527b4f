// pairBlend: two translations and two rotations into one each, usually of keys and of a constraint.
#include "host/math/quaternion.h"
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

enum Input : std::size_t {
    kTranslate1 = 0,
    kTranslate2 = 3,
    kRotate1 = 6,
    kRotate2 = 9,
    kWeight = 12,
    kTranslateModes = 13,
    kRotateMode = 16,
    kRotInterpolation = 17,
    kRotateOrder = 18,
};
constexpr std::array<std::string_view, 19> kInputs{
    "inTranslateX1",  "inTranslateY1", "inTranslateZ1",    "inTranslateX2",  "inTranslateY2",
    "inTranslateZ2",  "inRotateX1",    "inRotateY1",       "inRotateZ1",     "inRotateX2",
    "inRotateY2",     "inRotateZ2",    "weight",           "translateXMode", "translateYMode",
    "translateZMode", "rotateMode",    "rotInterpolation", "rotateOrder"};
constexpr std::array<std::string_view, 6> kOutputs{
    "outTranslateX", "outTranslateY", "outTranslateZ", "outRotateX", "outRotateY", "outRotateZ"};

/// The share of the second input under a mode: 0 blends, 1 and 2 take one input alone.
double shareOf(ComputeContext& context, std::size_t mode)
{
    const double number = context.number(mode, 0);
    return number == 1 ? 0 : number == 2 ? 1 : context.number(kWeight, 1);
}

double mix(ComputeContext& context, std::size_t first, std::size_t second, double share)
{
    const double from = context.number(first, 0);
    const double to = context.number(second, 0);
    return share == 0 ? from : share == 1 ? to : from * (1 - share) + to * share;
}

Vec3d vectorAt(ComputeContext& context, std::size_t first)
{
    return {context.number(first, 0), context.number(first + 1, 0), context.number(first + 2, 0)};
}

/// The rotation `share` of the way on the shortest arc, as angles near the straight blend.
Vec3d blendRotations(ComputeContext& context, double share)
{
    const Vec3d first = vectorAt(context, kRotate1);
    const Vec3d second = vectorAt(context, kRotate2);
    const RotationOrder order = rotationOrderFromNumber(context.number(kRotateOrder, 0));
    const Quaternion rotation =
        slerp(quaternionFromEuler(first, order), quaternionFromEuler(second, order), share);
    return eulerNearest(eulerAngles(quaternionRotation(rotation), order),
                        first * (1 - share) + second * share, order);
}

Expected<Value> compute(ComputeContext& context)
{
    const std::size_t channel = context.output();
    if (channel < 3) {
        const double share = shareOf(context, kTranslateModes + channel);
        return Value(mix(context, kTranslate1 + channel, kTranslate2 + channel, share));
    }
    const std::size_t axis = channel - 3;
    const double share = shareOf(context, kRotateMode);
    const bool isArc = context.number(kRotInterpolation, 0) == 1 && share != 0 && share != 1;
    if (!isArc) {
        return Value(mix(context, kRotate1 + axis, kRotate2 + axis, share));
    }
    const Vec3d angles = blendRotations(context, share);
    return Value(axis == 0 ? angles.x : axis == 1 ? angles.y : angles.z);
}

} // namespace

constinit const NodeCompute kPairBlend{
    .type = "pairBlend", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
