// The rows of the node types of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

extern const NodeCompute kAnimCurveTA;
extern const NodeCompute kAnimCurveTL;
extern const NodeCompute kAnimCurveTT;
extern const NodeCompute kAnimCurveTU;
extern const NodeCompute kAnimCurveUA;
extern const NodeCompute kAnimCurveUL;
extern const NodeCompute kAnimCurveUT;
extern const NodeCompute kAnimCurveUU;
extern const NodeCompute kAnimBlendNode;
extern const NodeCompute kAnimBlendNodeBoolean;
extern const NodeCompute kAnimBlendNodeEnum;
extern const NodeCompute kAnimBlendNodeRotation;
extern const NodeCompute kAnimBlendNodeScale;
extern const NodeCompute kAnimLayer;
extern const NodeCompute kBlendWeighted;
extern const NodeCompute kChoice;
extern const NodeCompute kMute;
extern const NodeCompute kPairBlend;
extern const NodeCompute kTimeToUnitConversion;
extern const NodeCompute kUnitToTimeConversion;

} // namespace host::nodes
