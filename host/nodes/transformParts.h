// The channels that transforms and joints share, read with their limits.
#pragma once

#include "host/math/transform.h"
#include "host/types/ComputeContext.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace host::nodes {

/// The inputs that stand first in the rows of transforms and joints.
inline constexpr std::array<std::string_view, 64> kChannelNames{
    "translateX",
    "translateY",
    "translateZ",
    "rotateX",
    "rotateY",
    "rotateZ",
    "scaleX",
    "scaleY",
    "scaleZ",
    "minTransXLimitEnable",
    "minTransYLimitEnable",
    "minTransZLimitEnable",
    "minRotXLimitEnable",
    "minRotYLimitEnable",
    "minRotZLimitEnable",
    "minScaleXLimitEnable",
    "minScaleYLimitEnable",
    "minScaleZLimitEnable",
    "maxTransXLimitEnable",
    "maxTransYLimitEnable",
    "maxTransZLimitEnable",
    "maxRotXLimitEnable",
    "maxRotYLimitEnable",
    "maxRotZLimitEnable",
    "maxScaleXLimitEnable",
    "maxScaleYLimitEnable",
    "maxScaleZLimitEnable",
    "minTransXLimit",
    "minTransYLimit",
    "minTransZLimit",
    "minRotXLimit",
    "minRotYLimit",
    "minRotZLimit",
    "minScaleXLimit",
    "minScaleYLimit",
    "minScaleZLimit",
    "maxTransXLimit",
    "maxTransYLimit",
    "maxTransZLimit",
    "maxRotXLimit",
    "maxRotYLimit",
    "maxRotZLimit",
    "maxScaleXLimit",
    "maxScaleYLimit",
    "maxScaleZLimit",
    "shearXY",
    "shearXZ",
    "shearYZ",
    "rotatePivotX",
    "rotatePivotY",
    "rotatePivotZ",
    "rotatePivotTranslateX",
    "rotatePivotTranslateY",
    "rotatePivotTranslateZ",
    "scalePivotX",
    "scalePivotY",
    "scalePivotZ",
    "scalePivotTranslateX",
    "scalePivotTranslateY",
    "scalePivotTranslateZ",
    "rotateAxisX",
    "rotateAxisY",
    "rotateAxisZ",
    "rotateOrder",
};

/// The parts of the node's local matrix; enabled limits clamp translation, rotation and scale.
TransformParts readTransformParts(ComputeContext& context);

/// Three neighbouring inputs.
Vec3d readVector(ComputeContext& context, std::size_t first, double fallback);

} // namespace host::nodes
