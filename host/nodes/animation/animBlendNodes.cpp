// animBlendNode*: two layers of animation into one.
#include "host/math/power.h"
#include "host/math/quaternion.h"
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 5> kInputs{"inputA", "inputB", "weightA", "weightB",
                                                  "accumulationMode"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

/// A weighted sum.
Expected<Value> computeSum(ComputeContext& context)
{
    return Value(context.number(0, 0) * context.number(2, 1) +
                 context.number(1, 0) * context.number(3, 1));
}

/// The second input unless its weight is zero: for what has no values in between.
Expected<Value> computeSwitch(ComputeContext& context)
{
    const double first = context.number(0, 0);
    const double second = context.number(1, 0);
    return Value(context.number(3, 1) > 0 ? second : first);
}

/// Mode 0 multiplies powers, mode 1 adds.
Expected<Value> computeScale(ComputeContext& context)
{
    if (context.number(4, 0) == 1) {
        return computeSum(context);
    }
    const double first = power(context.number(0, 0), context.number(2, 1));
    return Value(first * power(context.number(1, 0), context.number(3, 1)));
}

enum RotationInput : std::size_t {
    kRotationA = 0,
    kRotationB = 3,
    kWeightA = 6,
    kWeightB = 7,
    kAccumulation = 8,
    kRotateOrder = 9,
};
constexpr std::array<std::string_view, 10> kRotationInputs{
    "inputAX", "inputAY", "inputAZ", "inputBX",          "inputBY",
    "inputBZ", "weightA", "weightB", "accumulationMode", "rotateOrder"};
constexpr std::array<std::string_view, 3> kRotationOutputs{"outputX", "outputY", "outputZ"};

Vec3d vectorAt(ComputeContext& context, std::size_t first)
{
    return {context.number(first, 0), context.number(first + 1, 0), context.number(first + 2, 0)};
}

/// Angles added up, each with its weight (mode 0), or the second rotation, as much of it as its
/// weight says, then the first one (mode 1).
Expected<Value> computeRotation(ComputeContext& context)
{
    const Vec3d first = vectorAt(context, kRotationA);
    const Vec3d second = vectorAt(context, kRotationB);
    const double firstWeight = context.number(kWeightA, 1);
    const double secondWeight = context.number(kWeightB, 1);
    Vec3d angles = first * firstWeight + second * secondWeight;
    if (context.number(kAccumulation, 0) == 1) {
        const RotationOrder order = rotationOrderFromNumber(context.number(kRotateOrder, 0));
        const Quaternion rotation =
            product(slerp({}, quaternionFromEuler(second, order), secondWeight),
                    slerp({}, quaternionFromEuler(first, order), firstWeight));
        angles = eulerNearest(eulerAngles(quaternionRotation(rotation), order), angles, order);
    }
    const std::size_t axis = context.output();
    return Value(axis == 0 ? angles.x : axis == 1 ? angles.y : angles.z);
}

} // namespace

constinit const NodeCompute kAnimBlendNode{
    .type = "animBlendNodeBase", .inputs = kInputs, .outputs = kOutputs, .compute = computeSum};
constinit const NodeCompute kAnimBlendNodeBoolean{.type = "animBlendNodeBoolean",
                                                  .inputs = kInputs,
                                                  .outputs = kOutputs,
                                                  .compute = computeSwitch};
constinit const NodeCompute kAnimBlendNodeEnum{
    .type = "animBlendNodeEnum", .inputs = kInputs, .outputs = kOutputs, .compute = computeSwitch};
constinit const NodeCompute kAnimBlendNodeRotation{.type = "animBlendNodeAdditiveRotation",
                                                   .inputs = kRotationInputs,
                                                   .outputs = kRotationOutputs,
                                                   .compute = computeRotation};
constinit const NodeCompute kAnimBlendNodeScale{.type = "animBlendNodeAdditiveScale",
                                                .inputs = kInputs,
                                                .outputs = kOutputs,
                                                .compute = computeScale};

} // namespace host::nodes
