#include "host/nodes/animation/allAnimationNodes.h"

#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 20> kRows{
    &kAnimBlendNode,
    &kAnimBlendNodeBoolean,
    &kAnimBlendNodeEnum,
    &kAnimBlendNodeRotation,
    &kAnimBlendNodeScale,
    &kAnimCurveTA,
    &kAnimCurveTL,
    &kAnimCurveTT,
    &kAnimCurveTU,
    &kAnimCurveUA,
    &kAnimCurveUL,
    &kAnimCurveUT,
    &kAnimCurveUU,
    &kAnimLayer,
    &kBlendWeighted,
    &kChoice,
    &kMute,
    &kPairBlend,
    &kTimeToUnitConversion,
    &kUnitToTimeConversion,
};

} // namespace

std::span<const NodeCompute* const> allAnimationNodes()
{
    return kRows;
}

} // namespace host::nodes
