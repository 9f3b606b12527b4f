// The order in which beveled edges become strips.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// A beveled edge, walked from its start or back.
struct BevelStrip {
    std::uint32_t edge = 0;
    bool isBackwards = false;
};

/// Chain after chain by their lowest edges (ascending); chains end at vertices with another number
/// of the edges than two. A ring is walked from its lowest vertex along the lower one of its edges,
/// but begins with the edge that comes back to there. Another chain is walked as its lowest edge
/// goes.
std::vector<BevelStrip> orderStrips(const MeshTopology& topology,
                                    std::span<const std::uint32_t> edges);

} // namespace host::geometry
