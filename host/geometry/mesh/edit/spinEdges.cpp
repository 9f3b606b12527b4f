#include "host/geometry/mesh/edit/spinEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <unordered_map>
#include <vector>

namespace host::geometry {
namespace {

/// The loop round two faces, from the end of the edge between them through the first face and then
/// through the second one.
struct SharedLoop {
    std::vector<std::uint32_t> corners; ///< from which the edges of the loop leave
    std::size_t first = 0;              ///< how many of them are the first face's
    std::uint32_t endOfFirst = 0;       ///< the first face's corner at the edge's start
    std::uint32_t endOfSecond = 0;      ///< the second face's corner at the edge's end

    std::size_t place(std::size_t position) const { return position % corners.size(); }
    /// The corner of one of the faces at a place of the loop, where it has one; else the other's.
    std::uint32_t source(std::size_t position, bool isFirst) const
    {
        if (isFirst && position == first) {
            return endOfFirst;
        }
        return !isFirst && position == 0 ? endOfSecond : corners[position];
    }
};

class EdgeSpinner {
public:
    explicit EdgeSpinner(const MeshData& mesh)
        : m_topology(*mesh.topology)
        , m_links(m_topology)
        , m_sides(cornersOfEdges(m_topology))
        , m_rewriter(mesh)
    {
    }

    /// False where it cannot be done.
    bool spin(std::uint32_t edge, std::int32_t offset)
    {
        if (edge >= m_topology.edges.size() || m_sides.of(edge).size() != 2) {
            return false;
        }
        const bool isFirstForward = m_topology.corners[m_sides.of(edge)[0]] >= 0;
        const std::uint32_t forward = m_sides.of(edge)[isFirstForward ? 0 : 1];
        const std::uint32_t backward = m_sides.of(edge)[isFirstForward ? 1 : 0];
        const std::uint32_t first = m_links.face(forward);
        const std::uint32_t second = m_links.face(backward);
        if (m_topology.corners[forward] < 0 || m_topology.corners[backward] >= 0 ||
            first == second || !isFree(first) || !isFree(second)) {
            return false;
        }
        const SharedLoop loop = loopOf(forward, backward);
        const auto size = static_cast<std::int64_t>(loop.corners.size());
        const auto shift = static_cast<std::size_t>(((offset % size) + size) % size);
        const std::size_t start = loop.place(loop.first + shift);
        const MeshEdge ends{m_topology.cornerVertex(loop.corners[start]),
                            m_topology.cornerVertex(loop.corners[shift])};
        if (ends.start == ends.end) {
            return false;
        }
        m_rewriter.edges()[edge] = ends;
        turn(first, loop, {edge, start, shift, true});
        turn(second, loop, {edge, shift, start, false});
        return true;
    }

    std::shared_ptr<const MeshData> finish()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            const auto turned = m_turned.find(face);
            if (turned == m_turned.end()) {
                m_rewriter.copyFace(face);
                continue;
            }
            m_rewriter.beginFace(face);
            for (const Corner& corner : turned->second) {
                m_rewriter.addCorner(corner.reference, corner.source);
            }
            m_rewriter.endFace();
        }
        return m_rewriter.finish();
    }

private:
    /// The edge that leaves, and the corner whose texture coordinates are there.
    struct Corner {
        std::int32_t reference = 0;
        std::uint32_t source = 0;
    };

    /// The turned edge in one of its faces: from a place of the loop to another.
    struct Turn {
        std::uint32_t edge = 0;
        std::size_t from = 0;
        std::size_t to = 0;
        bool isFirst = true;
    };

    bool isFree(std::uint32_t face) const
    {
        return m_turned.count(face) == 0 &&
               m_topology.firstLoop(face) + 1 == m_topology.firstLoop(face + 1);
    }

    SharedLoop loopOf(std::uint32_t forward, std::uint32_t backward) const
    {
        SharedLoop loop;
        loop.endOfFirst = forward;
        loop.endOfSecond = backward;
        for (std::uint32_t at = m_links.next(forward); at != forward; at = m_links.next(at)) {
            loop.corners.push_back(at);
        }
        loop.first = loop.corners.size();
        for (std::uint32_t at = m_links.next(backward); at != backward; at = m_links.next(at)) {
            loop.corners.push_back(at);
        }
        return loop;
    }

    void turn(std::uint32_t face, const SharedLoop& loop, const Turn& turn)
    {
        std::vector<Corner>& corners = m_turned[face];
        corners.push_back(
            {referenceTo(turn.edge, !turn.isFirst), loop.source(turn.from, turn.isFirst)});
        for (std::size_t at = turn.to; at != turn.from; at = loop.place(at + 1)) {
            corners.push_back(
                {m_topology.corners[loop.corners[at]], loop.source(at, turn.isFirst)});
        }
    }

    const MeshTopology& m_topology;
    CornerLinks m_links;
    NumberLists m_sides;
    MeshRewriter m_rewriter;
    std::unordered_map<std::uint32_t, std::vector<Corner>> m_turned;
};

} // namespace

std::shared_ptr<const MeshData> spinEdges(const MeshData& mesh,
                                          std::span<const std::uint32_t> edges, std::int32_t offset)
{
    EdgeSpinner spinner(mesh);
    for (const std::uint32_t edge : edges) {
        if (!spinner.spin(edge, offset)) {
            return nullptr;
        }
    }
    return spinner.finish();
}

} // namespace host::geometry
