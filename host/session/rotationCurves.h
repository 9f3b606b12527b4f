// The curves of one object's rotation, brought together where they are to turn as one.
#pragma once

#include "host/eval/Evaluator.h"
#include "host/graph/Graph.h"

namespace host::session {

/// Where the three rotation channels of a transform are fed directly by curves whose
/// rotationInterpolation is one and the same of the quaternion kinds, and whose keys are at the
/// same times, gives the three curves what they need to be evaluated as one rotation in the
/// transform's stored rotate order. Any other curve stays as it is: its axis runs by itself.
void joinRotationCurves(const graph::Graph& graph, eval::Evaluator& evaluator);

} // namespace host::session
