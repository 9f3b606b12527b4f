#include "host/geometry/mesh/edit/reduceMesh.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/triangulateFaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <queue>
#include <unordered_map>
#include <vector>

namespace host::geometry {
namespace {

/// How much more the upright plane on a border counts than a face beside it.
constexpr double kBorderWeight = 10;
constexpr double kKeptBorderWeight = 1000;
/// The least cosine between a triangle before and after.
constexpr double kLeastTurn = .1;
/// Triangles round a vertex beyond which nothing is drawn into it any more.
constexpr std::size_t kMostRound = 256;

/// The sum of weighted squared distances from planes, as a symmetric form of four dimensions.
struct Quadric {
    std::array<double, 10> values{};

    void add(const Quadric& other)
    {
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] += other.values[i];
        }
    }
    void addPlane(const Vec3d& normal, double offset, double weight)
    {
        const std::array<double, 4> n{normal.x, normal.y, normal.z, offset};
        std::size_t place = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = i; j < 4; ++j) {
                values[place++] += weight * n[i] * n[j];
            }
        }
    }
    double at(const Vec3d& point) const
    {
        const std::array<double, 4> p{point.x, point.y, point.z, 1};
        double sum = 0;
        std::size_t place = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = i; j < 4; ++j) {
                sum += (i == j ? 1 : 2) * values[place++] * p[i] * p[j];
            }
        }
        return sum;
    }
};

/// A vertex that may be drawn into a neighbour.
struct Collapse {
    double cost = 0;
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    std::uint32_t stamp = 0; ///< of both vertices together when it was found

    bool operator>(const Collapse& other) const
    {
        return cost != other.cost   ? cost > other.cost
               : from != other.from ? from > other.from
                                    : to > other.to;
    }
};

class Reducer {
public:
    /// `isReduced`: by face of the mesh; those faces are triangles.
    Reducer(const MeshData& mesh, const std::vector<bool>& isReduced, const Reduction& reduction)
        : m_mesh(mesh)
        , m_topology(*mesh.topology)
        , m_reduction(reduction)
        , m_isReduced(isReduced)
        , m_quadrics(m_topology.vertexCount)
        , m_first(m_topology.vertexCount, kNone)
        , m_stamps(m_topology.vertexCount)
        , m_isFixed(m_topology.vertexCount)
        , m_isBlocked(m_topology.vertexCount)
        , m_isGone(m_topology.faceCount())
        , m_vertices(m_topology.corners.size())
        , m_next(m_topology.corners.size(), kNone)
        , m_uvs(mesh.uvSets.size())
        , m_mark(m_topology.vertexCount)
    {
        for (std::uint32_t corner = 0; corner < m_topology.corners.size(); ++corner) {
            m_vertices[corner] = m_topology.cornerVertex(corner);
        }
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            if (mesh.uvSets[set].corners != nullptr) {
                m_uvs[set] = *mesh.uvSets[set].corners;
            }
        }
    }

    std::shared_ptr<const MeshData> run()
    {
        linkCorners();
        fixVertices();
        addPlanes();
        std::uint32_t faces = countReduced();
        std::uint32_t vertices = m_topology.vertexCount;
        for (std::uint32_t vertex = 0; vertex < m_topology.vertexCount; ++vertex) {
            findCollapses(vertex);
        }
        while (!m_queue.empty() && faces > m_reduction.triangles &&
               vertices > m_reduction.vertices) {
            const Collapse best = m_queue.top();
            m_queue.pop();
            if (best.stamp != m_stamps[best.from] + m_stamps[best.to]) {
                continue;
            }
            if (isPossible(best)) {
                faces -= drawIn(best);
                --vertices;
            } else {
                m_isBlocked[best.from] = true;
            }
        }
        return write();
    }

private:
    // --- the mesh as triangles round vertices

    std::uint32_t faceOf(std::uint32_t corner) const { return m_faceOfCorner[corner]; }

    void linkCorners()
    {
        m_faceOfCorner.resize(m_topology.corners.size());
        for (std::uint32_t face = m_topology.faceCount(); face-- > 0;) {
            const std::uint32_t first = m_topology.firstCorner(face);
            for (std::uint32_t corner = m_topology.endCorner(face); corner-- > first;) {
                m_faceOfCorner[corner] = face;
                m_next[corner] = m_first[m_vertices[corner]];
                m_first[m_vertices[corner]] = corner;
            }
        }
    }

    std::uint32_t countReduced() const
    {
        return static_cast<std::uint32_t>(std::count(m_isReduced.begin(), m_isReduced.end(), true));
    }

    /// Vertices of other faces stay, and those of edges with more than two faces.
    void fixVertices()
    {
        for (std::uint32_t corner = 0; corner < m_topology.corners.size(); ++corner) {
            if (!m_isReduced[faceOf(corner)]) {
                m_isFixed[m_vertices[corner]] = true;
            }
        }
        const NumberLists corners = cornersOfEdges(m_topology);
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            const std::size_t faces = corners.of(edge).size();
            const MeshEdge& ends = m_topology.edges[edge];
            if (faces > 2) {
                m_isFixed[ends.start] = m_isFixed[ends.end] = true;
            }
            if (faces == 1) {
                addBorder(edge, faceOf(corners.of(edge)[0]),
                          m_reduction.keepsBorders ? kKeptBorderWeight : kBorderWeight);
            } else if (m_reduction.keepsHardEdges && !m_mesh.isSmooth(edge)) {
                for (const std::uint32_t corner : corners.of(edge)) {
                    addBorder(edge, faceOf(corner), kBorderWeight);
                }
            }
        }
    }

    Vec3d pointAt(std::uint32_t vertex) const { return toDouble((*m_mesh.points)[vertex]); }

    /// The corners of the triangle of a corner, from it on.
    std::array<std::uint32_t, 3> triangleAt(std::uint32_t corner) const
    {
        const std::uint32_t first = m_topology.firstCorner(faceOf(corner));
        const std::uint32_t place = corner - first;
        return {corner, first + (place + 1) % 3, first + (place + 2) % 3};
    }

    /// Twice the area, in the direction of the normal.
    Vec3d areaOf(const std::array<std::uint32_t, 3>& vertices) const
    {
        const Vec3d origin = pointAt(vertices[0]);
        return cross(pointAt(vertices[1]) - origin, pointAt(vertices[2]) - origin);
    }

    Vec3d areaOfFace(std::uint32_t face) const
    {
        const std::uint32_t first = m_topology.firstCorner(face);
        return m_topology.endCorner(face) - first < 3
                   ? Vec3d{}
                   : areaOf({m_vertices[first], m_vertices[first + 1], m_vertices[first + 2]});
    }

    void addPlane(std::uint32_t vertex, const Vec3d& normal, const Vec3d& point, double weight)
    {
        if (std::isfinite(weight)) {
            m_quadrics[vertex].addPlane(normal, -dot(normal, point), weight);
        }
    }

    void addPlanes()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            const Vec3d area = areaOfFace(face);
            const double size = length(area);
            if (!m_isReduced[face] || !(size > 0)) {
                continue;
            }
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 corner < m_topology.endCorner(face); ++corner) {
                const std::uint32_t vertex = m_vertices[corner];
                addPlane(vertex, area * (1 / size), pointAt(vertex), size);
            }
        }
    }

    void addBorder(std::uint32_t edge, std::uint32_t face, double weight)
    {
        const MeshEdge& ends = m_topology.edges[edge];
        const Vec3d way = pointAt(ends.end) - pointAt(ends.start);
        const Vec3d across = cross(way, areaOfFace(face));
        const double size = length(across);
        if (size > 0) {
            for (const std::uint32_t vertex : {ends.start, ends.end}) {
                addPlane(vertex, across * (1 / size), pointAt(vertex), weight * dot(way, way));
            }
        }
    }

    // --- collapses

    void findCollapses(std::uint32_t vertex)
    {
        for (std::uint32_t corner = m_first[vertex]; corner != kNone; corner = m_next[corner]) {
            if (m_isGone[faceOf(corner)] || !m_isReduced[faceOf(corner)]) {
                continue;
            }
            const auto triangle = triangleAt(corner);
            for (const std::size_t other : {std::size_t{1}, std::size_t{2}}) {
                const std::uint32_t neighbour = m_vertices[triangle[other]];
                offer(vertex, neighbour);
                offer(neighbour, vertex);
            }
        }
    }

    void offer(std::uint32_t from, std::uint32_t to)
    {
        if (m_isFixed[from] || from == to) {
            return;
        }
        Quadric both = m_quadrics[from];
        both.add(m_quadrics[to]);
        const double cost = both.at(pointAt(to));
        if (std::isfinite(cost)) {
            m_queue.push({cost, from, to, m_stamps[from] + m_stamps[to]});
        }
    }

    /// Corners of living triangles at a vertex.
    void takeRound(std::uint32_t vertex, std::vector<std::uint32_t>& round) const
    {
        round.clear();
        for (std::uint32_t corner = m_first[vertex]; corner != kNone; corner = m_next[corner]) {
            if (!m_isGone[faceOf(corner)]) {
                round.push_back(corner);
            }
        }
    }

    /// The corner of a triangle at which `vertex` stands; none where it does not.
    std::uint32_t cornerWith(std::uint32_t corner, std::uint32_t vertex) const
    {
        for (const std::uint32_t other : triangleAt(corner)) {
            if (m_vertices[other] == vertex) {
                return other;
            }
        }
        return kNone;
    }

    bool isPossible(const Collapse& collapse)
    {
        takeRound(collapse.from, m_round);
        takeRound(collapse.to, m_otherRound);
        if (m_round.empty() || m_round.size() + m_otherRound.size() > kMostRound) {
            return false;
        }
        std::size_t shared = 0;
        for (const std::uint32_t corner : m_round) {
            shared += cornerWith(corner, collapse.to) != kNone ? 1U : 0U;
        }
        const bool isInside = isClosedRound(collapse.from);
        return shared > 0 && shared == (isInside ? 2U : 1U) && hasOnlySharedNeighbours(shared) &&
               turnsNothing(collapse) && keepsUvs(collapse);
    }

    /// True where every neighbour of a vertex lies in two triangles round it.
    bool isClosedRound(std::uint32_t vertex)
    {
        std::int64_t open = 0;
        m_stamp += 2;
        for (const std::uint32_t corner : m_round) {
            for (const std::uint32_t other : triangleAt(corner)) {
                const std::uint32_t neighbour = m_vertices[other];
                if (neighbour != vertex) {
                    std::uint64_t& mark = m_mark[neighbour];
                    open += mark < m_stamp ? 1 : -1;
                    mark = mark < m_stamp ? m_stamp : m_stamp + 1;
                }
            }
        }
        return open == 0;
    }

    /// Both vertices have as many neighbours in common as triangles: else two sheets would meet.
    /// Call after `isClosedRound`, whose marks tell the neighbours of the one.
    bool hasOnlySharedNeighbours(std::size_t shared)
    {
        std::size_t common = 0;
        m_seen.clear();
        for (const std::uint32_t corner : m_otherRound) {
            const auto triangle = triangleAt(corner);
            for (const std::size_t place : {std::size_t{1}, std::size_t{2}}) {
                const std::uint32_t neighbour = m_vertices[triangle[place]];
                if (m_mark[neighbour] >= m_stamp) {
                    m_seen.push_back(neighbour);
                }
            }
        }
        std::sort(m_seen.begin(), m_seen.end());
        common =
            static_cast<std::size_t>(std::unique(m_seen.begin(), m_seen.end()) - m_seen.begin());
        return common == shared;
    }

    bool turnsNothing(const Collapse& collapse) const
    {
        for (const std::uint32_t corner : m_round) {
            if (cornerWith(corner, collapse.to) != kNone) {
                continue;
            }
            const auto triangle = triangleAt(corner);
            const std::uint32_t b = m_vertices[triangle[1]];
            const std::uint32_t c = m_vertices[triangle[2]];
            const Vec3d before = areaOf({collapse.from, b, c});
            const Vec3d after = areaOf({collapse.to, b, c});
            const double sizes = length(before) * length(after);
            if (!(dot(before, after) > kLeastTurn * sizes)) {
                return false;
            }
        }
        return true;
    }

    /// Every texture coordinate at the vertex has one at the other in a triangle that both share.
    bool keepsUvs(const Collapse& collapse)
    {
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            for (const std::uint32_t corner : m_round) {
                if (!m_uvs[set].empty() && uvInstead(set, collapse, m_uvs[set][corner]) == kNoUv) {
                    return false;
                }
            }
        }
        return true;
    }

    static constexpr std::int32_t kNoUv = -2;

    std::int32_t uvInstead(std::size_t set, const Collapse& collapse, std::int32_t id) const
    {
        for (const std::uint32_t corner : m_round) {
            const std::uint32_t other = cornerWith(corner, collapse.to);
            if (other != kNone && m_uvs[set][corner] == id) {
                return m_uvs[set][other];
            }
        }
        return kNoUv;
    }

    /// Returns how many triangles are gone.
    std::uint32_t drawIn(const Collapse& collapse)
    {
        for (std::vector<std::int32_t>& ids : m_uvs) {
            const auto set = static_cast<std::size_t>(&ids - m_uvs.data());
            m_newIds.clear();
            for (const std::uint32_t corner : m_round) {
                m_newIds.push_back(ids.empty() ? -1 : uvInstead(set, collapse, ids[corner]));
            }
            for (std::size_t i = 0; !ids.empty() && i < m_round.size(); ++i) {
                ids[m_round[i]] = m_newIds[i];
            }
        }
        std::uint32_t gone = 0;
        std::uint32_t last = kNone;
        for (const std::uint32_t corner : m_round) {
            if (cornerWith(corner, collapse.to) != kNone) {
                m_isGone[faceOf(corner)] = true;
                ++gone;
            }
        }
        // What is left of both rounds is the new round.
        m_first[collapse.from] = kNone;
        m_first[collapse.to] = kNone;
        for (const auto* round : {&m_otherRound, &m_round}) {
            for (const std::uint32_t corner : *round) {
                if (m_isGone[faceOf(corner)]) {
                    continue;
                }
                m_vertices[corner] = collapse.to;
                m_next[corner] = kNone;
                (last == kNone ? m_first[collapse.to] : m_next[last]) = corner;
                last = corner;
            }
        }
        m_quadrics[collapse.to].add(m_quadrics[collapse.from]);
        ++m_stamps[collapse.from];
        ++m_stamps[collapse.to];
        findCollapses(collapse.to);
        offerBlocked(collapse.to);
        return gone;
    }

    /// What could not be drawn in before may be now, next to a change.
    void offerBlocked(std::uint32_t vertex)
    {
        takeRound(vertex, m_round);
        for (const std::uint32_t corner : m_round) {
            for (const std::uint32_t other : triangleAt(corner)) {
                const std::uint32_t neighbour = m_vertices[other];
                if (m_isBlocked[neighbour] && neighbour != vertex) {
                    m_isBlocked[neighbour] = false;
                    findCollapses(neighbour);
                }
            }
        }
    }

    // --- the result

    std::shared_ptr<const MeshData> write()
    {
        MeshRewriter rewriter(m_mesh);
        std::unordered_map<std::uint64_t, std::uint32_t> edges;
        const auto pairOf = [](std::uint32_t a, std::uint32_t b) {
            return std::uint64_t{std::max(a, b)} << 32U | std::min(a, b);
        };
        for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
            const MeshEdge& ends = m_topology.edges[edge];
            edges.try_emplace(pairOf(ends.start, ends.end), edge);
        }
        std::vector<std::int32_t> ids(m_uvs.size());
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            if (!m_isReduced[face]) {
                rewriter.copyFace(face);
            } else if (!m_isGone[face]) {
                rewriter.beginFace(face);
                const std::uint32_t first = m_topology.firstCorner(face);
                for (std::uint32_t place = 0; place < 3; ++place) {
                    const std::uint32_t from = m_vertices[first + place];
                    const std::uint32_t to = m_vertices[first + (place + 1) % 3];
                    const auto [entry, isNew] = edges.try_emplace(pairOf(from, to), 0);
                    if (isNew) {
                        entry->second = rewriter.addEdge(from, to, isSmooth(first + place));
                    }
                    for (std::size_t set = 0; set < ids.size(); ++set) {
                        ids[set] = m_uvs[set].empty() ? -1 : m_uvs[set][first + place];
                    }
                    const bool isBackwards = rewriter.edges()[entry->second].start != from;
                    rewriter.addCorner(referenceTo(entry->second, isBackwards), ids);
                }
                rewriter.endFace();
            }
        }
        return rewriter.finish({.edges = true, .points = true, .uvs = true});
    }

    bool isSmooth(std::uint32_t corner) const
    {
        return m_mesh.isSmooth(edgeOf(m_topology.corners[corner]));
    }

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    const Reduction& m_reduction;
    const std::vector<bool>& m_isReduced;
    std::vector<Quadric> m_quadrics;
    std::vector<std::uint32_t> m_first;  ///< first corner at each vertex
    std::vector<std::uint32_t> m_stamps; ///< how often each vertex changed
    std::vector<bool> m_isFixed;
    std::vector<bool> m_isBlocked;         ///< that one could not be drawn into a neighbour
    std::vector<bool> m_isGone;            ///< by face
    std::vector<std::uint32_t> m_vertices; ///< by corner
    std::vector<std::uint32_t> m_next;     ///< the next corner at the same vertex
    std::vector<std::uint32_t> m_faceOfCorner;
    std::vector<std::vector<std::int32_t>> m_uvs; ///< by corner
    std::vector<std::uint64_t> m_mark;            ///< by vertex, see `isClosedRound`
    std::uint64_t m_stamp = 0;
    std::priority_queue<Collapse, std::vector<Collapse>, std::greater<>> m_queue;
    std::vector<std::uint32_t> m_round; ///< corners at the vertex that is drawn in
    std::vector<std::uint32_t> m_otherRound;
    std::vector<std::uint32_t> m_seen;
    std::vector<std::int32_t> m_newIds;
};

} // namespace

std::shared_ptr<const MeshData>
reduceMesh(const MeshData& mesh, std::span<const std::uint32_t> faces, const Reduction& reduction)
{
    if (mesh.points == nullptr || mesh.topology->corners.size() > kMaxReducedTriangles) {
        return nullptr;
    }
    std::vector<bool> isNamed(mesh.topology->faceCount());
    for (const std::uint32_t face : faces) {
        isNamed[face] = true;
    }
    const auto cut = triangulateFaces(mesh, faces);
    if (cut == nullptr) {
        return nullptr;
    }
    std::vector<bool> isReduced;
    isReduced.reserve(cut->topology->faceCount());
    const MeshTopology& before = *mesh.topology;
    for (std::uint32_t face = 0; face < before.faceCount(); ++face) {
        const std::uint32_t holes = before.firstLoop(face + 1) - before.firstLoop(face) - 1;
        const std::uint32_t corners = before.endCorner(face) - before.firstCorner(face);
        const std::uint32_t pieces = isNamed[face] && corners > 2 ? corners + 2 * holes - 2 : 1;
        isReduced.insert(isReduced.end(), pieces, isNamed[face] && corners > 2);
    }
    if (isReduced.size() != cut->topology->faceCount()) {
        return nullptr;
    }
    for (std::uint32_t face = 0; face < isReduced.size(); ++face) {
        if (isReduced[face] &&
            cut->topology->endCorner(face) - cut->topology->firstCorner(face) != 3) {
            return nullptr;
        }
    }
    return Reducer(*cut, isReduced, reduction).run();
}

} // namespace host::geometry
