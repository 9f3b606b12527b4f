// The edges and faces about a vertex, in their order.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <optional>
#include <vector>

namespace host::geometry {

/// Edges counter-clockwise, seen from outside; `corners[i]` is the face's corner between edge i and
/// the next one. A vertex inside has as many corners as edges and starts at its highest edge; one
/// on a border has one less and starts at the border.
struct VertexFan {
    std::vector<std::uint32_t> edges;
    std::vector<std::uint32_t> corners;

    bool isClosed() const { return edges.size() == corners.size(); }
};

/// The fan of a vertex from the corners that stand at it; nothing where its faces are no single
/// fan.
std::optional<VertexFan> fanOf(const MeshTopology& topology, const CornerLinks& links,
                               std::span<const std::uint32_t> corners);

} // namespace host::geometry
