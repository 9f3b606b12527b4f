// lattice: the control points that bend space for an ffd.
#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/numberInputs.h"
#include "host/nodes/nurbs/controlPointTweaks.h"

#include "host/geometry/deform/moveByLattice.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::LatticeData;

constexpr std::array<std::string_view, 10> kInputs{
    "latticeInput", "cached",        "sDivisions", "tDivisions", "uDivisions",
    "tweak",        "relativeTweak", "xValue",     "yValue",     "zValue"};
constexpr std::array<std::string_view, 2> kOutputs{"latticeOutput", "worldLattice"};
constexpr std::size_t kDivisions = 2;
constexpr std::size_t kTweaks = 5;

void tweak(LatticeData& lattice, const ControlPointTweaks& tweaks)
{
    for (const ControlPointTweaks::Entry& entry : tweaks.entries) {
        if (entry.index >= lattice.points.size()) {
            return;
        }
        Vec3d& point = lattice.points[entry.index];
        const std::array<double*, 3> numbers{&point.x, &point.y, &point.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double value = entry.values[axis];
            if (entry.isSet[axis]) {
                *numbers[axis] = tweaks.isRelative ? *numbers[axis] + value : value;
            }
        }
    }
}

LatticeData undeformed(const std::array<std::int32_t, 3>& counts)
{
    constexpr std::int64_t kMostPoints = 262144;
    const std::int64_t all = std::int64_t{counts[0]} * counts[1] * counts[2];
    return all <= kMostPoints ? geometry::restLattice(counts[0], counts[1], counts[2])
                              : LatticeData();
}

Expected<Value> compute(ComputeContext& context)
{
    auto lattice = context.input(0).data<LatticeData>();
    if (lattice == nullptr) {
        lattice = context.input(1).data<LatticeData>();
    }
    constexpr std::array<std::int32_t, 3> kDefaults{2, 5, 2};
    std::array<std::int32_t, 3> counts{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        counts[axis] = countInput(context, kDivisions + axis, kDefaults[axis],
                                  geometry::kMaxLatticeDivisions, 2);
    }
    const ControlPointTweaks tweaks = readTweaks(context, kTweaks);
    if (!context.isComplete()) {
        return Value();
    }
    LatticeData made = lattice != nullptr ? *lattice : undeformed(counts);
    tweak(made, tweaks);
    return Value::of(std::move(made));
}

} // namespace

constinit const NodeCompute kLattice{
    .type = "lattice", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
