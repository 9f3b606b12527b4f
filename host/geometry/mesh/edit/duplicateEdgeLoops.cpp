#include "host/geometry/mesh/edit/duplicateEdgeLoops.h"

#include "host/geometry/mesh/edit/MeshCutter.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace host::geometry {
namespace {

using Corner = MeshCutter::Corner;

/// Edges one after the other, each walked so that it ends where the next one starts. The lowest one
/// is at `first`.
struct Chain {
    std::vector<std::int32_t> walk;
    std::size_t first = 0;
    bool isClosed = false;

    /// The place after one; none at the end of an open chain.
    std::optional<std::size_t> next(std::size_t place) const
    {
        const bool isLast = place + 1 == walk.size();
        return isLast && !isClosed ? std::nullopt : std::optional(isLast ? 0 : place + 1);
    }
    std::optional<std::size_t> previous(std::size_t place) const
    {
        return place > 0 ? std::optional(place - 1) : std::nullopt;
    }
    Chain turned() const
    {
        Chain back{{walk.rbegin(), walk.rend()}, walk.size() - 1 - first, isClosed};
        for (std::int32_t& edge : back.walk) {
            edge = reversed(edge);
        }
        return back;
    }
};

/// Puts edges together to chains.
class ChainFinder {
public:
    ChainFinder(const MeshTopology& topology, std::span<const std::uint32_t> edges)
        : m_topology(topology)
    {
        for (const std::uint32_t edge : edges) {
            m_isFree[edge] = true;
            for (const std::uint32_t end : {topology.edges[edge].start, topology.edges[edge].end}) {
                Ends& ends = m_ends[end];
                ends.edges[std::min<std::size_t>(ends.count, 1)] = edge;
                ++ends.count;
                m_hasForks = m_hasForks || ends.count > 2;
            }
        }
    }

    bool isFree(std::uint32_t edge) const { return m_isFree.at(edge); }
    /// True where more than two of the edges meet; chains end there.
    bool hasForks() const { return m_hasForks; }

    Chain take(std::uint32_t edge)
    {
        Chain chain;
        m_isFree[edge] = false;
        chain.walk = {referenceTo(edge, false)};
        follow(chain);
        if (!chain.isClosed) {
            Chain back{{referenceTo(edge, true)}, 0, false};
            follow(back);
            back = back.turned();
            chain.first = back.walk.size() - 1;
            back.walk.insert(back.walk.end(), chain.walk.begin() + 1, chain.walk.end());
            chain.walk = std::move(back.walk);
        }
        return chain;
    }

private:
    struct Ends {
        std::array<std::uint32_t, 2> edges{};
        std::size_t count = 0;
    };

    void follow(Chain& chain)
    {
        for (auto next = after(chain.walk.back()); next; next = after(chain.walk.back())) {
            if (!m_isFree[edgeOf(*next)]) {
                chain.isClosed = *next == chain.walk.front();
                return;
            }
            m_isFree[edgeOf(*next)] = false;
            chain.walk.push_back(*next);
        }
    }

    /// The other edge where a walk along one ends.
    std::optional<std::int32_t> after(std::int32_t reference) const
    {
        const MeshEdge& edge = m_topology.edges[edgeOf(reference)];
        const std::uint32_t vertex = reference >= 0 ? edge.end : edge.start;
        const Ends& ends = m_ends.at(vertex);
        const std::uint32_t other = ends.edges[ends.edges[0] == edgeOf(reference) ? 1 : 0];
        if (ends.count != 2 || other == edgeOf(reference)) {
            return std::nullopt;
        }
        return referenceTo(other, m_topology.edges[other].start != vertex);
    }

    const MeshTopology& m_topology;
    std::unordered_map<std::uint32_t, bool> m_isFree;
    std::unordered_map<std::uint32_t, Ends> m_ends;
    bool m_hasForks = false;
};

/// An edge that leaves a chain on one side.
struct Rung {
    std::uint32_t edge = 0;
    std::uint32_t foot = 0;       ///< its vertex on the chain
    std::uint32_t face = 0;       ///< between it and the rung before
    std::uint32_t vertex = kNone; ///< where it is split
};

/// One side of a chain, the faces of which walk it as it goes.
struct Side {
    std::vector<Rung> ahead;           ///< from the first edge's end on
    std::vector<Rung> behind;          ///< from the first edge's start back
    std::uint32_t closingFace = kNone; ///< between the last rung ahead and the first one
    bool isThere = false;
    bool isEndAhead = false; ///< the last rungs stand where the chain ends
    bool isEndBehind = false;

    const Rung* end() const { return isEndAhead ? &ahead.back() : nullptr; }
    const Rung* start() const { return isEndBehind ? &behind.back() : nullptr; }
};

class LoopDuplicator {
public:
    LoopDuplicator(const MeshData& mesh, const LoopDuplication& duplication)
        : m_duplication(duplication)
        , m_cutter(mesh)
        , m_mostSteps(2 * mesh.topology->corners.size() + 2)
    {
    }

    void duplicate(const Chain& chain)
    {
        const Chain back = chain.turned();
        Side right = sideOf(back);
        split(right);
        Side left = sideOf(chain);
        split(left);
        closeEnd(left.end(), right.start());
        closeEnd(right.end(), left.start());
    }

    DuplicatedLoops finish()
    {
        DuplicatedLoops result{m_cutter.finish(m_duplication.smoothingAngle), m_isWhole};
        if (result.mesh != nullptr && !m_ends.empty()) {
            std::sort(m_ends.begin(), m_ends.end());
            result.mesh = deleteEdges(*result.mesh, m_ends, false);
        }
        return result;
    }

private:
    /// A corner of a face: one that walks an edge.
    struct Place {
        std::uint32_t face = kNone;
        std::size_t corner = 0;
    };

    std::optional<Place> placeIn(std::uint32_t face, std::int32_t reference)
    {
        const auto loop = m_cutter.loopOf(face);
        m_cutter.isTired(loop.size());
        const auto found = std::find_if(loop.begin(), loop.end(), [&](const Corner& corner) {
            return corner.reference == reference;
        });
        return found == loop.end()
                   ? std::nullopt
                   : std::optional(Place{face, static_cast<std::size_t>(found - loop.begin())});
    }

    /// Where a face walks an edge one way.
    std::optional<Place> walkOf(std::int32_t reference)
    {
        const std::vector<std::uint32_t> faces = m_cutter.facesOf(edgeOf(reference));
        for (const std::uint32_t face : faces) {
            const auto place = faces.size() <= 2 ? placeIn(face, reference) : std::nullopt;
            if (place) {
                return place;
            }
        }
        return std::nullopt;
    }

    Corner cornerAt(std::uint32_t face, std::size_t corner)
    {
        const auto loop = m_cutter.loopOf(face);
        return loop[corner % loop.size()];
    }

    Side sideOf(const Chain& chain)
    {
        Side side;
        const auto start = walkOf(chain.walk[chain.first]);
        if (start) {
            side.isThere = true;
            goAhead(chain, *start, side);
            if (!chain.isClosed) {
                goBack(chain, *start, side);
            }
        }
        return side;
    }

    void goAhead(const Chain& chain, Place at, Side& side)
    {
        std::size_t place = chain.first;
        for (std::size_t step = 0; step < m_mostSteps && !m_cutter.isTired(); ++step) {
            const Corner corner = cornerAt(at.face, at.corner + 1);
            const auto next = chain.next(place);
            if (next && corner.reference == chain.walk[*next]) {
                if (*next == chain.first) {
                    side.closingFace = at.face;
                    return;
                }
                place = *next;
                ++at.corner;
                continue;
            }
            if (edgeOf(corner.reference) == edgeOf(chain.walk[place])) {
                return; // round a vertex of several fans
            }
            side.ahead.push_back({edgeOf(corner.reference), m_cutter.vertexAt(corner), at.face});
            side.isEndAhead = !next;
            const auto across = next ? walkOf(reversed(corner.reference)) : std::nullopt;
            if (!across) {
                return;
            }
            at = *across;
        }
    }

    void goBack(const Chain& chain, Place at, Side& side)
    {
        std::size_t place = chain.first;
        for (std::size_t step = 0; step < m_mostSteps && !m_cutter.isTired(); ++step) {
            const std::size_t size = m_cutter.loopOf(at.face).size();
            const Corner corner = cornerAt(at.face, at.corner + size - 1);
            const auto last = chain.previous(place);
            if (last && corner.reference == chain.walk[*last]) {
                place = *last;
                at.corner = (at.corner + size - 1) % size;
                continue;
            }
            if (edgeOf(corner.reference) == edgeOf(chain.walk[place])) {
                return;
            }
            const std::uint32_t foot = m_cutter.vertexAt(cornerAt(at.face, at.corner));
            side.behind.push_back({edgeOf(corner.reference), foot, at.face});
            side.isEndBehind = !last;
            const auto across = last ? walkOf(reversed(corner.reference)) : std::nullopt;
            if (!across) {
                return;
            }
            at = *across;
        }
    }

    // --- cuts

    void split(Side& side)
    {
        const bool isComplete = side.closingFace != kNone || (side.isEndAhead && side.isEndBehind);
        m_isWhole = m_isWhole && (!side.isThere || (isComplete && !side.ahead.empty()));
        const Rung* root = nullptr;
        for (Rung& rung : side.ahead) {
            splitRung(rung, side);
            if (root != nullptr) {
                cut(rung.face, root->vertex, rung.vertex);
            }
            root = &rung;
        }
        if (side.closingFace != kNone && side.ahead.size() > 1) {
            cut(side.closingFace, side.ahead.back().vertex, side.ahead.front().vertex);
        }
        root = side.ahead.empty() ? nullptr : &side.ahead.front();
        for (Rung& rung : side.behind) {
            splitRung(rung, side);
            if (root != nullptr) {
                cut(rung.face, rung.vertex, root->vertex);
            }
            root = &rung;
        }
    }

    /// The piece of an edge that is at a vertex; an edge that was split from its other end has
    /// more than one.
    std::uint32_t pieceAt(std::uint32_t edge, std::uint32_t vertex)
    {
        for (auto half = m_halves.find(edge); half != m_halves.end();
             half = m_halves.find(half->second)) {
            const MeshEdge& ends = m_cutter.edge(edge);
            if (ends.start == vertex || ends.end == vertex) {
                break;
            }
            edge = half->second;
        }
        return edge;
    }

    double lengthOf(std::uint32_t edge)
    {
        const auto& points = m_cutter.rewriter().points();
        const MeshEdge& ends = m_cutter.edge(edge);
        return length(toDouble(points[ends.end]) - toDouble(points[ends.start]));
    }

    /// The part of the way from its foot at which a rung is split.
    double partOf(const Rung& rung, const Side& side)
    {
        const double offset = m_duplication.offset;
        const Rung& first = side.ahead.empty() ? rung : side.ahead.front();
        if (!m_duplication.isDistance || first.edge == rung.edge) {
            m_distance = offset * lengthOf(rung.edge);
            return offset;
        }
        const double whole = lengthOf(rung.edge);
        return whole > 0 ? std::fmin(m_distance / whole, 1) : offset;
    }

    void splitRung(Rung& rung, const Side& side)
    {
        rung.edge = pieceAt(rung.edge, rung.foot);
        const double part = partOf(rung, side);
        const bool isFromStart = m_cutter.edge(rung.edge).start == rung.foot;
        rung.vertex = m_cutter.splitEdge(rung.edge, isFromStart ? part : 1 - part);
        m_halves[rung.edge] = m_cutter.lastEdge();
    }

    void cut(std::uint32_t face, std::uint32_t from, std::uint32_t to)
    {
        m_isWhole = m_cutter.cutFace(face, from, to) && m_isWhole;
    }

    // --- ends of open chains

    /// The way between a rung's foot and its new vertex, as the strip's face does not walk it.
    std::optional<Place> beyond(const Rung& rung, bool leavesFoot)
    {
        const std::uint32_t piece = pieceAt(rung.edge, rung.foot);
        const bool startsAtFoot = m_cutter.edge(piece).start == rung.foot;
        return walkOf(referenceTo(piece, startsAtFoot != leavesFoot));
    }

    /// Where a chain ends at a vertex with one edge more, on which it would go on, both new lines
    /// run into that edge's other end.
    void closeEnd(const Rung* left, const Rung* right)
    {
        const auto toFoot = left != nullptr ? beyond(*left, false) : std::nullopt;
        const auto fromFoot = right != nullptr ? beyond(*right, true) : std::nullopt;
        if (!toFoot || !fromFoot) {
            m_isWhole = m_isWhole && !toFoot && !fromFoot;
            return;
        }
        m_isWhole = false;
        const std::size_t size = m_cutter.loopOf(fromFoot->face).size();
        const Corner onward = cornerAt(toFoot->face, toFoot->corner + 1);
        const Corner before = cornerAt(fromFoot->face, fromFoot->corner + size - 1);
        if (onward.reference != reversed(before.reference)) {
            return;
        }
        const MeshEdge& ends = m_cutter.edge(edgeOf(onward.reference));
        const std::uint32_t tip = onward.reference >= 0 ? ends.end : ends.start;
        const bool isCut = m_cutter.cutFace(toFoot->face, left->vertex, tip) &&
                           m_cutter.cutFace(fromFoot->face, tip, right->vertex);
        if (isCut && m_duplication.deletesEnds) {
            m_ends.push_back(edgeOf(onward.reference));
        }
    }

    const LoopDuplication& m_duplication;
    MeshCutter m_cutter;
    std::size_t m_mostSteps = 0;
    bool m_isWhole = true;
    double m_distance = 0; ///< at which the rungs of a side are split
    std::vector<std::uint32_t> m_ends;
    std::unordered_map<std::uint32_t, std::uint32_t> m_halves; ///< of edges that were split
};

} // namespace

DuplicatedLoops duplicateEdgeLoops(const MeshData& mesh, std::span<const std::uint32_t> edges,
                                   const LoopDuplication& duplication)
{
    ChainFinder finder(*mesh.topology, edges);
    LoopDuplicator duplicator(mesh, duplication);
    for (const std::uint32_t edge : edges) {
        if (finder.isFree(edge)) {
            duplicator.duplicate(finder.take(edge));
        }
    }
    DuplicatedLoops result = duplicator.finish();
    result.isWhole = result.isWhole && !finder.hasForks();
    return result;
}

} // namespace host::geometry
