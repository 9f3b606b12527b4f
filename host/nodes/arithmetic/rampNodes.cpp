// remapValue and remapColor: a number moved from one range to another along a ramp.
#include "host/geometry/hair/Ramp.h"
#include "host/nodes/arithmetic/arithmeticNodes.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

using geometry::Ramp;
using geometry::RampEntry;

/// The ramp of three neighbouring inputs: positions, values, kinds of blend. One that was never
/// touched rises from 0 to 1.
Ramp<double> readRamp(ComputeContext& context, std::size_t positions, std::size_t values,
                      std::size_t blends)
{
    std::vector<RampEntry<double>> entries;
    for (const std::int32_t index : context.elementIndices(positions)) {
        RampEntry<double>& entry = entries.emplace_back();
        entry.position = context.element(positions, index).number();
        entry.value = context.element(values, index).number();
        entry.blend = geometry::rampBlendFromNumber(context.element(blends, index).number());
    }
    if (entries.empty()) {
        entries = {{0, 0, geometry::RampBlend::Linear}, {1, 1, geometry::RampBlend::Linear}};
    }
    return Ramp<double>(std::move(entries));
}

/// The four numbers that a remapping node has: the range that it reads and the one that it gives.
struct Ranges {
    double inputMinimum = 0;
    double inputMaximum = 1;
    double outputMinimum = 0;
    double outputMaximum = 1;
};

Ranges readRanges(ComputeContext& context, std::size_t first)
{
    return {context.number(first, 0), context.number(first + 1, 1), context.number(first + 2, 0),
            context.number(first + 3, 1)};
}

double remapped(double value, const Ramp<double>& ramp, const Ranges& ranges)
{
    const double width = ranges.inputMaximum - ranges.inputMinimum;
    const double place = width != 0 ? (value - ranges.inputMinimum) / width : 0;
    return ranges.outputMinimum +
           ramp.at(std::clamp(place, 0.0, 1.0), 0) * (ranges.outputMaximum - ranges.outputMinimum);
}

constexpr std::array<std::string_view, 13> kValueInputs{
    "inputMin",       "inputMax",         "outputMin",    "outputMax",      "inputValue",
    "value_Position", "value_FloatValue", "value_Interp", "color_Position", "color_Interp",
    "color_ColorR",   "color_ColorG",     "color_ColorB"};
constexpr std::array<std::string_view, 4> kValueOutputs{"outValue", "outColorR", "outColorG",
                                                        "outColorB"};

Expected<Value> remapValue(ComputeContext& context)
{
    const Ranges ranges = readRanges(context, 0);
    const double value = context.number(4, 0);
    const std::size_t output = context.output();
    const Ramp<double> ramp =
        output == 0 ? readRamp(context, 5, 6, 7) : readRamp(context, 8, 9 + output, 9);
    return context.isComplete() ? Value(remapped(value, ramp, ranges)) : Value();
}

constexpr std::array<std::string_view, 16> kColourInputs{
    "inputMin",       "inputMax",      "outputMin",       "outputMax",
    "colorR",         "colorG",        "colorB",          "red_Position",
    "red_FloatValue", "red_Interp",    "green_Position",  "green_FloatValue",
    "green_Interp",   "blue_Position", "blue_FloatValue", "blue_Interp"};
constexpr std::array<std::string_view, 3> kColourOutputs{"outColorR", "outColorG", "outColorB"};

Expected<Value> remapColor(ComputeContext& context)
{
    const std::size_t channel = context.output();
    const std::size_t first = 7 + 3 * channel;
    const Ranges ranges = readRanges(context, 0);
    const double value = context.number(4 + channel, 0);
    const Ramp<double> ramp = readRamp(context, first, first + 1, first + 2);
    return context.isComplete() ? Value(remapped(value, ramp, ranges)) : Value();
}

constinit const std::array<NodeCompute, 2> kRows{{
    {"remapColor", kColourInputs, kColourOutputs, remapColor},
    {"remapValue", kValueInputs, kValueOutputs, remapValue},
}};

} // namespace

std::span<const NodeCompute> rampNodes()
{
    return kRows;
}

} // namespace host::nodes
