#include "host/geometry/mesh/edit/appendFace.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/polygon.h"
#include "host/math/angle.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <utility>

namespace host::geometry {
namespace {

constexpr std::size_t kLeastCorners = 3;

class FaceAppender {
public:
    explicit FaceAppender(const MeshData& mesh)
        : m_topology(*mesh.topology)
        , m_rewriter(mesh)
        , m_corners(cornersOfEdges(m_topology))
        , m_edges(edgesOfVertices(m_topology))
    {
    }

    bool take(std::span<const FaceStep> steps);
    std::shared_ptr<const MeshData> write(FaceTexture texture);

private:
    /// A corner of the face; `edge` is the one that leaves, kNone where it is yet to be found.
    struct Corner {
        std::uint32_t vertex = 0;
        std::uint32_t edge = kNone;
        bool isBetweenEdges = false; ///< the one that leaves is always a new one
    };

    bool takeEdge(std::uint32_t edge);
    std::uint32_t edgeBetween(std::uint32_t from, std::uint32_t to) const;
    void findEdges();
    std::uint32_t neighbour() const;
    std::vector<Vec2f> texturePlaces(FaceTexture texture);
    std::size_t currentSet() const;

    const MeshTopology& m_topology;
    MeshRewriter m_rewriter;
    NumberLists m_corners; ///< of edges
    NumberLists m_edges;   ///< of vertices
    std::vector<Corner> m_loop;
};

/// Two corners; the first is there already where the last step ended at it.
bool FaceAppender::takeEdge(std::uint32_t edge)
{
    if (edge >= m_topology.edges.size()) {
        return false;
    }
    MeshEdge ends = m_topology.edges[edge];
    const auto corners = m_corners.of(edge);
    if (!corners.empty() && m_topology.corners[corners.front()] >= 0) {
        std::swap(ends.start, ends.end);
    }
    const bool continues =
        !m_loop.empty() && m_loop.back().vertex == ends.start && m_loop.back().edge == kNone;
    if (!continues) {
        m_loop.push_back({ends.start, kNone, false});
    }
    m_loop.back().edge = edge;
    m_loop.back().isBetweenEdges = false;
    m_loop.push_back({ends.end, kNone, true});
    return true;
}

bool FaceAppender::take(std::span<const FaceStep> steps)
{
    for (const FaceStep& step : steps) {
        const bool isEdge = step.kind == FaceStep::Kind::Edge;
        if (isEdge && !takeEdge(step.number)) {
            return false;
        }
        if (step.kind == FaceStep::Kind::Vertex && step.number >= m_topology.vertexCount) {
            return false;
        }
        if (!isEdge) {
            const bool isNew = step.kind == FaceStep::Kind::NewPoint;
            m_loop.push_back({isNew ? m_rewriter.addPoint(step.point) : step.number, kNone, false});
        }
    }
    if (m_loop.size() > 1 && m_loop.back().vertex == m_loop.front().vertex &&
        m_loop.back().edge == kNone) {
        m_loop.pop_back();
    }
    return m_loop.size() >= kLeastCorners && !m_rewriter.isFull();
}

/// An edge of the mesh; best one that has a single face, which walks it the other way.
std::uint32_t FaceAppender::edgeBetween(std::uint32_t from, std::uint32_t to) const
{
    std::uint32_t best = kNone;
    if (from >= m_topology.vertexCount || to >= m_topology.vertexCount) {
        return best;
    }
    for (const std::uint32_t edge : m_edges.of(from)) {
        const MeshEdge ends = m_topology.edges[edge];
        if ((ends.start == from ? ends.end : ends.start) != to) {
            continue;
        }
        const auto corners = m_corners.of(edge);
        const bool isOpen = corners.size() == 1 && m_topology.cornerVertex(corners.front()) == to;
        if (isOpen) {
            return edge;
        }
        best = best == kNone ? edge : best;
    }
    return best;
}

void FaceAppender::findEdges()
{
    for (std::size_t i = 0; i < m_loop.size(); ++i) {
        Corner& corner = m_loop[i];
        const std::uint32_t to = m_loop[(i + 1) % m_loop.size()].vertex;
        if (corner.edge == kNone && !corner.isBetweenEdges) {
            corner.edge = edgeBetween(corner.vertex, to);
        }
        if (corner.edge == kNone) {
            corner.edge = m_rewriter.addEdge(corner.vertex, to, true);
        }
    }
}

/// The face beside the first edge that has one; where there is none the last face of the mesh.
std::uint32_t FaceAppender::neighbour() const
{
    const CornerLinks links(m_topology);
    for (const Corner& corner : m_loop) {
        if (corner.edge < m_topology.edges.size() && !m_corners.of(corner.edge).empty()) {
            return links.face(m_corners.of(corner.edge).front());
        }
    }
    const std::uint32_t count = m_topology.faceCount();
    return count > 0 ? count - 1 : kNoSource;
}

std::size_t FaceAppender::currentSet() const
{
    const MeshData& mesh = m_rewriter.before();
    for (std::size_t set = 0; set < mesh.uvSets.size(); ++set) {
        if (mesh.uvSets[set].name == mesh.currentUvSet) {
            return set;
        }
    }
    return 0;
}

std::vector<Vec2f> inSquare(std::span<const Vec3d> points)
{
    const Vec3d normal = normalized(areaVector(points));
    const Vec3d x = normalized(points[1] - points[0]);
    const Vec3d y = cross(normal, x);
    double low[2] = {0, 0};
    double high[2] = {0, 0};
    std::vector<std::array<double, 2>> flat;
    for (const Vec3d& point : points) {
        flat.push_back({dot(point - points[0], x), dot(point - points[0], y)});
        for (std::size_t i = 0; i < 2; ++i) {
            low[i] = std::min(low[i], flat.back()[i]);
            high[i] = std::max(high[i], flat.back()[i]);
        }
    }
    const double size = std::max(high[0] - low[0], high[1] - low[1]);
    const double scale = size > 0 ? 1 / size : 0;
    std::vector<Vec2f> places;
    for (const auto& place : flat) {
        places.push_back({static_cast<float>((place[0] - low[0]) * scale),
                          static_cast<float>((place[1] - low[1]) * scale)});
    }
    return places;
}

std::vector<Vec2f> roundCircle(std::size_t count)
{
    std::vector<Vec2f> places;
    for (std::size_t i = 0; i < count; ++i) {
        const SineCosine turn =
            sineCosine(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count));
        places.push_back({static_cast<float>(0.5 + 0.5 * turn.cosine),
                          static_cast<float>(0.5 + 0.5 * turn.sine)});
    }
    return places;
}

std::vector<Vec2f> FaceAppender::texturePlaces(FaceTexture texture)
{
    if (texture == FaceTexture::Unitized) {
        return m_loop.size() == 4 ? std::vector<Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}}
                                  : roundCircle(m_loop.size());
    }
    std::vector<Vec3d> points;
    for (const Corner& corner : m_loop) {
        points.push_back(toDouble(m_rewriter.points()[corner.vertex]));
    }
    return inSquare(points);
}

std::shared_ptr<const MeshData> FaceAppender::write(FaceTexture texture)
{
    findEdges();
    if (m_rewriter.isFull()) {
        return nullptr;
    }
    std::vector<Vec2f> places;
    const std::size_t set = currentSet();
    if (texture != FaceTexture::None && set < m_rewriter.uvSetCount()) {
        places = texturePlaces(texture);
    }
    m_rewriter.copyFaces(0, m_topology.faceCount());
    m_rewriter.beginFace(neighbour());
    std::vector<std::int32_t> uvs(m_rewriter.uvSetCount(), -1);
    for (std::size_t i = 0; i < m_loop.size(); ++i) {
        const Corner& corner = m_loop[i];
        const bool isBackwards = m_rewriter.edges()[corner.edge].start != corner.vertex;
        if (!places.empty()) {
            uvs[set] = m_rewriter.addUv(set, places[i]);
        }
        m_rewriter.addCorner(referenceTo(corner.edge, isBackwards), uvs);
    }
    m_rewriter.endFace();
    return m_rewriter.finish();
}

} // namespace

std::shared_ptr<const MeshData> appendFace(const MeshData& mesh, std::span<const FaceStep> steps,
                                           FaceTexture texture)
{
    FaceAppender appender(mesh);
    return appender.take(steps) ? appender.write(texture) : nullptr;
}

} // namespace host::geometry
