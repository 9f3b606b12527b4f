// transform and what derives from it: the local matrix and its inverse.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nodeTypes.h"
#include "host/nodes/transformParts.h"

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 3> kOutputs{"matrix", "inverseMatrix", "xformMatrix"};

Expected<Value> compute(ComputeContext& context)
{
    const TransformParts parts = readTransformParts(context);
    if (!context.isComplete()) {
        return Value();
    }
    const Matrix4 matrix = composeTransform(parts);
    return matrixValue(context.output() == 1 ? inverse(matrix) : matrix);
}

} // namespace

constinit const NodeCompute kTransform{
    .type = "transform", .inputs = kChannelNames, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
