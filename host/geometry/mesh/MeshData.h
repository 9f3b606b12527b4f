// The polygon mesh as a value: immutable parts, shared between the meshes that differ in other
// parts only.
#pragma once

#include "host/math/Vec.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace host::geometry {

struct MeshEdge {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

/// Who is joined to whom. Every index was validated when the record was made (see `isConsistent`).
///
/// A face is one outer loop and any number of hole loops; a loop is a run of corners; a corner is a
/// reference to the edge that leaves it: e >= 0 walks edge e from start to end, e < 0 walks edge
/// (-e - 1) from end to start.
struct MeshTopology {
    std::uint32_t vertexCount = 0;
    std::vector<MeshEdge> edges;
    std::vector<std::int32_t> corners; ///< edge references, loop after loop
    std::vector<std::uint32_t>
        loopStart; ///< first corner of each loop, and the number of corners as last entry
    std::vector<std::uint32_t> faceLoop; ///< first loop of each face, and the number of loops as
                                         ///< last entry; empty when every face is exactly one loop

    std::uint32_t loopCount() const
    {
        return loopStart.empty() ? 0 : static_cast<std::uint32_t>(loopStart.size() - 1);
    }
    std::uint32_t faceCount() const
    {
        return faceLoop.empty() ? loopCount() : static_cast<std::uint32_t>(faceLoop.size() - 1);
    }
    std::uint32_t firstLoop(std::uint32_t face) const
    {
        return faceLoop.empty() ? face : faceLoop[face];
    }
    std::uint32_t firstCorner(std::uint32_t face) const { return loopStart[firstLoop(face)]; }
    /// The corner after the face's last one, holes included.
    std::uint32_t endCorner(std::uint32_t face) const { return loopStart[firstLoop(face + 1)]; }
    /// The vertex at which a corner stands: the start of its directed edge.
    std::uint32_t cornerVertex(std::uint32_t corner) const
    {
        const std::int32_t reference = corners[corner];
        return reference >= 0 ? edges[static_cast<std::uint32_t>(reference)].start
                              : edges[static_cast<std::uint32_t>(-(reference + 1))].end;
    }
};

/// Whether edges are smooth, one entry each: 1 smooth, 0 hard.
using EdgeFlags = std::vector<std::uint8_t>;

/// One set of texture coordinates. `corners` has one id into `points` per corner of the topology,
/// -1 for none; empty: no face has any.
struct UvSet {
    std::string name;
    std::shared_ptr<const std::vector<Vec2f>> points;
    std::shared_ptr<const std::vector<std::int32_t>> corners;
};

/// Faces that carry a group number, which per-face shading goes by. Ascending face numbers.
struct FaceGroup {
    std::int32_t id = 0;
    std::shared_ptr<const std::vector<std::uint32_t>> faces;
};

/// Points that carry a group number, which deformers go by. Ascending points.
struct PointGroup {
    std::int32_t id = 0;
    std::shared_ptr<const std::vector<std::uint32_t>> points;
};

/// The shape, by the number of its node, whose instance a mesh was handed out as in world space:
/// the points are in its own space, but whoever needs the world finds it there.
struct ShapeMark {
    std::int32_t node = 0; ///< 0: none
    std::int32_t instance = 0;
    friend bool operator==(const ShapeMark&, const ShapeMark&) = default;
};

/// How computed normals weigh the faces of a vertex; the numbers are those of the attribute
/// vertexNormalMethod.
enum class NormalWeighting : std::uint8_t { None = 0, Angle = 1, Area = 2, AngleAndArea = 3 };

/// Which diagonal cuts a face of four corners; the numbers are those of the attribute quadSplit.
enum class QuadSplit : std::uint8_t {
    Left = 0,     ///< from the second corner to the fourth
    Right = 1,    ///< from the first corner to the third
    BestShape = 2 ///< see `bestDiagonal`
};

/// How sharp edges and vertices stay when the mesh is smoothed: 0 not at all; parts not listed are
/// 0.
struct MeshCreases {
    std::vector<std::uint32_t> edges; ///< ascending
    std::vector<float> edgeValues;    ///< one each
    std::vector<std::uint32_t> vertices;
    std::vector<float> vertexValues;
};

struct MeshData {
    std::shared_ptr<const MeshTopology> topology; ///< never null
    std::shared_ptr<const EdgeFlags> edgeSmooth;  ///< null: all edges are smooth
    std::shared_ptr<const std::vector<Vec3f>>
        points; ///< centimetres, object space; topology->vertexCount entries
    std::shared_ptr<const std::vector<Vec3f>>
        lockedNormals; ///< by normal id (see normals.h); 1e20 = not locked; may be null or short
    std::vector<UvSet> uvSets;
    std::string currentUvSet;
    std::shared_ptr<const std::vector<std::uint32_t>> invisibleFaces; ///< ascending; may be null
    std::vector<FaceGroup> groups;
    std::vector<PointGroup> pointGroups;
    ShapeMark shape;
    std::shared_ptr<const MeshCreases> creases; ///< may be null
    NormalWeighting normalWeighting = NormalWeighting::AngleAndArea;
    QuadSplit quadSplit = QuadSplit::BestShape;

    bool isSmooth(std::uint32_t edge) const
    {
        return edgeSmooth == nullptr || (*edgeSmooth)[edge] != 0;
    }
    /// A copy of the flags of all edges, which are there even where all are smooth.
    EdgeFlags edgeFlags() const;
};

/// The flags as meshes hold them: null where all edges are smooth.
std::shared_ptr<const EdgeFlags> shareEdgeFlags(EdgeFlags&& flags);

/// True when counts and indices of all parts fit each other, so that kernels need no check of their
/// own.
bool isConsistent(const MeshData& mesh);

/// Memory of the parts that only this mesh holds, in bytes; small ones do not count.
std::size_t ownedBytes(const MeshData& mesh);

} // namespace host::geometry
