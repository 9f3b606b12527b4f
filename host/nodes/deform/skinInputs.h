// The weights of a skin as its node stores them, made ready once.
#pragma once

#include "host/geometry/deform/SkinWeights.h"
#include "host/types/ComputeContext.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace host::nodes {

/// Influences have logical indices; entries name them by their position in `influences`.
struct SkinTable {
    geometry::SkinWeights weights;
    std::vector<std::int32_t> influences; ///< logical indices, ascending
    bool isNormalized = false;
    bool hasLostInfluences = false; ///< some were beyond kMaxInfluence
};

/// Logical indices of influences that are taken; scenes have hundreds.
inline constexpr std::uint32_t kMaxInfluence = 65535;

/// The table of the numbers at a multi inside a multi of points. With `isNormalized` the weights of
/// each point are divided by their sum. Kept by the node, except where weights are connected.
std::shared_ptr<const SkinTable> skinTable(ComputeContext& context, std::size_t position,
                                           bool isNormalized);

} // namespace host::nodes
