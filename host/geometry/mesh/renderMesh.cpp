#include "host/geometry/mesh/renderMesh.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/triangulate.h"

#include <algorithm>
#include <cassert>

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

const UvSet* findUvSet(const MeshData& mesh, std::string_view name)
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

/// Finds or makes the vertex of each corner: `normalOfCorner` has normal ids on entry and vertices
/// of the result afterwards.
std::vector<SplitVertex> splitVertices(const MeshData& mesh,
                                       std::span<const std::uint32_t> vertices,
                                       std::span<const Vec3f> normals,
                                       std::span<const std::int32_t> uvs,
                                       std::vector<std::uint32_t>& normalOfCorner)
{
    std::vector<SplitVertex> split;
    split.reserve(std::max<std::size_t>(mesh.topology->vertexCount, normals.size()));
    std::vector<std::uint32_t> first(mesh.topology->vertexCount, kNone);
    forVisibleCorners(mesh, [&](std::uint32_t corner) {
        const std::uint32_t vertex = vertices[corner];
        const std::uint32_t normal = normalOfCorner[corner];
        const std::int32_t uv = uvs.empty() ? -1 : uvs[corner];
        std::uint32_t* link = &first[vertex];
        while (*link != kNone) {
            const SplitVertex& known = split[*link];
            if (known.uv == uv &&
                (known.normal == normal || normals[known.normal] == normals[normal])) {
                break;
            }
            link = &split[*link].next;
        }
        if (*link == kNone) {
            const auto made = static_cast<std::uint32_t>(split.size());
            *link = made; // before the list can move
            split.push_back({vertex, normal, uv, kNone});
            normalOfCorner[corner] = made;
            return;
        }
        normalOfCorner[corner] = *link;
    });
    return split;
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

RenderMesh extractRenderMesh(const MeshData& mesh, std::string_view uvSetName)
{
    assert(isConsistent(mesh) && "the mesh must be consistent");
    const MeshTopology& topology = *mesh.topology;
    const std::span<const Vec3f> points = pointsOf(mesh);

    RenderMesh result;
    std::vector<std::uint32_t> vertexOfCorner;
    {
        std::vector<std::uint32_t> vertices = cornerVertices(topology);
        NormalIds ids = computeNormalIds(topology);
        const std::vector<Vec3f> normals = computeNormals(
            topology, vertices, points, mesh.normalWeighting, ids, lockedNormalsOf(mesh));
        vertexOfCorner = std::move(ids.ofCorner);
        const UvSet* const uvSet = findUvSet(mesh, uvSetName);
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
