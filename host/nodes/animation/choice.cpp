// choice: one of its inputs.
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 2> kInputs{"selector", "input"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    const double selector = context.number(0, 0);
    constexpr double kLast = 1e9;
    if (!context.isComplete() || !(selector >= 0 && selector < kLast)) {
        return Value();
    }
    return context.element(1, static_cast<std::int32_t>(selector));
}

} // namespace

constinit const NodeCompute kChoice{
    .type = "choice", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
