// timeToUnitConversion and unitToTimeConversion: a factor between numbers and times, which count in
// 6000ths of a second here.
#include "host/math/units.h"
#include "host/nodes/animation/animationNodes.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 2> kInputs{"input", "conversionFactor"};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

/// The factors in files are made for this old resolution of time: 250 for frames of film.
constexpr double kTicksPerPart = static_cast<double>(kTicksPerSecond) / 6000;

Expected<Value> computeUnit(ComputeContext& context)
{
    const Value input = context.input(0);
    const double factor = context.number(1, 1);
    return input.isNumber() ? Value(input.number() / kTicksPerPart * factor) : Value();
}

Expected<Value> computeTime(ComputeContext& context)
{
    const Value input = context.input(0);
    const double factor = context.number(1, 1);
    return input.isNumber() ? Value(input.number() * factor * kTicksPerPart) : Value();
}

} // namespace

constinit const NodeCompute kTimeToUnitConversion{
    .type = "timeToUnitConversion", .inputs = kInputs, .outputs = kOutputs, .compute = computeUnit};
constinit const NodeCompute kUnitToTimeConversion{
    .type = "unitToTimeConversion", .inputs = kInputs, .outputs = kOutputs, .compute = computeTime};

} // namespace host::nodes
