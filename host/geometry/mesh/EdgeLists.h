// Edges as statements list them, taken apart as they come.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Edges whose vertices nobody has looked at yet.
struct EdgeLists {
    std::vector<MeshEdge> edges;
    EdgeFlags smooth; ///< one per edge; empty while all of them are smooth

    /// Adds edges that stand by threes: start vertex, end vertex, 0 hard or else smooth. Numbers
    /// left over at the end are ignored.
    void append(std::span<const std::int32_t> triples);
    /// The edges by threes again.
    std::vector<std::int32_t> triples() const;
};

} // namespace host::geometry
