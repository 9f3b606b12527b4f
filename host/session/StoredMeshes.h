// Meshes that a file stores: gathered statement by statement, turned into geometry at the end.
#pragma once

#include "host/graph/Graph.h"
#include "host/support/Diagnostics.h"
#include "host/types/Value.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace host::session {

/// Keeps the faces of each mesh while a scene is read. Points, edges, texture coordinates and
/// normals lie in the graph as numeric arrays until `build` takes them out.
class StoredMeshes {
public:
    /// Appends faces from face number `first` on; the faces are moved away. Returns false when they
    /// do not follow what is there (they are appended all the same). `cornersAhead`, if known:
    /// those of these faces and of all that will follow them.
    bool append(graph::NodeId mesh, std::uint32_t first, PolyFaces&& faces,
                std::size_t cornersAhead = 0);
    /// Says that a mesh has points.
    void addMesh(graph::NodeId mesh);
    /// Makes each mesh the value of its "cachedInMesh" and gives the raw numbers back, one mesh
    /// after the other. Damage is noted.
    void build(graph::Graph& graph, Diagnostics& diagnostics);

private:
    std::vector<graph::NodeId> m_inOrder;
    std::unordered_map<graph::NodeId, PolyFaces> m_faces;
};

} // namespace host::session
