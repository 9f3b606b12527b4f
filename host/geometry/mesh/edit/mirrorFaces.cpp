#include "host/geometry/mesh/edit/mirrorFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/joinVertices.h"
#include "host/geometry/mesh/polygon.h"
#include "host/math/angle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;

class FaceMirror {
public:
    FaceMirror(const MeshData& mesh, std::span<const std::uint32_t> faces,
               const Mirroring& mirroring);

    /// The mesh and all images, nothing merged.
    std::shared_ptr<const MeshData> write();
    VertexJoin borderJoin(const MeshData& doubled) const;
    std::uint32_t imageOfEdge(std::uint32_t edge) const { return m_edgeImage[edge]; }
    bool isBorder(std::uint32_t edge) const { return m_isBorder[edge]; }

private:
    Vec3d image(const Vec3d& place) const;
    void makeParts();
    void makeUvs();
    void writeImage(std::uint32_t face);
    double mergeDistance() const;

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    const Mirroring& m_mirroring;
    Matrix4 m_toObject;
    MeshRewriter m_rewriter;
    Numbers m_vertexImage; ///< of each vertex; kNone
    Numbers m_edgeImage;
    std::vector<std::vector<std::int32_t>> m_uvImage; ///< by set
    std::vector<std::int32_t> m_cornerUvs;
    std::vector<bool> m_isBorder; ///< edges that one of the faces has, and no other does
};

FaceMirror::FaceMirror(const MeshData& mesh, std::span<const std::uint32_t> faces,
                       const Mirroring& mirroring)
    : m_mesh(mesh)
    , m_topology(*mesh.topology)
    , m_faces(faces)
    , m_mirroring(mirroring)
    , m_toObject(inverse(mirroring.toSpace))
    , m_rewriter(mesh)
    , m_vertexImage(m_topology.vertexCount, kNone)
    , m_edgeImage(m_topology.edges.size(), kNone)
    , m_uvImage(mesh.uvSets.size())
    , m_cornerUvs(mesh.uvSets.size())
    , m_isBorder(m_topology.edges.size())
{
    makeParts();
    makeUvs();
    const NumberLists corners = cornersOfEdges(m_topology);
    for (std::uint32_t edge = 0; edge < m_edgeImage.size(); ++edge) {
        m_isBorder[edge] = m_edgeImage[edge] != kNone && corners.of(edge).size() == 1;
    }
}

Vec3d FaceMirror::image(const Vec3d& place) const
{
    return place - m_mirroring.normal * (2 * dot(place - m_mirroring.point, m_mirroring.normal));
}

/// The images of vertices and edges, in the order of what they show.
void FaceMirror::makeParts()
{
    for (const std::uint32_t face : m_faces) {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            m_vertexImage[m_topology.cornerVertex(corner)] = 0;
            m_edgeImage[edgeOf(m_topology.corners[corner])] = 0;
        }
    }
    for (std::uint32_t vertex = 0; vertex < m_vertexImage.size(); ++vertex) {
        if (m_vertexImage[vertex] != kNone) {
            const Vec3d place =
                transformPoint(toDouble((*m_mesh.points)[vertex]), m_mirroring.toSpace);
            m_vertexImage[vertex] =
                m_rewriter.addPoint(toFloat(transformPoint(image(place), m_toObject)));
        }
    }
    for (std::uint32_t edge = 0; edge < m_edgeImage.size(); ++edge) {
        if (m_edgeImage[edge] != kNone) {
            const MeshEdge ends = m_topology.edges[edge];
            m_edgeImage[edge] = m_rewriter.addEdge(
                m_vertexImage[ends.start], m_vertexImage[ends.end], m_mesh.isSmooth(edge), edge);
        }
    }
}

void FaceMirror::makeUvs()
{
    for (std::size_t set = 0; set < m_uvImage.size(); ++set) {
        const std::size_t count = m_rewriter.uvPoints(set).size();
        m_uvImage[set].assign(count, -1);
        for (const std::uint32_t face : m_faces) {
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 corner < m_topology.endCorner(face); ++corner) {
                const std::int32_t id = m_rewriter.uvId(set, corner);
                if (id >= 0) {
                    m_uvImage[set][static_cast<std::size_t>(id)] = 0;
                }
            }
        }
        for (std::size_t id = 0; id < count; ++id) {
            if (m_uvImage[set][id] == 0) {
                const Vec2f point = m_rewriter.uvPoints(set)[id];
                m_uvImage[set][id] = m_rewriter.addUv(set, point);
            }
        }
    }
}

/// Each loop from its first corner on backwards: the edge that leaves a corner is the one that
/// came to it.
void FaceMirror::writeImage(std::uint32_t face)
{
    m_rewriter.beginFace(face);
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        const std::uint32_t first = m_topology.loopStart[loop];
        const std::uint32_t size = m_topology.loopStart[loop + 1] - first;
        for (std::uint32_t i = 0; i < size; ++i) {
            const std::uint32_t corner = first + (size - i) % size;
            const std::int32_t last = m_topology.corners[first + (2 * size - i - 1) % size];
            for (std::size_t set = 0; set < m_uvImage.size(); ++set) {
                const std::int32_t id = m_rewriter.uvId(set, corner);
                m_cornerUvs[set] = id < 0 ? -1 : m_uvImage[set][static_cast<std::size_t>(id)];
            }
            m_rewriter.addCorner(referenceTo(m_edgeImage[edgeOf(last)], last >= 0), m_cornerUvs);
        }
        m_rewriter.endLoop();
    }
    m_rewriter.endFace();
}

std::shared_ptr<const MeshData> FaceMirror::write()
{
    m_rewriter.copyFaces(0, m_topology.faceCount());
    for (const std::uint32_t face : m_faces) {
        writeImage(face);
    }
    return m_rewriter.finish();
}

double FaceMirror::mergeDistance() const
{
    if (!m_mirroring.isThresholdAutomatic) {
        return m_mirroring.threshold;
    }
    double sum = 0;
    std::size_t count = 0;
    for (std::uint32_t edge = 0; edge < m_isBorder.size(); ++edge) {
        if (m_isBorder[edge]) {
            const MeshEdge ends = m_topology.edges[edge];
            sum +=
                length(transformPoint(toDouble((*m_mesh.points)[ends.start]), m_mirroring.toSpace) -
                       transformPoint(toDouble((*m_mesh.points)[ends.end]), m_mirroring.toSpace));
            ++count;
        }
    }
    return count == 0 ? 0 : sum / static_cast<double>(count);
}

VertexJoin FaceMirror::borderJoin(const MeshData& doubled) const
{
    VertexJoin join = unjoined(doubled);
    const double distance = mergeDistance();
    const auto merge = [&](std::uint32_t vertex) {
        const Vec3d place = transformPoint(toDouble((*m_mesh.points)[vertex]), m_mirroring.toSpace);
        const Vec3d half = (image(place) - place) * 0.5;
        if (length(half) * 2 <= distance) {
            join.target[m_vertexImage[vertex]] = vertex;
            join.points[vertex] = toFloat(transformPoint(place + half, m_toObject));
        }
    };
    for (std::uint32_t edge = 0; edge < m_isBorder.size(); ++edge) {
        if (m_isBorder[edge]) {
            merge(m_topology.edges[edge].start);
            merge(m_topology.edges[edge].end);
        }
    }
    return join;
}

Vec3d loopNormal(const MeshData& mesh, std::uint32_t face)
{
    std::vector<Vec3d> points;
    const MeshTopology& topology = *mesh.topology;
    const std::uint32_t loop = topology.firstLoop(face);
    for (std::uint32_t corner = topology.loopStart[loop]; corner < topology.loopStart[loop + 1];
         ++corner) {
        points.push_back(toDouble((*mesh.points)[topology.cornerVertex(corner)]));
    }
    return areaVector(points);
}

/// The mesh with some of its edges (ascending) smooth or hard by the angle between their two faces.
std::shared_ptr<const MeshData> softened(const MeshData& mesh, const Numbers& edges, double angle)
{
    EdgeFlags flags = mesh.edgeFlags();
    const NumberLists corners = cornersOfEdges(*mesh.topology);
    const CornerLinks links(*mesh.topology);
    for (const std::uint32_t edge : edges) {
        const auto sides = corners.of(edge);
        if (sides.size() == 2) {
            const Vec3d a = loopNormal(mesh, links.face(sides[0]));
            const Vec3d b = loopNormal(mesh, links.face(sides[1]));
            flags[edge] = angleOf(length(cross(a, b)), dot(a, b)) <= angle ? 1 : 0;
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    result->edgeSmooth = shareEdgeFlags(std::move(flags));
    return result;
}

} // namespace

std::shared_ptr<const MeshData>
mirrorFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const Mirroring& mirroring)
{
    FaceMirror mirror(mesh, faces, mirroring);
    const auto doubled = mirror.write();
    if (doubled == nullptr || !mirroring.mergesBorder) {
        return doubled;
    }
    const VertexJoin join = mirror.borderJoin(*doubled);
    const auto joined = joinVertices(*doubled, join);
    if (joined == nullptr) {
        return nullptr;
    }
    // The first mesh's edges keep their numbers unless some of them were loose.
    Numbers merged;
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        const MeshEdge ends = mesh.topology->edges[edge];
        const bool isMerged =
            mirror.isBorder(edge) &&
            join.target[doubled->topology->edges[mirror.imageOfEdge(edge)].start] == ends.start &&
            join.target[doubled->topology->edges[mirror.imageOfEdge(edge)].end] == ends.end;
        if (isMerged && edge < joined->topology->edges.size()) {
            merged.push_back(edge);
        }
    }
    return softened(*joined, merged, mirroring.smoothingAngle);
}

} // namespace host::geometry
