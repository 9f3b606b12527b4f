// The control points that a shape stores beside its curve or surface.
#pragma once

#include "host/math/Vec.h"
#include "host/types/ComputeContext.h"

#include <array>
#include <span>
#include <vector>

namespace host::nodes {

/// Positions of the five inputs tweak, relativeTweak, xValue, yValue, zValue in a row follow one
/// another from `first` on.
inline constexpr std::size_t kTweakInputs = 5;

struct ControlPointTweaks {
    struct Entry {
        std::size_t index = 0;
        std::array<double, 3> values{};
        std::array<bool, 3> isSet{};
    };
    std::vector<Entry> entries; ///< ascending
    bool isRelative = true;

    bool empty() const { return entries.empty(); }
};

/// With `tweak` on the values are tweaks of what comes in, relative or not as relativeTweak says;
/// with it off they are the positions themselves.
ControlPointTweaks readTweaks(ComputeContext& context, std::size_t first);

/// The values of x, y and z, three neighbouring inputs from `first` on, of the points inside the
/// multi elements `outer`.
std::vector<ControlPointTweaks::Entry> readPoints(ComputeContext& context, std::size_t first,
                                                  std::span<const std::int32_t> outer = {});

/// Adds or sets coordinates, `stride` numbers per control point. Indices beyond the points are left
/// out.
void applyTweaks(const ControlPointTweaks& tweaks, std::size_t stride, std::vector<double>& poles);

} // namespace host::nodes
