// hairSystem: nothing is simulated, so that every hair stays as its follicle gives it.
#include "host/nodes/hair/hairNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kInputs{"inputHair"};
constexpr std::array<std::string_view, 1> kOutputs{"outputHair"};

Expected<Value> compute(ComputeContext& context)
{
    const Value hair = context.element(0, context.index());
    return hair.data<std::vector<Vec3d>>() != nullptr ? hair : Value();
}

} // namespace

constinit const NodeCompute kHairSystem{
    .type = "hairSystem", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
