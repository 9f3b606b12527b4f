#include "host/geometry/mesh/edit/insertVertices.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <array>

namespace host::geometry {
namespace {

class VertexInserter {
public:
    VertexInserter(const MeshData& mesh, std::span<const EdgePoint> points);

    std::shared_ptr<const MeshData> run();

private:
    /// A new uv of an edge, and the uvs at its start and its end between which it lies.
    struct EdgeUv {
        std::int32_t atStart = -1;
        std::int32_t atEnd = -1;
        std::int32_t made = -1;
    };

    void writeCorner(std::uint32_t corner);
    std::int32_t uvBetween(std::size_t set, std::uint32_t number, std::int32_t atStart,
                           std::int32_t atEnd);

    const MeshTopology& m_topology;
    std::span<const EdgePoint> m_points;
    CornerLinks m_links;
    MeshRewriter m_rewriter;
    std::vector<std::uint32_t> m_number; ///< of the point on each edge; kNone
    std::uint32_t m_firstEdge = 0;
    /// By uv set and point: the uvs made there, of up to two faces. More faces make their own.
    std::vector<std::vector<std::array<EdgeUv, 2>>> m_uvs;
    std::vector<std::int32_t> m_cornerUvs;
};

VertexInserter::VertexInserter(const MeshData& mesh, std::span<const EdgePoint> points)
    : m_topology(*mesh.topology)
    , m_points(points)
    , m_links(m_topology)
    , m_rewriter(mesh)
    , m_number(m_topology.edges.size(), kNone)
    , m_firstEdge(static_cast<std::uint32_t>(m_topology.edges.size()))
    , m_uvs(mesh.uvSets.size())
    , m_cornerUvs(mesh.uvSets.size())
{
    for (std::uint32_t number = 0; number < points.size(); ++number) {
        const std::uint32_t edge = points[number].edge;
        const MeshEdge ends = m_topology.edges[edge];
        const Vec3d start = toDouble((*mesh.points)[ends.start]);
        const Vec3d way = toDouble((*mesh.points)[ends.end]) - start;
        const std::uint32_t vertex =
            m_rewriter.addPoint(toFloat(start + way * points[number].fraction));
        m_rewriter.addEdge(vertex, ends.end, mesh.isSmooth(edge), edge);
        m_rewriter.edges()[edge].end = vertex;
        m_number[edge] = number;
    }
    for (auto& uvs : m_uvs) {
        uvs.resize(points.size());
    }
}

std::int32_t VertexInserter::uvBetween(std::size_t set, std::uint32_t number, std::int32_t atStart,
                                       std::int32_t atEnd)
{
    if (atStart < 0 || atEnd < 0) {
        return -1;
    }
    EdgeUv* place = nullptr;
    for (EdgeUv& known : m_uvs[set][number]) {
        if (known.made >= 0 && known.atStart == atStart && known.atEnd == atEnd) {
            return known.made;
        }
        place = place == nullptr && known.made < 0 ? &known : place;
    }
    const Vec2f a = m_rewriter.uvPoints(set)[static_cast<std::size_t>(atStart)];
    const Vec2f b = m_rewriter.uvPoints(set)[static_cast<std::size_t>(atEnd)];
    const double fraction = m_points[number].fraction;
    const auto between = [fraction](float from, float to) {
        return static_cast<float>(from + (static_cast<double>(to) - from) * fraction);
    };
    const std::int32_t made = m_rewriter.addUv(set, {between(a.x, b.x), between(a.y, b.y)});
    if (place != nullptr) {
        *place = {atStart, atEnd, made};
    }
    return made;
}

void VertexInserter::writeCorner(std::uint32_t corner)
{
    const std::int32_t reference = m_topology.corners[corner];
    const std::uint32_t edge = edgeOf(reference);
    const std::uint32_t number = m_number[edge];
    if (number == kNone) {
        m_rewriter.addCorner(reference, corner);
        return;
    }
    const bool isBackwards = reference < 0;
    const std::uint32_t second = m_firstEdge + number;
    m_rewriter.addCorner(referenceTo(isBackwards ? second : edge, isBackwards), corner);
    for (std::size_t set = 0; set < m_uvs.size(); ++set) {
        const std::int32_t here = m_rewriter.uvId(set, corner);
        const std::int32_t next = m_rewriter.uvId(set, m_links.next(corner));
        m_cornerUvs[set] =
            isBackwards ? uvBetween(set, number, next, here) : uvBetween(set, number, here, next);
    }
    m_rewriter.addCorner(referenceTo(isBackwards ? edge : second, isBackwards), m_cornerUvs);
}

std::shared_ptr<const MeshData> VertexInserter::run()
{
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                writeCorner(corner);
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }
    return m_rewriter.finish();
}

} // namespace

std::shared_ptr<const MeshData> insertVertices(const MeshData& mesh,
                                               std::span<const EdgePoint> points)
{
    return VertexInserter(mesh, points).run();
}

} // namespace host::geometry
