// Textures asked for one colour, outside of any surface: the colour that they have where there is
// no image, with gain and offset. What an application would answer is not documented; this is the
// one place that decides it. Images are never read here.
#include "host/nodes/nodeTypes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 9> kInputs{"defaultColorR", "defaultColorG", "defaultColorB",
                                                  "colorGainR",    "colorGainG",    "colorGainB",
                                                  "colorOffsetR",  "colorOffsetG",  "colorOffsetB"};
constexpr std::array<std::string_view, 3> kOutputs{"outColorR", "outColorG", "outColorB"};
constexpr double kDefaultGrey = 0.5;

Expected<Value> compute(ComputeContext& context)
{
    const std::size_t channel = context.output();
    const double color = context.number(channel, kDefaultGrey);
    const double gain = context.number(3 + channel, 1);
    return Value(color * gain + context.number(6 + channel, 0));
}

/// Procedural textures have a pattern that is not computed.
Expected<Value> computeStandIn(ComputeContext& context)
{
    context.noteUncomputed();
    return compute(context);
}

} // namespace

constinit const NodeCompute kFile{
    .type = "file", .inputs = kInputs, .outputs = kOutputs, .compute = compute};
constinit const NodeCompute kTexture2d{
    .type = "texture2d", .inputs = kInputs, .outputs = kOutputs, .compute = computeStandIn};
constinit const NodeCompute kTexture3d{
    .type = "texture3d", .inputs = kInputs, .outputs = kOutputs, .compute = computeStandIn};

} // namespace host::nodes
