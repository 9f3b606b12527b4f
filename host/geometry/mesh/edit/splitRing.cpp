#include "host/geometry/mesh/edit/splitRing.h"

#include "host/geometry/mesh/edit/MeshCutter.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// An edge of a ring. Its near end is the one on the side of the first edge's start.
struct Rung {
    std::uint32_t edge = 0;
    bool isFlipped = false;       ///< starts at its far end
    bool isToTheRight = false;    ///< reached through the face on the right of the first edge
    std::uint32_t previous = 0;   ///< the rung that it was reached from, and the face between
    std::uint32_t face = kNone;   ///< kNone: of the first one
    std::uint32_t vertex = kNone; ///< where it is split
};

struct Ring {
    std::vector<Rung> rungs;
    std::uint32_t closingFace = kNone; ///< between the last and the first one
};

/// Takes rings out of a set of edges.
class RingFinder {
public:
    RingFinder(const MeshTopology& topology, std::span<const std::uint32_t> edges)
        : m_topology(topology)
        , m_links(topology)
        , m_corners(cornersOfEdges(topology))
        , m_isFree(topology.edges.size())
    {
        for (const std::uint32_t edge : edges) {
            m_isFree[edge] = true;
        }
    }

    bool isFree(std::uint32_t edge) const { return edge < m_isFree.size() && m_isFree[edge]; }

    Ring take(std::uint32_t root)
    {
        Ring ring;
        m_isFree[root] = false;
        ring.rungs.push_back({root});
        follow(ring, false);
        if (ring.closingFace == kNone) {
            follow(ring, true);
        }
        return ring;
    }

private:
    void follow(Ring& ring, bool isToTheRight)
    {
        const std::uint32_t root = ring.rungs.front().edge;
        std::uint32_t last = 0;
        for (;;) {
            const Rung& rung = ring.rungs[last];
            const std::uint32_t corner = cornerAlong(rung.edge, rung.isFlipped != isToTheRight);
            const std::uint32_t next = corner == kNone ? kNone : across(corner, root);
            if (next == kNone) {
                return;
            }
            const std::uint32_t face = m_links.face(corner);
            const std::int32_t reference = m_topology.corners[next];
            if (edgeOf(reference) == root) {
                ring.closingFace = face;
                return;
            }
            m_isFree[edgeOf(reference)] = false;
            // The face walks the two opposite ways.
            ring.rungs.push_back(
                {edgeOf(reference), (reference >= 0) != isToTheRight, isToTheRight, last, face});
            last = static_cast<std::uint32_t>(ring.rungs.size() - 1);
        }
    }

    /// The corner at which a face has the edge backward, or forward.
    std::uint32_t cornerAlong(std::uint32_t edge, bool isBackward) const
    {
        const auto corners = m_corners.of(edge);
        for (const std::uint32_t corner : corners) {
            if (corners.size() <= 2 && (m_topology.corners[corner] < 0) == isBackward) {
                return corner;
            }
        }
        return kNone;
    }

    /// The corner of the edge at which the ring leaves the face that it enters at another.
    std::uint32_t across(std::uint32_t corner, std::uint32_t root) const
    {
        const std::uint32_t opposite = m_links.next(m_links.next(corner));
        const bool isQuad = m_links.next(m_links.next(opposite)) == corner;
        if (isQuad && mayGoTo(opposite, root)) {
            return opposite;
        }
        std::uint32_t found = kNone;
        for (std::uint32_t other = m_links.next(corner); other != corner;
             other = m_links.next(other)) {
            if (mayGoTo(other, root)) {
                if (found != kNone) {
                    return kNone;
                }
                found = other;
            }
        }
        return found;
    }

    bool mayGoTo(std::uint32_t corner, std::uint32_t root) const
    {
        const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
        return edge == root || m_isFree[edge];
    }

    const MeshTopology& m_topology;
    CornerLinks m_links;
    NumberLists m_corners;
    std::vector<bool> m_isFree;
};

class RingSplitter {
public:
    RingSplitter(const MeshData& mesh, const RingSplitting& splitting)
        : m_splitting(splitting), m_cutter(mesh)
    {
    }

    void split(Ring& ring)
    {
        if (m_splitting.type != RingSplit::Many) {
            splitOnce(ring, rungParts(ring));
            return;
        }
        for (std::uint32_t loop = m_splitting.loopCount; loop >= 1; --loop) {
            // The near parts of the loop before are split again.
            const double part = static_cast<double>(loop) / (loop + 1);
            splitOnce(ring, std::vector<double>(ring.rungs.size(), part));
        }
    }

    std::shared_ptr<const MeshData> finish() { return m_cutter.finish(m_splitting.smoothingAngle); }

private:
    double lengthOf(std::uint32_t edge)
    {
        const MeshEdge& ends = m_cutter.edge(edge);
        const auto& points = m_cutter.rewriter().points();
        return length(toDouble(points[ends.end]) - toDouble(points[ends.start]));
    }

    /// The part of the way from its near end at which each rung is split.
    std::vector<double> rungParts(const Ring& ring)
    {
        const double weight = m_splitting.weight;
        std::vector<double> parts(ring.rungs.size(), weight);
        if (m_splitting.type == RingSplit::EqualDistance) {
            const double whole = lengthOf(ring.rungs.front().edge);
            const bool isFromStart = m_splitting.measuresFromStart;
            const double distance = whole * (isFromStart ? weight : 1 - weight);
            for (std::size_t i = 0; i < parts.size(); ++i) {
                const double size = lengthOf(ring.rungs[i].edge);
                const double part = size > 0 ? std::fmin(distance / size, 1) : weight;
                parts[i] = isFromStart ? part : 1 - part;
            }
        }
        return parts;
    }

    void splitOnce(Ring& ring, const std::vector<double>& parts)
    {
        for (std::size_t i = 0; i < ring.rungs.size(); ++i) {
            Rung& rung = ring.rungs[i];
            rung.vertex = m_cutter.splitEdge(rung.edge, rung.isFlipped ? 1 - parts[i] : parts[i]);
            if (rung.isFlipped) {
                rung.edge = m_cutter.lastEdge();
            }
            if (rung.face != kNone) {
                cut(rung.face, ring.rungs[rung.previous], rung, rung.isToTheRight);
            }
        }
        if (ring.closingFace != kNone) {
            cut(ring.closingFace, ring.rungs.back(), ring.rungs.front(), false);
        }
    }

    /// The near side of the face keeps its number.
    void cut(std::uint32_t face, const Rung& from, const Rung& to, bool isToTheRight)
    {
        isToTheRight ? m_cutter.cutFace(face, to.vertex, from.vertex)
                     : m_cutter.cutFace(face, from.vertex, to.vertex);
    }

    const RingSplitting& m_splitting;
    MeshCutter m_cutter;
};

/// No fewer than there will be: an open ring has one face less than edges.
std::uint64_t newFaceCount(std::span<const Ring> rings, const RingSplitting& splitting)
{
    std::uint64_t rungs = 0;
    for (const Ring& ring : rings) {
        rungs += ring.rungs.size();
    }
    return rungs * (splitting.type == RingSplit::Many ? splitting.loopCount : 1);
}

} // namespace

std::shared_ptr<const MeshData> splitRing(const MeshData& mesh,
                                          std::span<const std::uint32_t> edges,
                                          const RingSplitting& splitting)
{
    RingFinder finder(*mesh.topology, edges);
    std::vector<Ring> rings;
    if (finder.isFree(splitting.rootEdge)) {
        rings.push_back(finder.take(splitting.rootEdge));
    }
    for (const std::uint32_t edge : edges) {
        if (finder.isFree(edge)) {
            rings.push_back(finder.take(edge));
        }
    }
    if (newFaceCount(rings, splitting) > kMostRingFaces) {
        return nullptr;
    }
    RingSplitter splitter(mesh, splitting);
    for (Ring& ring : rings) {
        splitter.split(ring);
    }
    return splitter.finish();
}

} // namespace host::geometry
