// polyPinUV: how firmly texture coordinates are held when tools move them. They stay where they
// are.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kInputs{"inputPolymesh"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    return context.input(0);
}

} // namespace

constinit const NodeCompute kPolyPinUV{
    .type = "polyPinUV", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
