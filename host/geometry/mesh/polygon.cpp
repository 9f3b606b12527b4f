#include "host/geometry/mesh/polygon.h"

namespace host::geometry {

std::vector<std::uint32_t> cornerVertices(const MeshTopology& topology)
{
    std::vector<std::uint32_t> vertices(topology.corners.size());
    for (std::size_t corner = 0; corner < vertices.size(); ++corner) {
        vertices[corner] = topology.cornerVertex(static_cast<std::uint32_t>(corner));
    }
    return vertices;
}

} // namespace host::geometry
