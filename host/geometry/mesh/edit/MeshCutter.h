// Cuts edges in two and faces in two, one after the other, with the numbers that come of it.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace host::geometry {

/// A mesh that is cut step by step. Numbers of parts that are there never change; new ones follow.
/// Faces that no cut touches cost nothing until the end; each cut costs the corners of its faces.
///
/// Limits  kMaxVisits corners looked at in all; beyond, nothing is cut any more, `isTired`.
class MeshCutter {
public:
    static constexpr std::uint64_t kMaxVisits = std::uint64_t{1} << 28;

    /// One edge of a loop, and the texture coordinates where it starts: a place in a pool.
    struct Corner {
        std::int32_t reference = 0;
        std::uint32_t uvs = 0;
    };

    /// `before` must be consistent and outlive the cutter.
    explicit MeshCutter(const MeshData& before);

    MeshRewriter& rewriter() { return m_rewriter; }
    const MeshEdge& edge(std::uint32_t edge) { return m_rewriter.edges()[edge]; }

    /// A new vertex on an edge, `part` (0..1) of the way from its start. The edge keeps its number
    /// up to there; the rest is a new one, `lastEdge`. Texture coordinates are interpolated, one
    /// new id for each pair that lies along the edge.
    std::uint32_t splitEdge(std::uint32_t edge, double part);
    std::uint32_t lastEdge() { return static_cast<std::uint32_t>(m_rewriter.edges().size()) - 1; }

    /// The faces of an edge as they are now.
    std::vector<std::uint32_t> facesOf(std::uint32_t edge);
    bool hasVertex(std::uint32_t face, std::uint32_t vertex);

    /// A line of new edges through a face between two of its vertices, over inner vertices that are
    /// there already and in no face; smooth by the angle of `finish`. The part of the face on the
    /// left of the line (seen from outside) keeps its number. Both loops begin with the line.
    /// Result   false where the face does not have both in its only loop, or where the line would
    ///          lie on an edge of it.
    bool cutFace(std::uint32_t face, std::uint32_t from, std::uint32_t to,
                 std::span<const std::uint32_t> inner = {});

    // --- loops by hand, for what no cut makes; `facesOf` does not know of them

    /// Gives a face the loop, and another face its groups and this loop.
    void setLoop(std::uint32_t face, std::span<const Corner> loop);
    std::uint32_t addFace(std::uint32_t like, std::span<const Corner> loop);
    std::size_t uvSetCount() const { return m_mixed.size(); }
    /// A place in the pool for the ids of one corner, one of each set; -1 for none.
    std::uint32_t addUvs(std::span<const std::int32_t> ids);
    std::span<const std::int32_t> uvsAt(std::uint32_t place) const;

    std::uint32_t faceCount() const { return m_faceCount; }
    /// The loop of a face that has no holes; empty for one that has.
    std::span<const Corner> loopOf(std::uint32_t face);
    std::uint32_t vertexAt(const Corner& corner)
    {
        const MeshEdge& ends = m_rewriter.edges()[edgeOf(corner.reference)];
        return corner.reference >= 0 ? ends.start : ends.end;
    }

    /// Counts corners that were looked at; true once there were too many.
    bool isTired(std::size_t visits = 0)
    {
        m_visits += visits;
        return m_visits > kMaxVisits;
    }

    /// The mesh, as `MeshRewriter::finish` makes it; null as well where there was too much to do.
    std::shared_ptr<const MeshData> finish(double smoothingAngle);

private:
    struct Face {
        std::vector<Corner> corners;
        std::vector<std::uint32_t> loopEnds;
        std::uint32_t source = kNoSource;
    };

    Face& editable(std::uint32_t face);
    std::uint32_t uvsInside(std::span<const Corner> loop, std::uint32_t vertex);
    std::uint32_t mixUvs(std::uint32_t from, std::uint32_t to, double part);
    void splitCorners(std::uint32_t face, std::uint32_t edge, std::uint32_t half, double part);
    void replaceUser(std::uint32_t edge, std::uint32_t before, std::uint32_t now);
    void writeFace(const Face& face);

    MeshRewriter m_rewriter;
    CornerLinks m_links;
    NumberLists m_cornersOfEdges;
    std::uint32_t m_faceCount = 0;
    std::uint64_t m_visits = 0;
    std::unordered_map<std::uint32_t, Face> m_faces; ///< those that were touched
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_users; ///< of touched edges
    std::vector<std::int32_t> m_uvPool; ///< an id for each set, run after run
    /// New ids of the edge that is being cut, by the ids at its ends.
    std::vector<std::unordered_map<std::uint64_t, std::int32_t>> m_mixed;
};

} // namespace host::geometry
