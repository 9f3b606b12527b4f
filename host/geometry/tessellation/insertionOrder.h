// The order in which points are best put into a triangulation.
#pragma once

#include "host/geometry/tessellation/PlaneGrid.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// A permutation of the places: rounds of doubling size, drawn by a fixed scramble of the indices,
/// each along a Hilbert curve (N. Amenta, S. Choi, G. Rote, Incremental Constructions con BRIO).
/// Neighbours in the order are near one another, and no arrangement of points makes it slow.
std::vector<std::uint32_t> insertionOrder(std::span<const GridPlace> places);

} // namespace host::geometry
