#include "host/geometry/mesh/RenderStreams.h"

#include "host/geometry/mesh/PlainRenderMesh.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>
#include <vector>

namespace host::geometry {
namespace {

template<class T>
void copyNumbers(const std::vector<T>& vertices, const VertexTarget& target)
{
    for (std::size_t i = 0; i < target.count; ++i) {
        const auto numbers =
            std::bit_cast<std::array<float, sizeof(T) / sizeof(float)>>(vertices[i]);
        std::copy_n(numbers.begin(), target.width, target.first + i * target.stride);
    }
}

class WholeRenderMesh final : public RenderStreams {
public:
    explicit WholeRenderMesh(std::shared_ptr<const RenderMesh> mesh)
        : m_mesh(std::move(mesh)), m_vertexCount(m_mesh->positions.size())
    {
    }

    std::size_t vertexCount() const override { return m_vertexCount; }
    std::uint32_t faceCount() const override
    {
        return static_cast<std::uint32_t>(m_mesh->faceFirstTriangle.size() - 1);
    }
    std::size_t firstTriangle(std::uint32_t face) const override
    {
        return m_mesh->faceFirstTriangle[face];
    }
    bool has(RenderStream stream) const override { return !m_isGone[indexOf(stream)]; }
    void copyVertices(RenderStream stream, const VertexTarget& target) const override;
    void copyIndices(std::uint32_t firstFace, std::span<std::uint32_t> target) const override
    {
        std::copy_n(m_mesh->indices.begin() +
                        static_cast<std::ptrdiff_t>(3 * firstTriangle(firstFace)),
                    target.size(), target.begin());
    }
    void giveBack(RenderStream stream) override;

private:
    static std::size_t indexOf(RenderStream stream) { return static_cast<std::size_t>(stream); }

    std::shared_ptr<const RenderMesh> m_mesh;
    std::size_t m_vertexCount;
    std::array<bool, 4> m_isGone{};
};

void WholeRenderMesh::copyVertices(RenderStream stream, const VertexTarget& target) const
{
    if (stream == RenderStream::Uvs) {
        copyNumbers(m_mesh->uvs, target);
    } else {
        copyNumbers(stream == RenderStream::Normals ? m_mesh->normals : m_mesh->positions, target);
    }
}

void WholeRenderMesh::giveBack(RenderStream stream)
{
    if (m_mesh.use_count() != 1) {
        return;
    }
    RenderMesh& mesh = *std::const_pointer_cast<RenderMesh>(m_mesh);
    const auto release = [](auto& list) { std::decay_t<decltype(list)>().swap(list); };
    switch (stream) {
    case RenderStream::Positions:
        release(mesh.positions);
        break;
    case RenderStream::Normals:
        release(mesh.normals);
        break;
    case RenderStream::Uvs:
        release(mesh.uvs);
        break;
    case RenderStream::Indices:
        release(mesh.indices);
        break;
    }
    m_isGone[indexOf(stream)] = true;
}

} // namespace

std::shared_ptr<RenderStreams> streamsOf(std::shared_ptr<const RenderMesh> mesh)
{
    return std::make_shared<WholeRenderMesh>(std::move(mesh));
}

std::shared_ptr<RenderStreams> extractRenderStreams(const std::shared_ptr<const MeshData>& mesh,
                                                    std::string_view uvSetName)
{
    if (std::shared_ptr<RenderStreams> plain = PlainRenderMesh::make(mesh, uvSetName)) {
        return plain;
    }
    return streamsOf(std::make_shared<RenderMesh>(extractRenderMesh(*mesh, uvSetName)));
}

} // namespace host::geometry
