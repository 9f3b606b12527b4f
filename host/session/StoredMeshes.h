// Meshes that a file stores: gathered statement by statement, turned into geometry at the end.
#pragma once

#include "host/file/Command.h"
#include "host/geometry/mesh/EdgeLists.h"
#include "host/graph/Graph.h"
#include "host/support/Diagnostics.h"
#include "host/types/Value.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace host::session {

/// Keeps the faces of each mesh while a scene is read, and points and edges as long as they come
/// one after the other. Points and edges that come otherwise, texture coordinates and normals lie
/// in the graph as numeric arrays until `build` takes them out.
class StoredMeshes {
public:
    /// Appends faces from face number `first` on; the faces are moved away. Returns false when they
    /// do not follow what is there (they are appended all the same). `cornersAhead`, if known:
    /// those of these faces and of all that will follow them.
    bool append(graph::NodeId mesh, std::uint32_t first, PolyFaces&& faces,
                std::size_t cornersAhead = 0);
    /// Whether an attribute of this long name may be points or edges: quick to find out.
    static bool mayTake(std::string_view attribute);
    /// Appends points or edges from element `first` of an array on. False, and nothing done but
    /// what `putInGraph` does, when the array is another one or the numbers do not follow what is
    /// there. `elementsAhead`, if known: those of these numbers and of all that will follow them.
    bool append(graph::Graph& graph, const graph::Plug& array, std::uint32_t first,
                const file::NumberBlock& numbers, std::size_t elementsAhead);
    /// Makes points or edges a numeric array of the graph, where they can be changed one by one, if
    /// a plug is of theirs.
    void putInGraph(graph::Graph& graph, const graph::Plug& plug);
    /// Says that a mesh has points.
    void addMesh(graph::NodeId mesh);
    /// Makes each mesh the value of its "cachedInMesh" and gives the raw numbers back, one mesh
    /// after the other. Damage is noted.
    void build(graph::Graph& graph, Diagnostics& diagnostics);

private:
    struct Lists {
        PolyFaces faces;
        std::vector<Vec3f> points;
        geometry::EdgeLists edges;
    };

    static void putPointsInGraph(graph::Graph& graph, const graph::Plug& array, Lists& lists);
    static void putEdgesInGraph(graph::Graph& graph, const graph::Plug& array, Lists& lists);
    static void putAllInGraph(graph::Graph& graph, graph::NodeId mesh, Lists& lists);

    std::vector<graph::NodeId> m_inOrder;
    std::unordered_map<graph::NodeId, Lists> m_lists;
};

} // namespace host::session
