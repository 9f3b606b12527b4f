// unitConversion: a factor.
#include "host/nodes/nodeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 2> kInputs{"input", "conversionFactor"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    const Value input = context.input(0);
    const double factor = context.number(1, 1);
    return input.isNumber() ? Value(input.number() * factor) : Value();
}

} // namespace

constinit const NodeCompute kUnitConversion{
    .type = "unitConversion", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
