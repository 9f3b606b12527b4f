// Shapes that points are drawn towards: sparse offsets, and how much of which item a weight takes.
#pragma once

#include "host/math/Vec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Offsets of single points; `offsets` in step with `points`, in no particular order.
struct PointDeltas {
    std::vector<std::uint32_t> points;
    std::vector<Vec3d> offsets;
};

/// One item of a target and how much of it is taken.
struct ItemShare {
    std::size_t item = 0;
    double share = 0;
};

/// Up to two items for the weight of a target. `weights` are those at which the items are reached
/// in full, ascending, none of them 0.
///
/// Between two neighbours, and between one and 0 where nothing is taken, the way is straight;
/// beyond the outermost item its offsets grow on in proportion to the weight.
std::array<ItemShare, 2> itemShares(std::span<const double> weights, double weight);

/// Adds share * (weight of the point) * offset to the points; points that are not there are left
/// out. `weights` may be empty (all 1) or shorter than the points (1 for the others).
void addDeltas(const PointDeltas& deltas, double share, std::span<const float> weights,
               std::span<Vec3d> points);

} // namespace host::geometry
