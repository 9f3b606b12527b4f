// blendWeighted: the sum of its inputs, each times its weight; what several driven keys become.
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 2> kInputs{"input", "weight"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    double sum = 0;
    for (const std::int32_t index : context.elementIndices(0)) {
        sum += context.element(0, index).number() * context.element(1, index).number(1);
    }
    return Value(sum);
}

} // namespace

constinit const NodeCompute kBlendWeighted{
    .type = "blendWeighted", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
