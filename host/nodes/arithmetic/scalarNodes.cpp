// Nodes of one number: sums and products of two, and a blend of two.
#include "host/nodes/arithmetic/arithmeticNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 2> kTwoInputs{"input1", "input2"};
constexpr std::array<std::string_view, 1> kOutput{"output"};

Expected<Value> add(ComputeContext& context)
{
    return Value(context.number(0, 0) + context.number(1, 0));
}

Expected<Value> multiply(ComputeContext& context)
{
    return Value(context.number(0, 0) * context.number(1, 0));
}

constexpr std::array<std::string_view, 2> kBlendInputs{"attributesBlender", "input"};

Expected<Value> blendTwo(ComputeContext& context)
{
    const double share = context.number(0, 0);
    const double first = context.element(1, 0).number();
    const double second = context.element(1, 1).number();
    return Value(first * (1 - share) + second * share);
}

constinit const std::array<NodeCompute, 3> kRows{{
    {"addDoubleLinear", kTwoInputs, kOutput, add},
    {"blendTwoAttr", kBlendInputs, kOutput, blendTwo},
    {"multDoubleLinear", kTwoInputs, kOutput, multiply},
}};

} // namespace

std::span<const NodeCompute> scalarNodes()
{
    return kRows;
}

} // namespace host::nodes
