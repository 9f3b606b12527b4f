// Everything in the DAG: the world matrices of each instance. A shape stands where its parent
// stands.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nodeTypes.h"

#include <array>

namespace host::nodes {
namespace {

enum Output : std::size_t { kWorld, kWorldInverse, kParent, kParentInverse };

constexpr std::array<std::string_view, 3> kInputs{"matrix", "offsetParentMatrix",
                                                  "inheritsTransform"};
constexpr std::array<std::string_view, 4> kOutputs{"worldMatrix", "worldInverseMatrix",
                                                   "parentMatrix", "parentInverseMatrix"};

Expected<Value> compute(ComputeContext& context)
{
    const std::size_t output = context.output();
    Matrix4 result;
    if (output == kWorld || output == kWorldInverse) {
        result = matrixOf(context.input(0)) * matrixOf(context.input(1));
        if (context.number(2, 1) != 0) {
            result = result * context.parentWorldMatrix();
        }
    } else {
        result = context.parentWorldMatrix();
    }
    const bool isInverse = output == kWorldInverse || output == kParentInverse;
    return matrixValue(isInverse ? inverse(result) : result);
}

} // namespace

constinit const NodeCompute kDagNode{
    .type = "dagNode", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
