// How much each point of a skin goes with which influence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::geometry {

/// One weight of a point for an influence.
struct InfluenceWeight {
    double weight = 0;
    std::uint32_t influence = 0; ///< position in the list of influences
};

/// The weights of points in rows: row r holds the weights of point `points[r]`, from
/// `entries[starts[r]]` to before `entries[starts[r + 1]]`.
struct SkinWeights {
    std::vector<std::uint32_t> points; ///< ascending, each once
    std::vector<std::size_t> starts;   ///< one more than points; the first is 0
    std::vector<InfluenceWeight> entries;
};

} // namespace host::geometry
