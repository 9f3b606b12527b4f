#include "host/geometry/mesh/edit/bevelEdges.h"

#include "host/geometry/mesh/edit/BevelCorners.h"
#include "host/geometry/mesh/edit/BevelPoints.h"
#include "host/geometry/mesh/edit/BevelUvs.h"
#include "host/geometry/mesh/edit/EdgeTable.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/bevelStrips.h"
#include "host/geometry/mesh/edit/edgeSmoothness.h"
#include "host/geometry/mesh/edit/faceFrame.h"

#include <algorithm>
#include <array>

namespace host::geometry {
namespace {

/// Writes the mesh, once its corners and points are made.
class BevelWriter {
public:
    BevelWriter(MeshRewriter& rewriter, const CornerLinks& links, const NumberLists& cornersOfEdges,
                std::span<const Vec3d> pointsBefore, const BevelCorners& corners,
                const BevelPoints& points, std::span<const std::uint32_t> edges,
                const std::vector<bool>& isBeveled, std::size_t edgeCount)
        : m_topology(*rewriter.before().topology)
        , m_rewriter(rewriter)
        , m_links(links)
        , m_cornersOfEdges(cornersOfEdges)
        , m_corners(corners)
        , m_points(points)
        , m_strips(orderStrips(m_topology, edges))
        , m_isBeveled(isBeveled)
        , m_edgeCount(edgeCount)
        , m_uvs(rewriter, links, pointsBefore, points.count())
        , m_table(points.count())
        , m_sideEdge(m_topology.corners.size(), kNone)
        , m_isTouched(m_topology.faceCount())
        , m_isWritten(m_topology.faceCount())
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            m_isTouched[face] = isTouched(face);
        }
    }

    void run()
    {
        makeEdges();
        writeFaces();
    }

private:
    // --- edges

    void makeEdges()
    {
        m_table.reserve(m_edgeCount);
        const auto all = m_corners.all();
        m_hasChains = std::any_of(all.begin(), all.end(), isChain);
        keepEdges();
        if (m_hasChains) {
            makeStripEdges();
        }
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (m_isTouched[face]) {
                makeFaceEdges(face);
            }
        }
        if (!m_hasChains) {
            makeStripEdges();
        }
    }

    static bool isChain(const BevelCorner& corner) { return corner.beveledCount > 1; }

    /// Edges of vertices with one beveled edge at most only change their ends.
    void keepEdges()
    {
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            MeshEdge& ends = m_rewriter.edges()[edge];
            const BevelCorner* const start = m_corners.ofVertex(ends.start);
            const BevelCorner* const end = m_corners.ofVertex(ends.end);
            if (m_isBeveled[edge] || (start != nullptr && isChain(*start)) ||
                (end != nullptr && isChain(*end))) {
                continue;
            }
            ends = {start != nullptr ? pointOn(*start, edge) : ends.start,
                    end != nullptr ? pointOn(*end, edge) : ends.end};
            if (m_table.find(ends.start, ends.end) == kNone) {
                m_table.add(ends.start, ends.end, edge);
            }
        }
    }

    /// The point that an edge has in place of one of its vertices.
    std::uint32_t pointOn(const BevelCorner& corner, std::uint32_t edge) const
    {
        return pointAt(corner, m_corners.before(corner, m_corners.placeOfEdge(corner, edge)));
    }
    std::uint32_t pointAt(const BevelCorner& corner, std::uint32_t slot) const
    {
        return m_corners.point(corner, slot);
    }

    /// The edge between two points, which may be new.
    std::uint32_t ensureEdge(std::uint32_t from, std::uint32_t to, std::uint32_t source)
    {
        if (const std::uint32_t known = m_table.find(from, to); known != kNone) {
            return known;
        }
        const bool isOld = source != kNoSource;
        const std::uint32_t edge =
            m_rewriter.addEdge(from, to, isOld && m_rewriter.before().isSmooth(source), source);
        if (m_rewriter.isFull()) { // the number is not that of a new edge
            return edge;
        }
        m_table.add(from, to, edge);
        if (!isOld) {
            markSmoothByAngle(m_rewriter, edge);
        }
        return edge;
    }

    /// `known`: the edge between them, or kNone where it is to be looked for.
    std::int32_t referenceOf(std::uint32_t from, std::uint32_t to, std::uint32_t known) const
    {
        const std::uint32_t found = known != kNone ? known : m_table.find(from, to);
        const std::uint32_t edge = found == kNone ? 0 : found;
        return referenceTo(edge, m_rewriter.edges()[edge].start != from);
    }

    bool isTouched(std::uint32_t face) const
    {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            if (m_corners.at(corner) != nullptr) {
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
            const std::uint32_t to = firstPointOf(next);
            m_sideEdge[corner] =
                ensureEdge(lastPointOf(corner), to, m_isBeveled[edge] ? kNoSource : edge);
            const BevelCorner* const end = m_corners.at(next);
            if (end != nullptr && end->slotCount > 2) {
                ensureEdge(to, lastPointOf(next), kNoSource);
            }
        }
    }

    std::uint32_t lastPointOf(std::uint32_t faceCorner) const
    {
        const BevelCorner* const corner = m_corners.at(faceCorner);
        return corner != nullptr ? pointAt(*corner, m_corners.slotsAt(*corner, faceCorner).second)
                                 : m_topology.cornerVertex(faceCorner);
    }
    std::uint32_t firstPointOf(std::uint32_t faceCorner) const
    {
        const BevelCorner* const corner = m_corners.at(faceCorner);
        return corner != nullptr ? pointAt(*corner, m_corners.slotsAt(*corner, faceCorner).first)
                                 : m_topology.cornerVertex(faceCorner);
    }

    void makeStripEdges()
    {
        m_stripEdges.reserve(m_strips.size());
        for (const BevelStrip& strip : m_strips) {
            takeStrip(strip);
            for (std::size_t i = 0; i + 1 < m_start.size(); ++i) {
                const std::uint32_t atStart = ensureEdge(m_start[i], m_start[i + 1], kNoSource);
                const std::uint32_t right = ensureEdge(m_start[i + 1], m_end[i + 1], kNoSource);
                const std::uint32_t atEnd = ensureEdge(m_end[i + 1], m_end[i], kNoSource);
                const std::uint32_t left = ensureEdge(m_end[i], m_start[i], kNoSource);
                m_stripEdges.push_back({atEnd, left, atStart, right});
            }
        }
    }

    /// The points across both ends of a strip, from its left to its right as it is walked.
    void takeStrip(const BevelStrip& strip)
    {
        const MeshEdge& ends = m_topology.edges[strip.edge];
        m_points.across(ends, strip.edge, !strip.isBackwards, m_start);
        m_points.across(ends, strip.edge, strip.isBackwards, m_end);
        if (strip.isBackwards) {
            std::reverse(m_start.begin(), m_start.end());
            std::reverse(m_end.begin(), m_end.end());
        }
    }

    /// The corners from which the faces beside a strip walk along its edge: left and right.
    std::pair<std::uint32_t, std::uint32_t> sidesOf(const BevelStrip& strip) const
    {
        const std::uint32_t first = m_cornersOfEdges.of(strip.edge)[0];
        const std::uint32_t second = m_cornersOfEdges.of(strip.edge)[1];
        const bool isFirstLeft = (m_topology.corners[first] < 0) == strip.isBackwards;
        return isFirstLeft ? std::pair(first, second) : std::pair(second, first);
    }

    // --- faces

    void writeFaces()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (!m_isTouched[face]) {
                m_rewriter.copyFace(face);
            }
        }
        if (!m_hasChains) {
            writeTouchedInOrder();
        }
        for (const BevelStrip& strip : m_strips) {
            writeStrip(strip);
        }
        if (m_hasChains) {
            writeTouchedBySides();
            writeTouchedInOrder();
        }
        for (const BevelCorner& corner : m_corners.all()) {
            if (corner.slotCount > 2) {
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
            if (m_isTouched[face]) {
                writeOnce(face);
            }
        }
    }

    /// Those on the left of the strips, then those on the right.
    void writeTouchedBySides()
    {
        for (const BevelStrip& strip : m_strips) {
            writeOnce(m_links.face(sidesOf(strip).first));
        }
        for (const BevelStrip& strip : m_strips) {
            writeOnce(m_links.face(sidesOf(strip).second));
        }
    }

    // The loop that is being made: points, the edge that leaves each where it is known, and for
    // each an id of every uv set.

    void beginLoop()
    {
        m_loop.clear();
        m_loopEdges.clear();
        m_loopUvs.clear();
    }
    std::span<std::int32_t> addToLoop(std::uint32_t point)
    {
        m_loop.push_back(point);
        m_loopEdges.push_back(kNone);
        m_loopUvs.resize(m_loop.size() * m_uvs.setCount());
        return uvsInLoop(m_loop.size() - 1);
    }
    std::span<std::int32_t> uvsInLoop(std::size_t place)
    {
        return std::span(m_loopUvs).subspan(place * m_uvs.setCount(), m_uvs.setCount());
    }
    void addPoint(std::uint32_t faceCorner, std::uint32_t point)
    {
        const Vec3d place = m_points.place(point);
        m_uvs.near(faceCorner, point, place, addToLoop(point));
    }
    void writeLoop()
    {
        for (std::size_t i = 0; i < m_loop.size(); ++i) {
            const std::uint32_t next = m_loop[i + 1 < m_loop.size() ? i + 1 : 0];
            m_rewriter.addCorner(referenceOf(m_loop[i], next, m_loopEdges[i]), uvsInLoop(i));
        }
        m_rewriter.endLoop();
    }

    void writeTouched(std::uint32_t face)
    {
        m_rewriter.beginFace(face);
        for (std::uint32_t number = m_topology.firstLoop(face);
             number < m_topology.firstLoop(face + 1); ++number) {
            beginLoop();
            for (std::uint32_t corner = m_topology.loopStart[number];
                 corner < m_topology.loopStart[number + 1]; ++corner) {
                addPointsOf(corner);
                m_loopEdges.back() = m_sideEdge[corner];
            }
            writeLoop();
        }
        m_rewriter.endFace();
    }

    void addPointsOf(std::uint32_t faceCorner)
    {
        const BevelCorner* const corner = m_corners.at(faceCorner);
        if (corner == nullptr) {
            m_uvs.keep(faceCorner, addToLoop(m_topology.cornerVertex(faceCorner)));
            return;
        }
        const auto [in, out] = m_corners.slotsAt(*corner, faceCorner);
        addPoint(faceCorner, pointAt(*corner, in));
        if (in == out) {
            return;
        }
        if (corner->hasOneRound()) { // the end of a strip
            m_round.clear();
            m_points.addRound(*corner, 0, in, m_round);
            for (const std::uint32_t point : m_round) {
                addPoint(faceCorner, point);
            }
        }
        addPoint(faceCorner, pointAt(*corner, out));
    }

    void writeStrip(const BevelStrip& strip)
    {
        takeStrip(strip);
        const auto [left, right] = sidesOf(strip);
        findUvsAcross(m_start, left, m_links.next(right), m_startUvs);
        findUvsAcross(m_end, m_links.next(left), right, m_endUvs);
        for (std::size_t i = 0; i + 1 < m_start.size(); ++i) {
            m_rewriter.beginFace(m_links.face(left));
            beginLoop();
            addAcross(m_end, m_endUvs, i + 1);
            addAcross(m_end, m_endUvs, i);
            addAcross(m_start, m_startUvs, i);
            addAcross(m_start, m_startUvs, i + 1);
            const auto& edges = m_stripEdges[m_writtenStrips++];
            m_loopEdges.assign(edges.begin(), edges.end());
            writeLoop();
            m_rewriter.endFace();
        }
    }

    void addAcross(std::span<const std::uint32_t> points, std::span<const std::int32_t> uvs,
                   std::size_t i)
    {
        const auto ids = uvs.subspan(i * m_uvs.setCount(), m_uvs.setCount());
        std::copy(ids.begin(), ids.end(), addToLoop(points[i]).begin());
    }

    /// From the face on the left to that on the right, evenly.
    void findUvsAcross(std::span<const std::uint32_t> points, std::uint32_t left,
                       std::uint32_t right, std::vector<std::int32_t>& across)
    {
        const std::size_t sets = m_uvs.setCount();
        const std::size_t last = points.size() - 1;
        across.resize(points.size() * sets);
        const auto at = [&](std::size_t i) { return std::span(across).subspan(i * sets, sets); };
        m_uvs.near(left, points.front(), m_points.place(points.front()), at(0));
        m_uvs.near(right, points.back(), m_points.place(points.back()), at(last));
        for (std::size_t i = 1; i < last; ++i) {
            const double part = static_cast<double>(i) / static_cast<double>(last);
            m_uvs.between(at(0), at(last), part, points[i], at(i));
        }
    }

    /// The face in a corner where strips meet.
    void writeCorner(const BevelCorner& corner)
    {
        beginLoop();
        const std::uint32_t count = corner.edgeCount;
        for (std::uint32_t place = 0; place < count; ++place) {
            const std::uint32_t before = m_corners.before(corner, place);
            m_round.assign(1, pointAt(corner, before));
            m_points.addRound(corner, place, before, m_round);
            m_round.push_back(pointAt(corner, m_corners.after(corner, place)));
            const std::uint32_t here = m_corners.faceCorner(corner, (place + count - 1) % count);
            for (const std::uint32_t point : m_round) {
                if (m_loop.empty() || m_loop.back() != point) {
                    addPoint(here, point);
                }
            }
        }
        if (m_loop.size() > 1 && m_loop.back() == m_loop.front()) {
            m_loop.pop_back();
        }
        m_rewriter.beginFace(m_links.face(m_corners.faceCorner(corner, 0)));
        writeLoop();
        m_rewriter.endFace();
    }

    const MeshTopology& m_topology;
    MeshRewriter& m_rewriter;
    const CornerLinks& m_links;
    const NumberLists& m_cornersOfEdges;
    const BevelCorners& m_corners;
    const BevelPoints& m_points;
    std::vector<BevelStrip> m_strips;
    bool m_hasChains = false; ///< vertices with several beveled edges
    const std::vector<bool>& m_isBeveled;
    std::size_t m_edgeCount; ///< about as many as there will be
    BevelUvs m_uvs;
    EdgeTable m_table;                     ///< of the edges that there are now
    std::vector<std::uint32_t> m_sideEdge; ///< by corner of a touched face: to the next corner
    std::vector<std::array<std::uint32_t, 4>> m_stripEdges; ///< of each face, as its loop goes
    std::size_t m_writtenStrips = 0;                        ///< faces of strips
    std::vector<bool> m_isTouched;
    std::vector<bool> m_isWritten;
    std::vector<std::uint32_t> m_start; ///< the points across the ends of one strip
    std::vector<std::uint32_t> m_end;
    std::vector<std::int32_t> m_startUvs;
    std::vector<std::int32_t> m_endUvs;
    std::vector<std::uint32_t> m_round;
    std::vector<std::uint32_t> m_loop;
    std::vector<std::uint32_t> m_loopEdges;
    std::vector<std::int32_t> m_loopUvs;
};

/// Memory for what comes of the edges and corners: each segment of a strip is a face, each corner
/// of more than two slots is one. Returns the edges that there will be.
std::size_t reserve(MeshRewriter& rewriter, const BevelCorners& corners, std::size_t edgeCount,
                    std::size_t segments)
{
    const MeshTopology& topology = *rewriter.before().topology;
    std::size_t slots = 0;
    std::size_t cornerFaces = 0;
    for (const BevelCorner& corner : corners.all()) {
        slots += corner.slotCount;
        cornerFaces += corner.slotCount > 2 ? 1 : 0;
    }
    const std::size_t strips = edgeCount * segments;
    const std::size_t points = slots + 2 * (strips - edgeCount);
    const std::size_t edgesAfter = topology.edges.size() + strips + edgeCount + points;
    rewriter.reserve(topology.vertexCount + points, edgesAfter,
                     topology.faceCount() + strips + cornerFaces,
                     topology.corners.size() + 4 * strips + points);
    rewriter.reserveUvs(points);
    return edgesAfter;
}

} // namespace

Beveled bevelEdges(const MeshData& mesh, std::span<const std::uint32_t> edges,
                   const Beveling& beveling)
{
    const MeshTopology& topology = *mesh.topology;
    NumberLists cornersOf = cornersOfEdges(topology);
    std::vector<bool> isBeveled(topology.edges.size());
    std::vector<std::uint32_t> beveled;
    for (const std::uint32_t edge : edges) {
        if (cornersOf.of(edge).size() == 2) {
            isBeveled[edge] = true;
            beveled.push_back(edge);
        }
    }
    Beveled result;
    if (beveled.empty()) {
        result.mesh = std::make_shared<const MeshData>(mesh);
        return result;
    }
    MeshRewriter rewriter(mesh);
    {
        const CornerLinks links(topology);
        const std::vector<Vec3d> points = pointsInSpace(mesh, beveling.toSpace);
        BevelCorners corners(topology, links, points, isBeveled);
        if (beveled.size() * std::size_t{beveling.segments} > kMaxBevelFaces ||
            !corners.make(beveled)) {
            return result;
        }
        const std::size_t edgeCount = reserve(rewriter, corners, beveled.size(), beveling.segments);
        const BevelPoints places(beveling, points, corners, rewriter);
        BevelWriter(rewriter, links, cornersOf, points, corners, places, beveled, isBeveled,
                    edgeCount)
            .run();
        result.isExact = places.areExact();
    }
    cornersOf = {};
    result.mesh = withSmoothEdges(rewriter.finish({.edges = true, .points = true, .uvs = true}),
                                  beveling.smoothingAngle);
    return result;
}

} // namespace host::geometry
