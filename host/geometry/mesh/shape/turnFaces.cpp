#include "host/geometry/mesh/shape/turnFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/shape/cornerNormals.h"

#include <algorithm>
#include <vector>

namespace host::geometry {
namespace {

enum class Way : std::uint8_t { Unknown, Kept, Turned };

/// Follows the ways of faces across edges.
class WaySpread {
public:
    explicit WaySpread(const MeshTopology& topology)
        : m_topology(topology)
        , m_links(topology)
        , m_cornersOf(cornersOfEdges(topology))
        , m_ways(topology.faceCount(), Way::Unknown)
    {
    }

    std::vector<Way>& ways() { return m_ways; }
    /// Gives a way to all faces that are joined to the queued ones and have none, as far as
    /// `isInside` goes; returns the faces met, the queued ones first.
    template<class IsInside>
    std::vector<std::uint32_t> spread(std::vector<std::uint32_t> queue, const IsInside& isInside)
    {
        for (std::size_t next = 0; next < queue.size(); ++next) {
            const std::uint32_t face = queue[next];
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 corner < m_topology.endCorner(face); ++corner) {
                const std::uint32_t other = neighbour(corner);
                if (other == kNone || !isInside(m_links.face(other)) ||
                    m_ways[m_links.face(other)] != Way::Unknown) {
                    continue;
                }
                const bool isAgainst =
                    (m_topology.corners[corner] >= 0) == (m_topology.corners[other] >= 0);
                const bool isTurned = (m_ways[face] == Way::Turned) != isAgainst;
                m_ways[m_links.face(other)] = isTurned ? Way::Turned : Way::Kept;
                queue.push_back(m_links.face(other));
            }
        }
        return queue;
    }

private:
    /// The corner on the other side of a corner's edge; kNone unless the edge has two.
    std::uint32_t neighbour(std::uint32_t corner) const
    {
        const auto both = m_cornersOf.of(edgeOf(m_topology.corners[corner]));
        return both.size() != 2 ? kNone : both[0] == corner ? both[1] : both[0];
    }

    const MeshTopology& m_topology;
    CornerLinks m_links;
    NumberLists m_cornersOf;
    std::vector<Way> m_ways;
};

std::vector<Way> conformedWays(const MeshTopology& topology, std::span<const std::uint32_t> faces)
{
    std::vector<bool> isGiven(topology.faceCount());
    for (const std::uint32_t face : faces) {
        isGiven[face] = true;
    }
    WaySpread spread(topology);
    std::vector<Way>& ways = spread.ways();
    for (const std::uint32_t first : faces) {
        if (ways[first] != Way::Unknown) {
            continue;
        }
        ways[first] = Way::Kept;
        const auto joined =
            spread.spread({first}, [&isGiven](std::uint32_t face) { return isGiven[face]; });
        const auto turned =
            std::count_if(joined.begin(), joined.end(),
                          [&ways](std::uint32_t face) { return ways[face] == Way::Turned; });
        if (static_cast<std::size_t>(turned) * 2 > joined.size()) {
            for (const std::uint32_t face : joined) {
                ways[face] = ways[face] == Way::Turned ? Way::Kept : Way::Turned;
            }
        }
    }
    return ways;
}

/// The ways of all faces after the given ones gave theirs to those that are joined to them.
std::vector<Way> spreadWays(const MeshTopology& topology, std::span<const std::uint32_t> faces,
                            Way way)
{
    WaySpread spread(topology);
    for (const std::uint32_t face : faces) {
        spread.ways()[face] = way;
    }
    spread.spread({faces.begin(), faces.end()}, [](std::uint32_t) { return true; });
    return spread.ways();
}

/// Ascending, each once.
std::vector<std::uint32_t> turnedFaces(const MeshTopology& topology,
                                       std::span<const std::uint32_t> faces, TurnMode mode)
{
    std::vector<std::uint32_t> turned;
    if (mode == TurnMode::Reverse || mode == TurnMode::ReverseAndCut) {
        turned.assign(faces.begin(), faces.end());
        std::sort(turned.begin(), turned.end());
        turned.erase(std::unique(turned.begin(), turned.end()), turned.end());
        return turned;
    }
    const std::vector<Way> ways =
        mode == TurnMode::Conform
            ? conformedWays(topology, faces)
            : spreadWays(topology, faces, mode == TurnMode::Propagate ? Way::Kept : Way::Turned);
    for (std::uint32_t face = 0; face < ways.size(); ++face) {
        if (ways[face] == Way::Turned) {
            turned.push_back(face);
        }
    }
    return turned;
}

/// Runs a loop's entries backwards from the same first one.
template<class T>
void turnEntries(std::vector<T>& entries, std::uint32_t first, std::uint32_t end)
{
    if (end - first > 2) {
        std::reverse(entries.begin() + first + 1, entries.begin() + end);
    }
}

void turnLoop(std::vector<std::int32_t>& corners, std::uint32_t first, std::uint32_t end)
{
    std::reverse(corners.begin() + first, corners.begin() + end);
    for (std::uint32_t corner = first; corner < end; ++corner) {
        corners[corner] = reversed(corners[corner]);
    }
}

/// Calls `turn` with the ends of each loop of the faces.
template<class Turn>
void forLoops(const MeshTopology& topology, std::span<const std::uint32_t> faces, const Turn& turn)
{
    for (const std::uint32_t face : faces) {
        for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
             ++loop) {
            turn(topology.loopStart[loop], topology.loopStart[loop + 1]);
        }
    }
}

void turnUvs(MeshData& mesh, std::span<const std::uint32_t> faces)
{
    for (UvSet& set : mesh.uvSets) {
        if (set.corners == nullptr || set.corners->empty()) {
            continue;
        }
        std::vector<std::int32_t> ids = *set.corners;
        forLoops(*mesh.topology, faces,
                 [&ids](std::uint32_t first, std::uint32_t end) { turnEntries(ids, first, end); });
        set.corners = std::make_shared<const std::vector<std::int32_t>>(std::move(ids));
    }
}

std::vector<Vec3f> turnedNormals(const MeshData& mesh, std::span<const std::uint32_t> faces,
                                 bool turnsLocked)
{
    std::vector<Vec3f> locked = lockedNormalsOfCorners(mesh);
    if (locked.empty()) {
        return locked;
    }
    forLoops(*mesh.topology, faces, [&](std::uint32_t first, std::uint32_t end) {
        turnEntries(locked, first, end);
        for (std::uint32_t corner = first; corner < end && turnsLocked; ++corner) {
            Vec3f& normal = locked[corner];
            normal = isLockedNormal(normal) ? Vec3f{-normal.x, -normal.y, -normal.z} : normal;
        }
    });
    return locked;
}

MeshData turned(const MeshData& mesh, std::span<const std::uint32_t> faces, bool turnsLocked)
{
    MeshData result = mesh;
    const std::vector<Vec3f> locked = turnedNormals(mesh, faces, turnsLocked);
    turnUvs(result, faces);
    auto topology = std::make_shared<MeshTopology>(*mesh.topology);
    forLoops(*mesh.topology, faces, [&topology](std::uint32_t first, std::uint32_t end) {
        turnLoop(topology->corners, first, end);
    });
    result.topology = std::move(topology);
    result.lockedNormals = lockedNormalsById(result, locked);
    return result;
}

/// Gives the turned faces vertices and edges of their own where others have them as well.
class Cut {
public:
    Cut(const MeshData& mesh, std::span<const std::uint32_t> faces)
        : m_topology(*mesh.topology), m_isTurned(m_topology.faceCount()), m_rewriter(mesh)
    {
        for (const std::uint32_t face : faces) {
            m_isTurned[face] = true;
        }
        const CornerLinks links(m_topology);
        copyVertices(links);
        copyEdges(mesh, links);
    }

    std::shared_ptr<const MeshData> run()
    {
        for (std::uint32_t face = 0; face < m_isTurned.size(); ++face) {
            if (!m_isTurned[face]) {
                m_rewriter.copyFace(face);
                continue;
            }
            m_rewriter.beginFace(face);
            for (std::uint32_t loop = m_topology.firstLoop(face);
                 loop < m_topology.firstLoop(face + 1); ++loop) {
                for (std::uint32_t corner = m_topology.loopStart[loop];
                     corner < m_topology.loopStart[loop + 1]; ++corner) {
                    const std::int32_t reference = m_topology.corners[corner];
                    m_rewriter.addCorner(referenceTo(m_edgeCopy[edgeOf(reference)], reference < 0),
                                         corner);
                }
                m_rewriter.endLoop();
            }
            m_rewriter.endFace();
        }
        return m_rewriter.finish();
    }

private:
    bool isTurned(const CornerLinks& links, std::uint32_t corner) const
    {
        return m_isTurned[links.face(corner)];
    }
    bool isShared(const CornerLinks& links, std::span<const std::uint32_t> corners) const
    {
        const auto turned =
            std::count_if(corners.begin(), corners.end(),
                          [&](std::uint32_t corner) { return isTurned(links, corner); });
        return turned > 0 && static_cast<std::size_t>(turned) < corners.size();
    }
    void copyVertices(const CornerLinks& links)
    {
        const NumberLists cornersOf = cornersOfVertices(m_topology);
        for (std::uint32_t vertex = 0; vertex < m_topology.vertexCount; ++vertex) {
            const bool isCopied = isShared(links, cornersOf.of(vertex));
            m_vertexCopy.push_back(
                isCopied ? m_rewriter.addPoint(Vec3f(m_rewriter.points()[vertex]), vertex)
                         : vertex);
        }
    }
    /// An edge between turned faces goes over to the copied vertices, one that others have too is
    /// copied.
    void copyEdges(const MeshData& mesh, const CornerLinks& links)
    {
        const NumberLists cornersOf = cornersOfEdges(m_topology);
        const auto count = static_cast<std::uint32_t>(m_topology.edges.size());
        for (std::uint32_t edge = 0; edge < count; ++edge) {
            const auto corners = cornersOf.of(edge);
            const MeshEdge ends{m_vertexCopy[m_topology.edges[edge].start],
                                m_vertexCopy[m_topology.edges[edge].end]};
            m_edgeCopy.push_back(edge);
            if (isShared(links, corners)) {
                m_edgeCopy.back() =
                    m_rewriter.addEdge(ends.start, ends.end, mesh.isSmooth(edge), edge);
            } else if (!corners.empty() && isTurned(links, corners.front())) {
                m_rewriter.edges()[edge] = ends;
            }
        }
    }

    const MeshTopology& m_topology;
    std::vector<bool> m_isTurned; ///< by face
    MeshRewriter m_rewriter;
    std::vector<std::uint32_t> m_vertexCopy;
    std::vector<std::uint32_t> m_edgeCopy;
};

} // namespace

std::shared_ptr<const MeshData> turnFaces(const MeshData& mesh,
                                          std::span<const std::uint32_t> faces, TurnMode mode,
                                          bool turnsLocked)
{
    const std::vector<std::uint32_t> turning = turnedFaces(*mesh.topology, faces, mode);
    if (turning.empty()) {
        return std::make_shared<MeshData>(mesh);
    }
    if (mode != TurnMode::ReverseAndCut) {
        return std::make_shared<MeshData>(turned(mesh, turning, turnsLocked));
    }
    const std::vector<Vec3f> locked = lockedNormalsOfCorners(mesh);
    const auto cut = Cut(mesh, turning).run();
    if (cut == nullptr) {
        return nullptr;
    }
    MeshData apart = *cut;
    apart.lockedNormals = lockedNormalsById(apart, locked);
    return std::make_shared<MeshData>(turned(apart, turning, turnsLocked));
}

} // namespace host::geometry
