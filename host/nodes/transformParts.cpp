#include "host/nodes/transformParts.h"

namespace host::nodes {
namespace {

/// Where the groups of kChannelNames begin. The nine channels, the switches and the bounds follow
/// one another in the same order.
enum Position : std::size_t {
    kTranslate = 0,
    kRotate = 3,
    kScale = 6,
    kHasMinimum = 9,
    kHasMaximum = 18,
    kMinimum = 27,
    kMaximum = 36,
    kShear = 45,
    kRotatePivot = 48,
    kRotatePivotTranslate = 51,
    kScalePivot = 54,
    kScalePivotTranslate = 57,
    kRotateAxis = 60,
    kRotateOrder = 63,
};

double readChannel(ComputeContext& context, std::size_t channel, double fallback)
{
    const double value = context.number(channel, fallback);
    ChannelLimits limits;
    limits.hasMinimum = context.number(kHasMinimum + channel, 0) != 0;
    limits.hasMaximum = context.number(kHasMaximum + channel, 0) != 0;
    if (!limits.hasMinimum && !limits.hasMaximum) {
        return value;
    }
    limits.minimum = context.number(kMinimum + channel, limits.minimum);
    limits.maximum = context.number(kMaximum + channel, limits.maximum);
    return clampToLimits(value, limits);
}

Vec3d readChannels(ComputeContext& context, std::size_t first, double fallback)
{
    return {readChannel(context, first, fallback), readChannel(context, first + 1, fallback),
            readChannel(context, first + 2, fallback)};
}

} // namespace

Vec3d readVector(ComputeContext& context, std::size_t first, double fallback)
{
    return {context.number(first, fallback), context.number(first + 1, fallback),
            context.number(first + 2, fallback)};
}

TransformParts readTransformParts(ComputeContext& context)
{
    TransformParts parts;
    parts.translate = readChannels(context, kTranslate, 0);
    parts.rotate = readChannels(context, kRotate, 0);
    parts.scale = readChannels(context, kScale, 1);
    parts.shear = readVector(context, kShear, 0);
    parts.rotatePivot = readVector(context, kRotatePivot, 0);
    parts.rotatePivotTranslate = readVector(context, kRotatePivotTranslate, 0);
    parts.scalePivot = readVector(context, kScalePivot, 0);
    parts.scalePivotTranslate = readVector(context, kScalePivotTranslate, 0);
    parts.rotateAxis = readVector(context, kRotateAxis, 0);
    parts.order = rotationOrderFromNumber(context.number(kRotateOrder, 0));
    return parts;
}

} // namespace host::nodes
