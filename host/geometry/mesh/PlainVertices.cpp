#include "host/geometry/mesh/PlainVertices.h"

#include <utility>

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
    Numbering(const MeshData& mesh, std::span<const std::int32_t> uvs)
        : m_mesh(mesh)
        , m_topology(*mesh.topology)
        , m_isKnownEdge(m_topology.edges.size())
        , m_vertices(std::make_unique_for_overwrite<std::uint32_t[]>(m_topology.corners.size()))
        , m_uvOfCorner(uvs.empty() ? nullptr : uvs.data())
    {
        m_result.places.assign(m_topology.vertexCount, PlainVertices::kUnused);
        m_result.uvs.resize(uvs.empty() ? 0 : m_topology.vertexCount);
        m_result.isShared.resize(m_topology.vertexCount);
    }

    std::optional<PlainVertices> run()
    {
        Lists lists{m_topology.edges.data(),
                    m_topology.corners.data(),
                    m_isKnownEdge.data(),
                    m_vertices.get(),
                    m_result.places.data(),
                    m_uvOfCorner,
                    m_result.uvs.data(),
                    m_result.isShared.data(),
                    m_mesh.edgeSmooth != nullptr ? m_mesh.edgeSmooth->data() : nullptr};
        const bool haveUvs = m_uvOfCorner != nullptr;
        const bool isPlain =
            lists.isSmooth == nullptr
                ? (haveUvs ? takeFaces<true, true>(lists) : takeFaces<true, false>(lists))
                : (haveUvs ? takeFaces<false, true>(lists) : takeFaces<false, false>(lists));
        if (!isPlain) {
            return std::nullopt;
        }
        m_result.count = lists.count;
        m_result.ofCorners = std::move(m_vertices);
        return std::move(m_result);
    }

private:
    /// Where everything lies, so that it need not be looked up again after every store.
    struct Lists {
        const MeshEdge* edges;
        const std::int32_t* corners;
        std::uint8_t* isKnownEdge;
        std::uint32_t* vertices;
        std::uint32_t* places;
        const std::int32_t* uvOfCorner; ///< null: there are none
        std::int32_t* uvs;
        std::uint8_t* isShared;
        const std::uint8_t* isSmooth; ///< null: all edges are
        std::uint32_t count = 0;
    };

    /// Compiled for meshes with and without hard edges and texture coordinates.
    template<bool kAreAllSmooth, bool kHaveUvs>
    bool takeFaces(Lists& result) const
    {
        Lists lists = result;
        const std::uint32_t* const loopStart = m_topology.loopStart.data();
        const std::uint32_t faceCount = m_topology.faceCount();
        for (std::uint32_t face = 0; face < faceCount; ++face) {
            const std::uint32_t first = loopStart[face];
            const std::uint32_t end = loopStart[face + 1];
            const bool isTaken =
                end - first == 4
                    ? takeFace<4, kAreAllSmooth, kHaveUvs>(lists, first)
                    : end - first == 3 && takeFace<3, kAreAllSmooth, kHaveUvs>(lists, first);
            if (!isTaken) {
                return false;
            }
        }
        result.count = lists.count;
        return true;
    }

    template<std::uint32_t kCorners, bool kAreAllSmooth, bool kHaveUvs>
    [[gnu::always_inline]] static bool takeFace(Lists& lists, std::uint32_t first)
    {
        std::uint32_t edges[kCorners];
        bool isKnown[kCorners]; // before this face
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            const std::int32_t reference = lists.corners[first + k];
            edges[k] = static_cast<std::uint32_t>(reference ^ reference >> 31); // -1 - e or e
            isKnown[k] = lists.isKnownEdge[edges[k]] != 0;
            const MeshEdge& edge = lists.edges[edges[k]];
            lists.vertices[first + k] = reference >= 0 ? edge.start : edge.end;
        }
        bool isPlain = true;
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            isPlain &= takeCorner<kHaveUvs>(lists, first + k,
                                            isKnown[k] | isKnown[(k + kCorners - 1) % kCorners]);
            if constexpr (kAreAllSmooth) {
                lists.isKnownEdge[edges[k]] = 1;
            } else {
                lists.isKnownEdge[edges[k]] |= lists.isSmooth[edges[k]];
            }
        }
        return isPlain;
    }

    template<bool kHaveUvs>
    [[gnu::always_inline]] static bool takeCorner(Lists& lists, std::uint32_t corner, bool isJoined)
    {
        const std::uint32_t vertex = lists.vertices[corner];
        if (lists.places[vertex] == PlainVertices::kUnused) {
            lists.places[vertex] = lists.count++;
            if constexpr (kHaveUvs) {
                lists.uvs[vertex] = lists.uvOfCorner[corner];
            }
            return true;
        }
        lists.isShared[vertex] = 1;
        return isJoined && (!kHaveUvs || lists.uvs[vertex] == lists.uvOfCorner[corner]);
    }

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    std::vector<std::uint8_t> m_isKnownEdge; ///< 1: smooth, and of a face that was taken
    std::unique_ptr<std::uint32_t[]> m_vertices;
    const std::int32_t* m_uvOfCorner;
    PlainVertices m_result;
};

} // namespace

std::optional<PlainVertices> findPlainVertices(const MeshData& mesh,
                                               std::span<const std::int32_t> uvs)
{
    const bool isCandidate = mesh.topology->faceCount() > 0 && mesh.topology->faceLoop.empty() &&
                             isEmpty(mesh.invisibleFaces) && isEmpty(mesh.lockedNormals);
    if (!isCandidate) {
        return std::nullopt;
    }
    return Numbering(mesh, uvs).run();
}

} // namespace host::geometry
