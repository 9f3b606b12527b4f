// A validated topology from the lists of a file: what is damaged loses its faces, never the mesh.
#pragma once

#include "host/geometry/mesh/EdgeLists.h"
#include "host/geometry/mesh/MeshData.h"

#include <cstddef>
#include <span>
#include <vector>

namespace host::geometry {

/// Corners first..end-1.
struct CornerRun {
    std::uint32_t first = 0;
    std::uint32_t end = 0;
    friend bool operator==(const CornerRun&, const CornerRun&) = default;
};

/// What of the given lists could not be used.
struct TopologyDamage {
    std::size_t badEdges = 0; ///< vertices out of range; the edge keeps its number and has no face
    std::size_t badFaces = 0; ///< outer loop open, incomplete or on a bad edge: the face is empty
    std::size_t badHoles = 0; ///< such hole loops of good faces: the hole is closed
    std::size_t looseLoops = 0;            ///< loops that belong to no face
    std::vector<CornerRun> droppedCorners; ///< of the given corners; ascending, apart
    bool isNone() const
    {
        return badEdges == 0 && badFaces == 0 && badHoles == 0 && looseLoops == 0 &&
               droppedCorners.empty();
    }
};

/// Faces as statements list them. `loopSizes` has the corners of each loop, `faceLoopCounts` the
/// loops of each face (1 + holes); without any the faces are the loops.
struct FaceLists {
    std::vector<std::int32_t> corners; ///< signed edge references, loop after loop
    std::span<const std::uint32_t> loopSizes;
    std::span<const std::uint32_t> faceLoopCounts;
};

struct BuiltTopology {
    MeshTopology topology;
    EdgeFlags edgeSmooth; ///< one per edge; or empty: all are smooth
    TopologyDamage damage;
};

/// Joins edges and faces.
///
/// Result   fits `isConsistent`; edges and faces keep their numbers, an unusable face has one loop
///          without corners. The corners are compacted in place, not copied; lists that go along
///          with them follow by `removeCorners`.
/// Failure  none; the damage is counted. Lists beyond 2^31 - 2 corners count as incomplete there.
BuiltTopology buildTopology(std::uint32_t vertexCount, EdgeLists edges, FaceLists faces);

/// The same of edges by threes, as `EdgeLists::append` has them.
BuiltTopology buildTopology(std::uint32_t vertexCount, std::span<const std::int32_t> edgeTriples,
                            FaceLists faces);

/// Takes the entries of the dropped corners out of a list with one entry per given corner, and
/// makes it `cornerCount` long: what is missing becomes -1.
void removeCorners(std::vector<std::int32_t>& perCorner, std::span<const CornerRun> dropped,
                   std::size_t cornerCount);

} // namespace host::geometry
