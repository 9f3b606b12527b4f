#include "host/geometry/mesh/edit/bevelEdges.h"

#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/bevelArc.h"
#include "host/geometry/mesh/edit/edgeSmoothness.h"
#include "host/geometry/mesh/edit/faceFrame.h"
#include "host/geometry/mesh/edit/vertexFan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace host::geometry {
namespace {

/// The part of the most possible offset that is left.
constexpr double kLeft = 1e-4;
constexpr double kLeastSine = 0.01;

/// A new vertex in place of a beveled one, before it has its place: per unit of offset.
struct Slot {
    Vec3d motion;
    std::uint32_t point = 0;
};

/// What becomes of a vertex where edges are beveled.
struct Corner {
    std::uint32_t vertex = 0;
    VertexFan fan;
    std::vector<std::uint32_t> before; ///< slot on the clockwise side of each edge of the fan
    std::vector<std::uint32_t> after;  ///< on the other side; the same where it is not beveled
    std::vector<Slot> slots;
    std::uint32_t beveledCount = 0;
    /// The points of the round across each beveled edge of the fan, between `before` and `after`;
    /// with one or two beveled edges there is one round only.
    std::vector<std::vector<std::uint32_t>> rounds;
};

std::uint64_t pairOf(std::uint32_t a, std::uint32_t b)
{
    return std::uint64_t{std::max(a, b)} << 32U | std::min(a, b);
}

class EdgeBeveler {
public:
    EdgeBeveler(const MeshData& mesh, const Beveling& beveling)
        : m_topology(*mesh.topology)
        , m_beveling(beveling)
        , m_rewriter(mesh)
        , m_links(m_topology)
        , m_cornersOfEdges(cornersOfEdges(m_topology))
        , m_cornersOfVertices(cornersOfVertices(m_topology))
        , m_points(pointsInSpace(mesh, beveling.toSpace))
        , m_isBeveled(m_topology.edges.size())
        , m_isWritten(m_topology.faceCount())
        , m_cornerOfVertex(m_topology.vertexCount, kNone)
        , m_uvCopies(mesh.uvSets.size())
    {
    }

    Beveled run(std::span<const std::uint32_t> edges)
    {
        Beveled result;
        for (const std::uint32_t edge : edges) {
            if (m_cornersOfEdges.of(edge).size() == 2) {
                m_isBeveled[edge] = true;
                m_edges.push_back(edge);
            }
        }
        if (m_edges.empty()) {
            result.mesh = std::make_shared<const MeshData>(m_rewriter.before());
            return result;
        }
        if (m_edges.size() * std::size_t{m_beveling.segments} > kMaxBevelFaces || !makeCorners()) {
            return result;
        }
        orderStrips();
        placeSlots(offset());
        makeEdges();
        writeFaces();
        result.mesh =
            withSmoothEdges(m_rewriter.finish({.edges = true, .points = true, .uvs = true}),
                            m_beveling.smoothingAngle);
        result.isExact = m_isExact;
        return result;
    }

private:
    // --- corners

    bool makeCorners()
    {
        for (const std::uint32_t edge : m_edges) {
            const MeshEdge& ends = m_topology.edges[edge];
            for (const std::uint32_t vertex : {ends.start, ends.end}) {
                if (m_cornerOfVertex[vertex] == kNone && !makeCorner(vertex)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool makeCorner(std::uint32_t vertex)
    {
        const auto fan = fanOf(m_topology, m_links, m_cornersOfVertices.of(vertex));
        if (!fan) {
            return false;
        }
        Corner corner;
        corner.vertex = vertex;
        corner.fan = *fan;
        for (const std::uint32_t edge : corner.fan.edges) {
            corner.beveledCount += m_isBeveled[edge] ? 1 : 0;
        }
        const bool isEndOfOne = corner.beveledCount == 1 && corner.fan.isClosed();
        if ((!corner.fan.isClosed() && corner.beveledCount > 1) ||
            (isEndOfOne && corner.fan.edges.size() < 3)) {
            return false;
        }
        isEndOfOne ? makeEndSlots(corner) : makeGroupSlots(corner);
        m_cornerOfVertex[vertex] = static_cast<std::uint32_t>(m_corners.size());
        m_corners.push_back(std::move(corner));
        return true;
    }

    bool isBeveledAt(const Corner& corner, std::size_t place) const
    {
        return m_isBeveled[corner.fan.edges[place]];
    }

    /// One beveled edge ends here: a slot on each of its neighbours, one that stays for all
    /// between.
    void makeEndSlots(Corner& corner)
    {
        const std::size_t count = corner.fan.edges.size();
        std::size_t beveled = 0;
        while (!isBeveledAt(corner, beveled)) {
            ++beveled;
        }
        corner.before.assign(count, 0);
        corner.after.assign(count, 0);
        const std::size_t ahead = (beveled + 1) % count;
        const std::size_t behind = (beveled + count - 1) % count;
        std::uint32_t middle = kNone;
        for (std::size_t place = 0; place < count; ++place) {
            if (place == beveled) {
                continue;
            }
            std::uint32_t slot = middle;
            if (place == ahead || place == behind) {
                slot = addSlot(corner, alongEdge(corner, place));
            } else if (middle == kNone) {
                slot = middle = addSlot(corner, Vec3d{});
            }
            corner.before[place] = corner.after[place] = slot;
        }
        corner.before[beveled] = corner.after[behind];
        corner.after[beveled] = corner.before[ahead];
    }

    /// A slot for all edges between two beveled ones, or between one and a border.
    void makeGroupSlots(Corner& corner)
    {
        const std::size_t count = corner.fan.edges.size();
        if (corner.fan.isClosed()) {
            std::size_t first = 0;
            while (!isBeveledAt(corner, first)) {
                ++first;
            }
            const auto turn = static_cast<std::ptrdiff_t>(first);
            std::rotate(corner.fan.edges.begin(), corner.fan.edges.begin() + turn,
                        corner.fan.edges.end());
            std::rotate(corner.fan.corners.begin(), corner.fan.corners.begin() + turn,
                        corner.fan.corners.end());
        }
        corner.before.assign(count, 0);
        corner.after.assign(count, 0);
        std::size_t place = 0;
        while (place < count) {
            std::size_t end = place + (isBeveledAt(corner, place) ? 1 : 0);
            const std::size_t firstOfGroup = end;
            while (end < count && !isBeveledAt(corner, end)) {
                ++end;
            }
            const std::uint32_t slot =
                addSlot(corner, motionOfGroup(corner, place, firstOfGroup, end));
            if (firstOfGroup > place) {
                corner.after[place] = slot;
            }
            for (std::size_t inside = firstOfGroup; inside < end; ++inside) {
                corner.before[inside] = corner.after[inside] = slot;
            }
            if (end < count) {
                corner.before[end] = slot;
            } else if (corner.fan.isClosed()) {
                corner.before[0] = slot;
            }
            place = end;
        }
    }

    static std::uint32_t addSlot(Corner& corner, const Vec3d& motion)
    {
        corner.slots.push_back({motion, 0});
        return static_cast<std::uint32_t>(corner.slots.size() - 1);
    }

    /// `place`: the beveled edge before the group (or the group's first edge at a border).
    Vec3d motionOfGroup(const Corner& corner, std::size_t place, std::size_t first, std::size_t end)
    {
        const std::size_t count = corner.fan.edges.size();
        if (end - first == 1) {
            return alongEdge(corner, first);
        }
        const bool hasBefore = first > place;
        const bool hasAfter = end < count || corner.fan.isClosed();
        Vec3d in;
        double sum = 0;
        if (hasBefore) {
            in = inwards(corner, place, false);
        }
        if (hasAfter) {
            const Vec3d other = inwards(corner, end % count, true);
            sum = hasBefore ? dot(in, other) : 0;
            in = in + other;
        }
        return in * (1 / std::max(1 + sum, kLeastSine));
    }

    Vec3d directionOf(const Corner& corner, std::size_t place) const
    {
        const MeshEdge& ends = m_topology.edges[corner.fan.edges[place]];
        const std::uint32_t other = ends.start == corner.vertex ? ends.end : ends.start;
        return normalized(m_points[other] - m_points[corner.vertex]);
    }

    /// At a right angle to a beveled edge, in the face after it, or before.
    Vec3d inwards(const Corner& corner, std::size_t place, bool isBefore) const
    {
        const std::size_t count = corner.fan.corners.size();
        const std::size_t sector = isBefore ? (place + count - 1) % count : place;
        const Vec3d normal =
            faceNormal(m_topology, m_points, m_links.face(corner.fan.corners[sector]));
        const Vec3d turned = normalized(cross(normal, directionOf(corner, place)));
        return isBefore ? turned * -1 : turned;
    }

    /// Along an edge that stays, so far that it is one unit from the beveled edges beside it.
    Vec3d alongEdge(const Corner& corner, std::size_t place) const
    {
        const std::size_t count = corner.fan.edges.size();
        const Vec3d direction = directionOf(corner, place);
        double sum = 0;
        int uses = 0;
        for (const std::size_t step : {std::size_t{1}, count - 1}) {
            const bool wraps = step == 1 ? place + 1 == count : place == 0;
            const std::size_t other = (place + step) % count;
            if ((!wraps || corner.fan.isClosed()) && isBeveledAt(corner, other)) {
                const double sine = length(cross(direction, directionOf(corner, other)));
                sum += 1 / std::max(sine, kLeastSine);
                ++uses;
            }
        }
        return direction * (uses > 0 ? sum / uses : 0);
    }

    // --- the order of the strips

    /// A beveled edge, walked from its start or back.
    struct Strip {
        std::uint32_t edge = 0;
        bool isBackwards = false;
    };

    const Corner& cornerOf(const Strip& strip, bool isStart) const
    {
        const MeshEdge& ends = m_topology.edges[strip.edge];
        const std::uint32_t vertex = isStart != strip.isBackwards ? ends.start : ends.end;
        return m_corners[m_cornerOfVertex[vertex]];
    }

    /// The strip that goes on where one ends, or that leads to where it starts; walked as it is.
    /// False where it is not the only one there.
    bool nextStrip(const Strip& strip, bool isAhead, Strip& next) const
    {
        const Corner& corner = cornerOf(strip, !isAhead);
        if (corner.beveledCount != 2) {
            return false;
        }
        for (std::size_t place = 0; place < corner.fan.edges.size(); ++place) {
            const std::uint32_t edge = corner.fan.edges[place];
            if (isBeveledAt(corner, place) && edge != strip.edge) {
                const bool startsHere = m_topology.edges[edge].start == corner.vertex;
                next = {edge, startsHere != isAhead};
                return true;
            }
        }
        return false;
    }

    /// Chain after chain by their lowest edges. A ring is walked from its lowest vertex along the
    /// lower one of its edges, but the strip that comes back to there is the first.
    void orderStrips()
    {
        std::vector<bool> isTaken(m_topology.edges.size());
        std::vector<Strip> chain;
        for (const std::uint32_t edge : m_edges) {
            if (isTaken[edge]) {
                continue;
            }
            chain.assign(1, {edge, false});
            isTaken[edge] = true;
            Strip next;
            bool isRing = false;
            while (!isRing && nextStrip(chain.back(), true, next)) {
                isRing = isTaken[next.edge];
                if (!isRing) {
                    isTaken[next.edge] = true;
                    chain.push_back(next);
                }
            }
            if (isRing) {
                turnRing(chain);
            } else {
                const std::size_t ahead = chain.size();
                while (
                    nextStrip(chain.size() > ahead ? chain.back() : chain.front(), false, next)) {
                    isTaken[next.edge] = true;
                    chain.push_back(next);
                }
                std::reverse(chain.begin() + static_cast<std::ptrdiff_t>(ahead), chain.end());
                std::rotate(chain.begin(), chain.begin() + static_cast<std::ptrdiff_t>(ahead),
                            chain.end());
            }
            m_strips.insert(m_strips.end(), chain.begin(), chain.end());
        }
    }

    void turnRing(std::vector<Strip>& ring) const
    {
        const auto lowest =
            std::min_element(ring.begin(), ring.end(), [this](const Strip& a, const Strip& b) {
                return cornerOf(a, true).vertex < cornerOf(b, true).vertex;
            });
        std::rotate(ring.begin(), lowest, ring.end());
        if (ring.back().edge < ring.front().edge) {
            std::reverse(ring.begin(), ring.end());
            for (Strip& strip : ring) {
                strip.isBackwards = !strip.isBackwards;
            }
        }
        std::rotate(ring.begin(), ring.end() - 1, ring.end());
    }

    // --- offset and places

    double offset() const
    {
        const double most = mostPossible() * (1 - kLeft);
        if (m_beveling.isFraction) {
            return std::isfinite(most) ? m_beveling.offset * most : 0;
        }
        return m_beveling.isFitted ? std::min(m_beveling.offset, most) : m_beveling.offset;
    }

    /// The offset at which the first edge of a face has shrunk to a point.
    double mostPossible() const
    {
        double most = std::numeric_limits<double>::infinity();
        for (const Corner& corner : m_corners) {
            for (const std::uint32_t here : corner.fan.corners) {
                for (const std::uint32_t from : {here, m_links.previous(here)}) {
                    const std::uint32_t to = m_links.next(from);
                    const Vec3d way = m_points[m_topology.cornerVertex(to)] -
                                      m_points[m_topology.cornerVertex(from)];
                    const double size = length(way);
                    const Vec3d closing = motionOut(from) - motionIn(to);
                    const double rate = size > 0 ? dot(closing, way) / size : 0;
                    if (rate > kLeastSine * kLeastSine) {
                        most = std::min(most, size / rate);
                    }
                }
            }
        }
        return most;
    }

    const Corner* cornerAt(std::uint32_t corner) const
    {
        const std::uint32_t number = m_cornerOfVertex[m_topology.cornerVertex(corner)];
        return number == kNone ? nullptr : &m_corners[number];
    }

    /// The place of a face's corner in the fan of its vertex.
    static std::size_t placeOf(const Corner& corner, std::uint32_t faceCorner)
    {
        return static_cast<std::size_t>(
            std::find(corner.fan.corners.begin(), corner.fan.corners.end(), faceCorner) -
            corner.fan.corners.begin());
    }

    /// The slots of a face's corner: on the edge that arrives, and on the one that leaves.
    std::pair<std::uint32_t, std::uint32_t> slotsOf(const Corner& corner,
                                                    std::uint32_t faceCorner) const
    {
        const std::size_t place = placeOf(corner, faceCorner);
        const std::size_t next = (place + 1) % corner.fan.edges.size();
        return {corner.before[next], corner.after[place]};
    }

    Vec3d motionOut(std::uint32_t faceCorner) const
    {
        const Corner* const corner = cornerAt(faceCorner);
        return corner != nullptr ? corner->slots[slotsOf(*corner, faceCorner).second].motion
                                 : Vec3d{};
    }
    Vec3d motionIn(std::uint32_t faceCorner) const
    {
        const Corner* const corner = cornerAt(faceCorner);
        return corner != nullptr ? corner->slots[slotsOf(*corner, faceCorner).first].motion
                                 : Vec3d{};
    }

    std::uint32_t addPoint(const Vec3d& place)
    {
        m_places.push_back(place);
        return m_rewriter.addPoint(toFloat(transformPoint(place, m_back)));
    }

    void placeSlots(double offset)
    {
        m_back = inverse(m_beveling.toSpace);
        m_firstPlace = static_cast<std::uint32_t>(m_rewriter.points().size());
        for (Corner& corner : m_corners) {
            for (Slot& slot : corner.slots) {
                slot.point = addPoint(m_points[corner.vertex] + slot.motion * offset);
            }
            makeRounds(corner);
        }
    }

    Vec3d placeOfPoint(std::uint32_t point) const
    {
        return point < m_firstPlace ? m_points[point] : m_places[point - m_firstPlace];
    }

    /// With one or two beveled edges one round serves all; it runs from the second slot to the
    /// first.
    void makeRounds(Corner& corner)
    {
        corner.rounds.resize(corner.fan.edges.size());
        const bool isShared = corner.beveledCount <= 2 && corner.slots.size() == 2;
        m_isExact = m_isExact && (isShared || corner.slots.size() == 2 || m_beveling.segments == 1);
        if (isShared) {
            const std::vector<std::uint32_t> round = makeRound(corner, 1, 0);
            for (std::size_t place = 0; place < corner.fan.edges.size(); ++place) {
                corner.rounds[place] = round;
                if (corner.before[place] == 0) {
                    std::reverse(corner.rounds[place].begin(), corner.rounds[place].end());
                }
            }
            return;
        }
        for (std::size_t place = 0; place < corner.fan.edges.size(); ++place) {
            if (isBeveledAt(corner, place)) {
                corner.rounds[place] = makeRound(corner, corner.before[place], corner.after[place]);
            }
        }
    }

    std::vector<std::uint32_t> makeRound(const Corner& corner, std::uint32_t from, std::uint32_t to)
    {
        std::vector<std::uint32_t> round;
        const Vec3d& tip = m_points[corner.vertex];
        for (std::uint32_t i = 1; i < m_beveling.segments; ++i) {
            round.push_back(addPoint(bevelArc(
                tip, placeOfPoint(corner.slots[from].point), placeOfPoint(corner.slots[to].point),
                static_cast<double>(i) / m_beveling.segments, m_beveling.depth)));
        }
        return round;
    }

    // --- edges

    void makeEdges()
    {
        for (const Corner& corner : m_corners) {
            m_hasChains = m_hasChains || corner.beveledCount > 1;
        }
        keepEdges();
        if (m_hasChains) {
            makeStripEdges();
        }
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (isTouched(face)) {
                makeFaceEdges(face);
            }
        }
        if (!m_hasChains) {
            makeStripEdges();
        }
    }

    /// Edges of vertices with one beveled edge at most only change their ends.
    void keepEdges()
    {
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            if (m_isBeveled[edge]) {
                continue;
            }
            MeshEdge& ends = m_rewriter.edges()[edge];
            const auto isChain = [&](std::uint32_t vertex) {
                return m_cornerOfVertex[vertex] != kNone &&
                       m_corners[m_cornerOfVertex[vertex]].beveledCount > 1;
            };
            if (isChain(ends.start) || isChain(ends.end)) {
                continue;
            }
            ends = {pointOn(ends.start, edge), pointOn(ends.end, edge)};
            m_edgeOfPair.emplace(pairOf(ends.start, ends.end), edge);
        }
    }

    /// The point that an edge has in place of one of its vertices.
    std::uint32_t pointOn(std::uint32_t vertex, std::uint32_t edge) const
    {
        if (m_cornerOfVertex[vertex] == kNone) {
            return vertex;
        }
        const Corner& corner = m_corners[m_cornerOfVertex[vertex]];
        const auto found = std::find(corner.fan.edges.begin(), corner.fan.edges.end(), edge);
        const auto place = static_cast<std::size_t>(found - corner.fan.edges.begin());
        return corner.slots[corner.before[place]].point;
    }

    void ensureEdge(std::uint32_t from, std::uint32_t to, std::uint32_t source)
    {
        const auto [entry, isNew] = m_edgeOfPair.try_emplace(pairOf(from, to), 0);
        if (!isNew) {
            return;
        }
        const bool isOld = source != kNoSource;
        entry->second =
            m_rewriter.addEdge(from, to, isOld && m_topology.edgeSmooth[source] != 0, source);
        if (!isOld) {
            markSmoothByAngle(m_rewriter, entry->second);
        }
    }

    std::int32_t referenceOf(std::uint32_t from, std::uint32_t to)
    {
        const auto found = m_edgeOfPair.find(pairOf(from, to));
        const std::uint32_t edge = found == m_edgeOfPair.end() ? 0 : found->second;
        return referenceTo(edge, m_rewriter.edges()[edge].start != from);
    }

    bool isTouched(std::uint32_t face) const
    {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            if (cornerAt(corner) != nullptr) {
                return true;
            }
        }
        return false;
    }

    /// The edges that a face has now, but for those across strips.
    void makeFaceEdges(std::uint32_t face)
    {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            const std::uint32_t next = m_links.next(corner);
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            const std::uint32_t from = lastPointOf(corner);
            const std::uint32_t to = firstPointOf(next);
            ensureEdge(from, to, m_isBeveled[edge] ? kNoSource : edge);
            const Corner* const end = cornerAt(next);
            if (end != nullptr && end->slots.size() > 2) {
                ensureEdge(to, lastPointOf(next), kNoSource);
            }
        }
    }

    std::uint32_t lastPointOf(std::uint32_t faceCorner) const
    {
        const Corner* const corner = cornerAt(faceCorner);
        return corner != nullptr ? corner->slots[slotsOf(*corner, faceCorner).second].point
                                 : m_topology.cornerVertex(faceCorner);
    }
    std::uint32_t firstPointOf(std::uint32_t faceCorner) const
    {
        const Corner* const corner = cornerAt(faceCorner);
        return corner != nullptr ? corner->slots[slotsOf(*corner, faceCorner).first].point
                                 : m_topology.cornerVertex(faceCorner);
    }

    /// The points across a strip at one of its ends, from the face on its left to the right one.
    std::vector<std::uint32_t> acrossAt(const Strip& strip, bool isStart) const
    {
        const Corner& corner = cornerOf(strip, isStart);
        const auto found = std::find(corner.fan.edges.begin(), corner.fan.edges.end(), strip.edge);
        const auto place = static_cast<std::size_t>(found - corner.fan.edges.begin());
        std::vector<std::uint32_t> points{corner.slots[corner.before[place]].point};
        points.insert(points.end(), corner.rounds[place].begin(), corner.rounds[place].end());
        points.push_back(corner.slots[corner.after[place]].point);
        // Counter-clockwise about its start an edge has its left face after it.
        if (isStart) {
            std::reverse(points.begin(), points.end());
        }
        return points;
    }

    void makeStripEdges()
    {
        for (const Strip& strip : m_strips) {
            const std::vector<std::uint32_t> start = acrossAt(strip, true);
            const std::vector<std::uint32_t> end = acrossAt(strip, false);
            for (std::size_t i = 0; i + 1 < start.size(); ++i) {
                ensureEdge(start[i], start[i + 1], kNoSource);
                ensureEdge(start[i + 1], end[i + 1], kNoSource);
                ensureEdge(end[i + 1], end[i], kNoSource);
                ensureEdge(end[i], start[i], kNoSource);
            }
        }
    }

    // --- faces

    /// A point of a loop that is written, with texture coordinates.
    struct Written {
        std::uint32_t point = 0;
        std::vector<std::int32_t> uvs;
    };

    void writeFaces()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (!isTouched(face)) {
                m_rewriter.copyFace(face);
            }
        }
        if (!m_hasChains) {
            writeTouchedInOrder();
        }
        for (const Strip& strip : m_strips) {
            writeStrip(strip);
        }
        if (m_hasChains) {
            writeTouchedBySides();
            writeTouchedInOrder();
        }
        for (const Corner& corner : m_corners) {
            if (corner.slots.size() > 2) {
                writeCorner(corner);
            }
        }
    }

    void writeOnce(std::uint32_t face)
    {
        if (!m_isWritten[face]) {
            m_isWritten[face] = true;
            writeTouched(face);
        }
    }

    void writeTouchedInOrder()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (isTouched(face)) {
                writeOnce(face);
            }
        }
    }

    /// Those on the left of the strips, then those on the right.
    void writeTouchedBySides()
    {
        for (const Strip& strip : m_strips) {
            writeOnce(m_links.face(sidesOf(strip).first));
        }
        for (const Strip& strip : m_strips) {
            writeOnce(m_links.face(sidesOf(strip).second));
        }
    }

    /// The corners from which the faces beside a strip walk along its edge.
    std::pair<std::uint32_t, std::uint32_t> sidesOf(const Strip& strip) const
    {
        const std::uint32_t first = m_cornersOfEdges.of(strip.edge)[0];
        const std::uint32_t second = m_cornersOfEdges.of(strip.edge)[1];
        const bool isFirstLeft = (m_topology.corners[first] < 0) == strip.isBackwards;
        return isFirstLeft ? std::pair(first, second) : std::pair(second, first);
    }

    void writeLoop(std::span<const Written> loop)
    {
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Written& next = loop[i + 1 < loop.size() ? i + 1 : 0];
            m_rewriter.addCorner(referenceOf(loop[i].point, next.point), loop[i].uvs);
        }
        m_rewriter.endLoop();
    }

    void writeTouched(std::uint32_t face)
    {
        m_rewriter.beginFace(face);
        std::vector<Written> loop;
        for (std::uint32_t number = m_topology.firstLoop(face);
             number < m_topology.firstLoop(face + 1); ++number) {
            loop.clear();
            for (std::uint32_t corner = m_topology.loopStart[number];
                 corner < m_topology.loopStart[number + 1]; ++corner) {
                addPointsOf(corner, loop);
            }
            writeLoop(loop);
        }
        m_rewriter.endFace();
    }

    void addPointsOf(std::uint32_t faceCorner, std::vector<Written>& loop)
    {
        const Corner* const corner = cornerAt(faceCorner);
        if (corner == nullptr) {
            Written written{m_topology.cornerVertex(faceCorner), {}};
            for (std::size_t set = 0; set < m_uvCopies.size(); ++set) {
                written.uvs.push_back(m_rewriter.uvId(set, faceCorner));
            }
            loop.push_back(std::move(written));
            return;
        }
        const auto [in, out] = slotsOf(*corner, faceCorner);
        addPoint(faceCorner, corner->slots[in].point, loop);
        if (in == out) {
            return;
        }
        if (corner->slots.size() == 2) {
            // The end of a strip; all rounds of the corner are the same, this way or that.
            std::vector<std::uint32_t> round = corner->rounds[0];
            if (corner->before[0] != in) {
                std::reverse(round.begin(), round.end());
            }
            for (const std::uint32_t point : round) {
                addPoint(faceCorner, point, loop);
            }
        }
        addPoint(faceCorner, corner->slots[out].point, loop);
    }

    void addPoint(std::uint32_t faceCorner, std::uint32_t point, std::vector<Written>& loop)
    {
        loop.push_back({point, uvsAt(faceCorner, point)});
    }

    /// Texture coordinates that a face has at a point near one of its corners.
    std::vector<std::int32_t> uvsAt(std::uint32_t faceCorner, std::uint32_t point)
    {
        std::vector<std::int32_t> ids(m_uvCopies.size(), -1);
        const auto [along, back] = partsOf(faceCorner, placeOfPoint(point));
        for (std::size_t set = 0; set < ids.size(); ++set) {
            const std::int32_t here = m_rewriter.uvId(set, faceCorner);
            const std::int32_t next = m_rewriter.uvId(set, m_links.next(faceCorner));
            const std::int32_t last = m_rewriter.uvId(set, m_links.previous(faceCorner));
            if (here < 0 || next < 0 || last < 0) {
                continue;
            }
            const Vec2f a = uvPoint(set, here);
            const Vec2f b = uvPoint(set, next);
            const Vec2f c = uvPoint(set, last);
            const double x = a.x + along * (double{b.x} - a.x) + back * (double{c.x} - a.x);
            const double y = a.y + along * (double{b.y} - a.y) + back * (double{c.y} - a.y);
            ids[set] = uvCopy(set, point, {static_cast<float>(x), static_cast<float>(y)});
        }
        return ids;
    }

    Vec2f uvPoint(std::size_t set, std::int32_t id)
    {
        return m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
    }

    /// One id for all that have the same place at a point.
    std::int32_t uvCopy(std::size_t set, std::uint32_t point, const Vec2f& place)
    {
        constexpr float kSame = 1e-6F;
        std::vector<std::int32_t>& copies = m_uvCopies[set][point];
        for (const std::int32_t id : copies) {
            const Vec2f other = uvPoint(set, id);
            if (std::fabs(other.x - place.x) <= kSame && std::fabs(other.y - place.y) <= kSame) {
                return id;
            }
        }
        copies.push_back(m_rewriter.addUv(set, place));
        return copies.back();
    }

    /// A point as parts of the ways from a face's corner to the next one and to the last one.
    std::pair<double, double> partsOf(std::uint32_t faceCorner, const Vec3d& place) const
    {
        const Vec3d& tip = m_points[m_topology.cornerVertex(faceCorner)];
        const Vec3d a = m_points[m_topology.cornerVertex(m_links.next(faceCorner))] - tip;
        const Vec3d b = m_points[m_topology.cornerVertex(m_links.previous(faceCorner))] - tip;
        const Vec3d way = place - tip;
        const double aa = dot(a, a);
        const double bb = dot(b, b);
        const double ab = dot(a, b);
        const double determinant = aa * bb - ab * ab;
        if (!(determinant > kLeastSine * kLeastSine * aa * bb)) {
            return {0, 0};
        }
        return {(dot(way, a) * bb - dot(way, b) * ab) / determinant,
                (dot(way, b) * aa - dot(way, a) * ab) / determinant};
    }

    void writeStrip(const Strip& strip)
    {
        const std::vector<std::uint32_t> start = acrossAt(strip, true);
        const std::vector<std::uint32_t> end = acrossAt(strip, false);
        const auto [left, right] = sidesOf(strip);
        const auto startUvs = uvsAcross(start, left, m_links.next(right));
        const auto endUvs = uvsAcross(end, m_links.next(left), right);
        for (std::size_t i = 0; i + 1 < start.size(); ++i) {
            const std::array<Written, 4> loop{
                Written{end[i + 1], endUvs[i + 1]}, Written{end[i], endUvs[i]},
                Written{start[i], startUvs[i]}, Written{start[i + 1], startUvs[i + 1]}};
            m_rewriter.beginFace(m_links.face(left));
            writeLoop(loop);
            m_rewriter.endFace();
        }
    }

    /// From the face on the left to that on the right, evenly.
    std::vector<std::vector<std::int32_t>> uvsAcross(std::span<const std::uint32_t> points,
                                                     std::uint32_t left, std::uint32_t right)
    {
        const std::vector<std::int32_t> first = uvsAt(left, points.front());
        const std::vector<std::int32_t> last = uvsAt(right, points.back());
        std::vector<std::vector<std::int32_t>> across(points.size(), first);
        across.back() = last;
        for (std::size_t i = 1; i + 1 < points.size(); ++i) {
            const double part = static_cast<double>(i) / static_cast<double>(points.size() - 1);
            for (std::size_t set = 0; set < first.size(); ++set) {
                if (first[set] < 0 || last[set] < 0) {
                    across[i][set] = -1;
                    continue;
                }
                const Vec2f a = uvPoint(set, first[set]);
                const Vec2f b = uvPoint(set, last[set]);
                across[i][set] = uvCopy(set, points[i],
                                        {static_cast<float>(a.x + part * (double{b.x} - a.x)),
                                         static_cast<float>(a.y + part * (double{b.y} - a.y))});
            }
        }
        return across;
    }

    /// The face in a corner where strips meet.
    void writeCorner(const Corner& corner)
    {
        std::vector<Written> loop;
        const std::size_t count = corner.fan.edges.size();
        for (std::size_t place = 0; place < count; ++place) {
            const std::uint32_t here = corner.fan.corners[(place + count - 1) % count];
            const auto add = [&](std::uint32_t point) {
                if (loop.empty() || loop.back().point != point) {
                    addPoint(here, point, loop);
                }
            };
            add(corner.slots[corner.before[place]].point);
            for (const std::uint32_t point : corner.rounds[place]) {
                add(point);
            }
            add(corner.slots[corner.after[place]].point);
        }
        if (loop.size() > 1 && loop.back().point == loop.front().point) {
            loop.pop_back();
        }
        m_rewriter.beginFace(m_links.face(corner.fan.corners.front()));
        writeLoop(loop);
        m_rewriter.endFace();
    }

    const MeshTopology& m_topology;
    const Beveling& m_beveling;
    MeshRewriter m_rewriter;
    CornerLinks m_links;
    NumberLists m_cornersOfEdges;
    NumberLists m_cornersOfVertices;
    std::vector<Vec3d> m_points;
    std::vector<bool> m_isBeveled;
    std::vector<bool> m_isWritten; ///< touched faces
    std::vector<std::uint32_t> m_edges;
    std::vector<Strip> m_strips;
    bool m_hasChains = false; ///< vertices with several beveled edges
    std::vector<std::uint32_t> m_cornerOfVertex;
    std::vector<Corner> m_corners;
    std::vector<Vec3d> m_places; ///< of the new points, in the space
    std::uint32_t m_firstPlace = 0;
    Matrix4 m_back;
    std::unordered_map<std::uint64_t, std::uint32_t> m_edgeOfPair;
    std::vector<std::unordered_map<std::uint32_t, std::vector<std::int32_t>>> m_uvCopies;
    bool m_isExact = true;
};

} // namespace

Beveled bevelEdges(const MeshData& mesh, std::span<const std::uint32_t> edges,
                   const Beveling& beveling)
{
    return EdgeBeveler(mesh, beveling).run(edges);
}

} // namespace host::geometry
