#include "host/geometry/mesh/PlainVertices.h"

namespace host::geometry {
namespace {

bool isEmpty(const auto& shared)
{
    return shared == nullptr || shared->empty();
}

/// Walks over the corners once. The corners of a vertex have a normal in common when each face but
/// the first shares a smooth edge at that vertex with a face before it.
class Numbering {
public:
    Numbering(const MeshData& mesh, std::span<const std::int32_t> uvs,
              std::vector<std::uint32_t>& vertices)
        : m_mesh(mesh)
        , m_topology(*mesh.topology)
        , m_uvs(uvs)
        , m_vertices(vertices)
        , m_isKnownEdge(m_topology.edges.size())
    {
        m_vertices.resize(m_topology.corners.size());
        m_result.places.assign(m_topology.vertexCount, PlainVertices::kUnused);
        m_result.uvs.resize(uvs.empty() ? 0 : m_topology.vertexCount);
        m_result.isShared.resize(m_topology.vertexCount);
    }

    std::optional<PlainVertices> run()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            const std::uint32_t first = m_topology.loopStart[face];
            const std::uint32_t end = m_topology.loopStart[face + 1];
            const bool isTaken =
                end - first == 4 ? takeFace<4>(first) : end - first == 3 && takeFace<3>(first);
            if (!isTaken) {
                return std::nullopt;
            }
        }
        return std::move(m_result);
    }

private:
    static std::uint32_t edgeOf(std::int32_t reference)
    {
        return static_cast<std::uint32_t>(reference ^ reference >> 31); // -1 - e is e turned over
    }

    template<std::uint32_t kCorners>
    bool takeFace(std::uint32_t first)
    {
        std::uint32_t edges[kCorners];
        bool isKnown[kCorners]; // before this face
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            const std::int32_t reference = m_topology.corners[first + k];
            edges[k] = edgeOf(reference);
            isKnown[k] = m_isKnownEdge[edges[k]];
            const MeshEdge& edge = m_topology.edges[edges[k]];
            m_vertices[first + k] = reference >= 0 ? edge.start : edge.end;
        }
        bool isPlain = true;
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            isPlain &= takeCorner(first + k, isKnown[k] | isKnown[(k + kCorners - 1) % kCorners]);
            if (m_mesh.isSmooth(edges[k])) {
                m_isKnownEdge[edges[k]] = true;
            }
        }
        return isPlain;
    }

    bool takeCorner(std::uint32_t corner, bool isJoined)
    {
        const std::uint32_t vertex = m_vertices[corner];
        std::uint32_t& place = m_result.places[vertex];
        if (place == PlainVertices::kUnused) {
            place = static_cast<std::uint32_t>(m_result.count++);
            if (!m_uvs.empty()) {
                m_result.uvs[vertex] = m_uvs[corner];
            }
            return true;
        }
        m_result.isShared[vertex] = true;
        return isJoined && (m_uvs.empty() || m_result.uvs[vertex] == m_uvs[corner]);
    }

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    std::span<const std::int32_t> m_uvs;
    std::vector<std::uint32_t>& m_vertices;
    std::vector<bool> m_isKnownEdge; ///< smooth, and of a face that was taken
    PlainVertices m_result;
};

} // namespace

std::optional<PlainVertices> findPlainVertices(const MeshData& mesh,
                                               std::span<const std::int32_t> uvs,
                                               std::vector<std::uint32_t>& vertices)
{
    const bool isCandidate = mesh.topology->faceCount() > 0 && mesh.topology->faceLoop.empty() &&
                             isEmpty(mesh.invisibleFaces) && isEmpty(mesh.lockedNormals);
    if (!isCandidate) {
        return std::nullopt;
    }
    return Numbering(mesh, uvs, vertices).run();
}

} // namespace host::geometry
