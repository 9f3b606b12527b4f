// mute: its input, or while muted a value that is held.
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 3> kInputs{"mute", "input", "hold"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    const bool isMuted = context.number(0, 0) != 0;
    return context.isComplete() ? context.input(isMuted ? 2 : 1) : Value();
}

} // namespace

constinit const NodeCompute kMute{
    .type = "mute", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
