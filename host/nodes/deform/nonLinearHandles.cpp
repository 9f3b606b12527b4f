// The handles of nonlinear deformers: each hands its numbers on to the deformer.
#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/deform/nonLinear.h"
#include "host/nodes/numberInputs.h"

#include <array>
#include <cmath>

namespace host::nodes {
namespace {

using namespace geometry;

/// Marks a list with a kind; no attribute has such a number.
constexpr double kMark = 0x1p60;

constexpr std::array<std::string_view, 1> kOutputs{"deformerData"};

constexpr std::array<std::string_view, 3> kBendInputs{"lowBound", "highBound", "curvature"};
constexpr std::array<std::string_view, 4> kTwistInputs{"lowBound", "highBound", "startAngle",
                                                       "endAngle"};
constexpr std::array<std::string_view, 7> kFlareInputs{
    "lowBound", "highBound", "startFlareX", "startFlareZ", "endFlareX", "endFlareZ", "curve"};
constexpr std::array<std::string_view, 6> kSineInputs{"lowBound",   "highBound", "amplitude",
                                                      "wavelength", "dropoff",   "offset"};
constexpr std::array<std::string_view, 7> kSquashInputs{
    "lowBound",     "highBound", "startSmoothness", "endSmoothness",
    "maxExpandPos", "expand",    "factor"};
constexpr std::array<std::string_view, 7> kWaveInputs{
    "minRadius", "maxRadius", "amplitude", "wavelength", "dropoff", "dropoffPosition", "offset"};

using Numbers = std::vector<double>;

AxisRange rangeOf(const Numbers& n)
{
    return {n[1], n[2]};
}

NonLinearShape shapeOfKind(std::size_t kind, const Numbers& n)
{
    switch (kind) {
    case 0:
        return BendShape{rangeOf(n), n[3]};
    case 1:
        return TwistShape{rangeOf(n), n[3], n[4]};
    case 2:
        return FlareShape{rangeOf(n), n[3], n[4], n[5], n[6], n[7]};
    case 3:
        return SineShape{rangeOf(n), n[3], n[4], n[5], n[6]};
    case 4:
        return SquashShape{rangeOf(n), n[3], n[4], n[5], n[6], n[7]};
    default:
        return WaveShape{n[1], n[2], n[3], n[4], n[5], n[6], n[7]};
    }
}

/// How many numbers there are to a kind, in the order of `NonLinearShape`.
constexpr std::array<std::size_t, 6> kNumberCounts{kBendInputs.size(),   kTwistInputs.size(),
                                                   kFlareInputs.size(),  kSineInputs.size(),
                                                   kSquashInputs.size(), kWaveInputs.size()};

template<std::size_t kKind>
Expected<Value> compute(ComputeContext& context)
{
    Numbers numbers{kMark + 256 * kKind};
    for (std::size_t i = 0; i < kNumberCounts[kKind]; ++i) {
        numbers.push_back(context.number(i, 0));
    }
    return context.isComplete() ? Value::of(std::move(numbers)) : Value();
}

} // namespace

std::optional<NonLinearShape> shapeOf(const Value& value)
{
    const auto numbers = value.data<Numbers>();
    if (numbers == nullptr || numbers->empty()) {
        return std::nullopt;
    }
    const double kind = (numbers->front() - kMark) / 256;
    const bool isKind = kind >= 0 && kind < kNumberCounts.size() && std::floor(kind) == kind;
    if (!isKind || numbers->size() != kNumberCounts[static_cast<std::size_t>(kind)] + 1) {
        return std::nullopt;
    }
    return shapeOfKind(static_cast<std::size_t>(kind), *numbers);
}

constinit const NodeCompute kDeformBend{
    .type = "deformBend", .inputs = kBendInputs, .outputs = kOutputs, .compute = compute<0>};
constinit const NodeCompute kDeformTwist{
    .type = "deformTwist", .inputs = kTwistInputs, .outputs = kOutputs, .compute = compute<1>};
constinit const NodeCompute kDeformFlare{
    .type = "deformFlare", .inputs = kFlareInputs, .outputs = kOutputs, .compute = compute<2>};
constinit const NodeCompute kDeformSine{
    .type = "deformSine", .inputs = kSineInputs, .outputs = kOutputs, .compute = compute<3>};
constinit const NodeCompute kDeformSquash{
    .type = "deformSquash", .inputs = kSquashInputs, .outputs = kOutputs, .compute = compute<4>};
constinit const NodeCompute kDeformWave{
    .type = "deformWave", .inputs = kWaveInputs, .outputs = kOutputs, .compute = compute<5>};

} // namespace host::nodes
