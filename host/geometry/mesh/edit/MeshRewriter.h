// Writes a mesh anew, with the numbers that an operation gives to its parts, and carries along what
// hangs on them: texture coordinates, groups of faces and points, invisible faces, creases.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/Gaps.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace host::geometry {

/// No part of the mesh before: something new.
inline constexpr std::uint32_t kNoSource = 0xffffffff;

/// Begins with the points, edges and texture coordinates of the mesh before and with no face: faces
/// are written one after the other in their final order. Parts that nothing uses in the end can be
/// left out, what stays closes up in order.
///
/// Limits  kMaxParts points, edges and corners; beyond, `isFull` turns true and nothing is added.
class MeshRewriter {
public:
    static constexpr std::size_t kMaxParts = std::size_t{1} << 28;

    /// `before` must be consistent and outlive the rewriter.
    explicit MeshRewriter(const MeshData& before);

    const MeshData& before() const { return m_before; }
    bool isFull() const { return m_isFull; }

    // --- parts; those of the mesh before keep their numbers
    std::vector<Vec3f>& points() { return m_points; }
    std::vector<MeshEdge>& edges() { return m_edges; }
    EdgeFlags& edgeSmooth() { return m_edgeSmooth; }
    std::size_t uvSetCount() const { return m_uvSets.size(); }
    std::vector<Vec2f>& uvPoints(std::size_t set) { return m_uvSets[set].points; }
    /// `source`: the point of the mesh before of which it is a part, and in whose groups it is.
    std::uint32_t addPoint(const Vec3f& point, std::uint32_t source = kNoSource);
    /// `source`: the edge of the mesh before whose crease it has.
    std::uint32_t addEdge(std::uint32_t start, std::uint32_t end, bool isSmooth,
                          std::uint32_t source = kNoSource);
    std::int32_t addUv(std::size_t set, const Vec2f& point);

    /// Takes memory for so many parts in all at once, within the limit.
    void reserve(std::size_t points, std::size_t edges, std::size_t faces, std::size_t corners);
    /// The same for texture coordinates that are added to each set.
    void reserveUvs(std::size_t added);

    // --- faces
    /// `source`: the face of the mesh before whose groups it is in.
    void beginFace(std::uint32_t source);
    /// The corner at which the edge reference leaves; with the texture coordinates of a corner of
    /// the mesh before, or with none.
    void addCorner(std::int32_t edgeReference, std::uint32_t sourceCorner = kNoSource);
    /// With an id for each uv set, -1 for none.
    void addCorner(std::int32_t edgeReference, std::span<const std::int32_t> uvIds);
    /// The uv id of a corner of the mesh before; -1 for none.
    std::int32_t uvId(std::size_t set, std::uint32_t sourceCorner) const;
    /// What follows until `endFace` is a hole of the face.
    void endLoop();
    void endFace();
    /// A face of the mesh before as it was.
    void copyFace(std::uint32_t face);
    void copyFaces(std::uint32_t first, std::uint32_t end);

    // --- the result
    /// Which parts that no face uses are left out.
    struct Cleaning {
        bool edges = false;
        bool points = false; ///< those that no kept edge has, too
        bool uvs = false;
    };
    /// The mesh. Locked normals go by fans and do not fit any more: they are gone. Null when a
    /// limit was met or the parts do not fit each other (`isConsistent`).
    std::shared_ptr<const MeshData> finish(const Cleaning& cleaning);
    std::shared_ptr<const MeshData> finish() { return finish(Cleaning{}); }

private:
    struct WrittenUvs {
        std::vector<Vec2f> points;
        std::vector<std::int32_t> corners;
        const std::vector<std::int32_t>* before = nullptr; ///< ids of the corners before, or null
    };

    bool hasRoom(std::size_t size);
    void copySimpleFaces(std::uint32_t first, std::uint32_t end);
    void removeEdges();
    void removePoints();
    void removeUvs(WrittenUvs& set);
    void carryGroups(MeshData& mesh) const;
    void carryPointGroups(MeshData& mesh) const;
    void carryCreases(MeshData& mesh) const;
    MeshTopology takeTopology();

    const MeshData& m_before;
    bool m_isFull = false;
    bool m_keepsSources; ///< of faces: there are groups or invisible faces
    std::vector<Vec3f> m_points;
    std::vector<MeshEdge> m_edges;
    EdgeFlags m_edgeSmooth;
    std::vector<std::uint32_t> m_edgeSource; ///< of each edge; empty where nothing is creased
    std::vector<std::int32_t> m_corners;
    std::vector<std::uint32_t> m_loopStart{0};
    std::uint32_t m_endedLoops = 0;        ///< those of ended faces
    std::vector<std::uint32_t> m_faceLoop; ///< empty until a face has a hole
    std::vector<std::uint32_t> m_faceSource;
    std::vector<WrittenUvs> m_uvSets;
    Gaps m_pointGaps;                        ///< points that are left out
    std::vector<std::uint32_t> m_copies;     ///< points that are part of another, ascending
    std::vector<std::uint32_t> m_copySource; ///< the other of each; both empty without groups
};

} // namespace host::geometry
