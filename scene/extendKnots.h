// Completes a knot vector that lacks its two outermost knots, as Maya's do.
#pragma once

#include <cstddef>
#include <vector>

namespace orv {

/// The knots from `position` on are one vector whose first entry is a placeholder: it becomes
/// 2 k[1] - k[2], and 2 k[n-1] - k[n-2] of the vector as it came is appended (linear extrapolation
/// at both ends). A vector too short for a formula keeps its placeholder, or repeats its last
/// entry; it grows by one knot whatever it holds, so that counts taken beforehand stay true.
/// Nothing happens where nothing begins at `position`.
void extendKnots(std::vector<double>& knots, std::size_t position);

} // namespace orv
