#include "host/geometry/mesh/renderMesh.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/triangulate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <unordered_map>

namespace host::geometry {
namespace {

constexpr std::uint32_t kNone = 0xffffffff;

/// One vertex of the result, and the next one of the same mesh vertex.
struct SplitVertex {
    std::uint32_t vertex = 0;
    std::uint32_t normal = 0; ///< id
    std::int32_t uv = -1;
    std::uint32_t next = kNone;
};

std::span<const std::int32_t> uvCornersOf(const UvSet* set)
{
    return set != nullptr && set->corners && set->points
               ? std::span<const std::int32_t>(*set->corners)
               : std::span<const std::int32_t>();
}

std::span<const std::uint32_t> invisibleFacesOf(const MeshData& mesh)
{
    return mesh.invisibleFaces ? std::span<const std::uint32_t>(*mesh.invisibleFaces)
                               : std::span<const std::uint32_t>();
}

/// Calls `visit` for the corners of each visible face in turn.
template<class Visit>
void forVisibleCorners(const MeshData& mesh, const Visit& visit)
{
    const MeshTopology& topology = *mesh.topology;
    const auto corners = static_cast<std::uint32_t>(topology.corners.size());
    std::uint32_t corner = 0;
    for (const std::uint32_t face : invisibleFacesOf(mesh)) {
        for (; corner < topology.firstCorner(face); ++corner) {
            visit(corner);
        }
        corner = topology.endCorner(face);
    }
    for (; corner < corners; ++corner) {
        visit(corner);
    }
}

/// Vertices of a mesh vertex are looked through one by one up to so many; the others of it lie in a
/// table. The poles of a sphere have as many as there are faces around.
constexpr std::size_t kMostInTurn = 32;

/// What tells two vertices of one mesh vertex apart, bit by bit.
struct SplitKey {
    std::uint32_t vertex = 0;
    std::int32_t uv = -1;
    std::array<std::uint32_t, 3> normal{};
    friend bool operator==(const SplitKey&, const SplitKey&) = default;
};

struct SplitHash {
    std::size_t operator()(const SplitKey& key) const
    {
        constexpr std::uint64_t kFactor = 0x9e3779b97f4a7c15; // 2^64 by the golden ratio
        std::uint64_t hash = std::uint64_t{key.vertex} << 32 | static_cast<std::uint32_t>(key.uv);
        for (const std::uint32_t part : key.normal) {
            hash = (hash ^ (hash >> 29) ^ part) * kFactor;
        }
        return static_cast<std::size_t>(hash ^ (hash >> 32));
    }
};

/// The normal counts by its value, in which both zeros are one; one that is no number by its id.
SplitKey keyOf(std::uint32_t vertex, std::int32_t uv, std::uint32_t id, const Vec3f& normal)
{
    if (!(normal == normal)) {
        return {vertex, uv, {id, 0xffffffff, 0xffffffff}};
    }
    const auto bits = [](float number) { return std::bit_cast<std::uint32_t>(number + 0.0F); };
    return {vertex, uv, {bits(normal.x), bits(normal.y), bits(normal.z)}};
}

/// Finds or makes the vertices of corners.
class VertexSplitter {
public:
    VertexSplitter(std::uint32_t vertexCount, std::span<const Vec3f> normals)
        : m_normals(normals), m_first(vertexCount, kNone)
    {
        m_split.reserve(std::max<std::size_t>(vertexCount, normals.size()));
    }

    std::uint32_t of(std::uint32_t vertex, std::uint32_t normal, std::int32_t uv)
    {
        std::uint32_t* link = &m_first[vertex];
        for (std::size_t turn = 0; *link != kNone; ++turn) {
            const SplitVertex& known = m_split[*link];
            if (known.uv == uv &&
                (known.normal == normal || m_normals[known.normal] == m_normals[normal])) {
                return *link;
            }
            if (turn == kMostInTurn) {
                return inTable(vertex, normal, uv);
            }
            link = &m_split[*link].next;
        }
        const auto made = static_cast<std::uint32_t>(m_split.size());
        *link = made; // before the list can move
        m_split.push_back({vertex, normal, uv, kNone});
        return made;
    }

    std::vector<SplitVertex> takeAll() { return std::move(m_split); }

private:
    std::uint32_t inTable(std::uint32_t vertex, std::uint32_t normal, std::int32_t uv)
    {
        const auto made = static_cast<std::uint32_t>(m_split.size());
        const auto [at, isNew] =
            m_table.try_emplace(keyOf(vertex, uv, normal, m_normals[normal]), made);
        if (isNew) {
            m_split.push_back({vertex, normal, uv, kNone});
        }
        return at->second;
    }

    std::span<const Vec3f> m_normals;
    std::vector<SplitVertex> m_split;
    std::vector<std::uint32_t> m_first; ///< by mesh vertex
    std::unordered_map<SplitKey, std::uint32_t, SplitHash> m_table;
};

/// Finds or makes the vertex of each corner: `normalOfCorner` has normal ids on entry and vertices
/// of the result afterwards.
std::vector<SplitVertex> splitVertices(const MeshData& mesh,
                                       std::span<const std::uint32_t> vertices,
                                       std::span<const Vec3f> normals,
                                       std::span<const std::int32_t> uvs,
                                       std::vector<std::uint32_t>& normalOfCorner)
{
    VertexSplitter splitter(mesh.topology->vertexCount, normals);
    forVisibleCorners(mesh, [&](std::uint32_t corner) {
        normalOfCorner[corner] =
            splitter.of(vertices[corner], normalOfCorner[corner], uvs.empty() ? -1 : uvs[corner]);
    });
    return splitter.takeAll();
}

void fillVertices(std::span<const SplitVertex> split, std::span<const Vec3f> points,
                  std::span<const Vec3f> normals, const UvSet* uvSet, RenderMesh& result)
{
    result.positions.reserve(split.size());
    result.normals.reserve(split.size());
    result.uvs.reserve(split.size());
    for (const SplitVertex& vertex : split) {
        result.positions.push_back(points[vertex.vertex]);
        result.normals.push_back(normals[vertex.normal]);
        result.uvs.push_back(vertex.uv < 0 ? Vec2f{}
                                           : (*uvSet->points)[static_cast<std::size_t>(vertex.uv)]);
    }
}

} // namespace

const UvSet* renderedUvSet(const MeshData& mesh, std::string_view name)
{
    for (const std::string_view wanted : {name, std::string_view(mesh.currentUvSet)}) {
        for (const UvSet& set : mesh.uvSets) {
            if (set.name == wanted) {
                return &set;
            }
        }
    }
    return mesh.uvSets.empty() ? nullptr : &mesh.uvSets.front();
}

RenderMesh extractRenderMesh(const MeshData& mesh, std::string_view uvSetName)
{
    assert(isConsistent(mesh) && "the mesh must be consistent");
    const MeshTopology& topology = *mesh.topology;
    const std::span<const Vec3f> points = pointsOf(mesh);

    RenderMesh result;
    std::vector<std::uint32_t> vertexOfCorner;
    {
        std::vector<std::uint32_t> vertices = cornerVertices(topology);
        NormalIds ids = computeNormalIds(mesh);
        const std::vector<Vec3f> normals = computeNormals(
            topology, vertices, points, mesh.normalWeighting, ids, lockedNormalsOf(mesh));
        vertexOfCorner = std::move(ids.ofCorner);
        const UvSet* const uvSet = renderedUvSet(mesh, uvSetName);
        const std::vector<SplitVertex> splitVertex =
            splitVertices(mesh, vertices, normals, uvCornersOf(uvSet), vertexOfCorner);
        std::vector<std::uint32_t>().swap(vertices); // the result is the peak of memory
        fillVertices(splitVertex, points, normals, uvSet, result);
    }
    Triangulation triangles = triangulate(topology, vertexOfCorner, result.positions,
                                          mesh.quadSplit, invisibleFacesOf(mesh));
    for (std::uint32_t& corner : triangles.corners) {
        corner = vertexOfCorner[corner];
    }
    result.indices = std::move(triangles.corners);
    result.faceFirstTriangle = std::move(triangles.faceFirstTriangle);
    return result;
}

} // namespace host::geometry
