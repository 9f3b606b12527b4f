// The edges and faces about a vertex, in their order.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <span>
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

/// Finds fans: made once for a mesh, then each costs as much as it is long.
class VertexFans {
public:
    VertexFans(const MeshTopology& topology, const CornerLinks& links);

    /// The fan of a vertex from the corners that stand at it, in place of what `fan` was; false
    /// where its faces are no single fan.
    bool find(std::uint32_t vertex, std::span<const std::uint32_t> corners, VertexFan& fan) const;

private:
    bool areSingle(std::uint32_t vertex, std::span<const std::uint32_t> corners) const;
    std::uint32_t firstEdge(std::span<const std::uint32_t> corners) const;

    const MeshTopology& m_topology;
    const CornerLinks& m_links;
    /// The corner that walks an edge from its start (place 2 * edge) or back (2 * edge + 1); kNone,
    /// or kSeveral.
    std::vector<std::uint32_t> m_cornerAlong;
};

} // namespace host::geometry
