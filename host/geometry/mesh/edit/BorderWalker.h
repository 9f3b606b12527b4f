// The open borders of a mesh.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <vector>

namespace host::geometry {

/// Follows the corners that leave along edges of one face.
class BorderWalker {
public:
    explicit BorderWalker(const MeshTopology& topology);

    const CornerLinks& links() const { return m_links; }
    /// The only corner that leaves along an edge; kNone where the edge has no face, or more.
    std::uint32_t cornerOf(std::uint32_t edge) const;
    /// The corners of the border on which a corner lies, from it on in the direction of the faces;
    /// empty where the border does not come back. All that are met are marked, of all corners;
    /// from a corner that is marked nothing is found.
    std::vector<std::uint32_t> borderFrom(std::uint32_t corner,
                                          std::vector<bool>& isFollowed) const;

private:
    /// The border corner at which the edge of another one ends; kNone.
    std::uint32_t after(std::uint32_t corner) const;

    const MeshTopology& m_topology;
    CornerLinks m_links;
    NumberLists m_corners; ///< of each edge
};

} // namespace host::geometry
