#include "host/geometry/mesh/PlainRenderMesh.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/plainNormals.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

constexpr std::size_t kMostIndices = 6; ///< of a face

template<class T>
void release(std::vector<T>& list)
{
    std::vector<T>().swap(list);
}

template<std::size_t kWidth>
struct Numbers {
    float values[kWidth];
};

Numbers<3> numbersOf(const Vec3f& vector)
{
    return {vector.x, vector.y, vector.z};
}

struct TriangleMaker {
    const MeshTopology& topology;
    const std::uint32_t* places;
    const std::uint8_t* isCutFromSecond;

    /// Makes the indices of a face's triangles; returns how many.
    [[gnu::always_inline]] std::size_t make(std::uint32_t face, std::uint32_t* target) const
    {
        const std::uint32_t first = topology.loopStart[face];
        const std::uint32_t a = places[topology.cornerVertex(first)];
        const std::uint32_t b = places[topology.cornerVertex(first + 1)];
        const std::uint32_t c = places[topology.cornerVertex(first + 2)];
        target[0] = a;
        target[1] = b;
        if (topology.loopStart[face + 1] - first == 3) {
            target[2] = c;
            return 3;
        }
        const std::uint32_t d = places[topology.cornerVertex(first + 3)];
        const bool isSecond = isCutFromSecond[face] != 0;
        target[2] = isSecond ? d : c;
        target[3] = isSecond ? b : a;
        target[4] = c;
        target[5] = d;
        return kMostIndices;
    }
};

} // namespace

std::shared_ptr<PlainRenderMesh> PlainRenderMesh::make(const std::shared_ptr<const MeshData>& mesh,
                                                       std::string_view uvSetName)
{
    std::shared_ptr<PlainRenderMesh> made(new PlainRenderMesh(mesh, uvSetName));
    return made->find() ? made : nullptr;
}

PlainRenderMesh::PlainRenderMesh(std::shared_ptr<const MeshData> mesh, std::string_view uvSetName)
    : m_mesh(std::move(mesh))
{
    const UvSet* const set = renderedUvSet(*m_mesh, uvSetName);
    m_uvSet =
        set != nullptr && set->points && set->corners && !set->corners->empty() ? set : nullptr;
}

bool PlainRenderMesh::find()
{
    std::span<const std::int32_t> uvs;
    if (m_uvSet != nullptr) {
        uvs = *m_uvSet->corners;
    }
    std::optional<PlainVertices> found = findPlainVertices(*m_mesh, uvs);
    if (!found) {
        return false;
    }
    std::optional<PlainShading> shading = shadePlain(*m_mesh, *found);
    if (!shading) {
        return false;
    }
    m_vertexCount = found->count;
    m_places = std::move(found->places);
    m_uvs = std::move(found->uvs);
    m_normals = std::move(shading->normals);
    m_isCutFromSecond = std::move(shading->isCutFromSecond);
    return true;
}

std::size_t PlainRenderMesh::firstTriangle(std::uint32_t face) const
{
    // a face of n corners has n - 2 triangles
    return m_mesh->topology->loopStart[face] - std::size_t{2} * face;
}

bool PlainRenderMesh::has(RenderStream stream) const
{
    return !m_isGone[static_cast<std::size_t>(stream)];
}

template<class NumbersOf>
void PlainRenderMesh::copyByPlace(const VertexTarget& target, const NumbersOf& numbersOf) const
{
    constexpr std::size_t kWidth = sizeof(numbersOf(0).values) / sizeof(float);
    const bool isDense = target.width == kWidth;
    for (std::uint32_t vertex = 0; vertex < m_places.size(); ++vertex) {
        const std::size_t place = m_places[vertex];
        if (place >= target.count) {
            continue;
        }
        const auto numbers = numbersOf(vertex);
        float* const to = target.first + place * target.stride;
        if (isDense) {
            std::copy_n(numbers.values, kWidth, to);
        } else {
            std::copy_n(numbers.values, target.width, to);
        }
    }
}

void PlainRenderMesh::copyVertices(RenderStream stream, const VertexTarget& target) const
{
    if (stream == RenderStream::Uvs) {
        copyByPlace(target, [this](std::uint32_t vertex) -> Numbers<2> {
            const std::int32_t id = m_uvSet != nullptr ? m_uvs[vertex] : -1;
            if (id < 0) {
                return {};
            }
            const Vec2f& uv = (*m_uvSet->points)[static_cast<std::size_t>(id)];
            return {uv.x, uv.y};
        });
        return;
    }
    const std::span<const Vec3f> vectors =
        stream == RenderStream::Normals ? std::span<const Vec3f>(m_normals) : pointsOf(*m_mesh);
    copyByPlace(target, [vectors](std::uint32_t vertex) { return numbersOf(vectors[vertex]); });
}

void PlainRenderMesh::copyIndices(std::uint32_t firstFace, std::span<std::uint32_t> target) const
{
    const TriangleMaker maker{*m_mesh->topology, m_places.data(), m_isCutFromSecond.data()};
    std::uint32_t face = firstFace;
    std::uint32_t* to = target.data();
    std::uint32_t* const end = to + target.size();
    while (static_cast<std::size_t>(end - to) >= kMostIndices) {
        to += maker.make(face++, to);
    }
    while (to != end) { // perhaps a part of the last face
        std::uint32_t indices[kMostIndices];
        const std::size_t count = maker.make(face++, indices);
        to = std::copy_n(indices, std::min(count, static_cast<std::size_t>(end - to)), to);
    }
}

void PlainRenderMesh::giveBack(RenderStream stream)
{
    m_isGone[static_cast<std::size_t>(stream)] = true;
    if (stream == RenderStream::Normals) {
        release(m_normals);
    } else if (stream == RenderStream::Uvs) {
        release(m_uvs);
    } else if (stream == RenderStream::Indices) {
        release(m_isCutFromSecond);
    }
    if (std::find(m_isGone.begin(), m_isGone.end(), false) == m_isGone.end()) {
        release(m_places);
    }
}

} // namespace host::geometry
