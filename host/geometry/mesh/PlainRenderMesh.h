// The render mesh of a plain mesh: nearly all of it is made while it is copied.
#pragma once

#include "host/geometry/mesh/PlainVertices.h"
#include "host/geometry/mesh/RenderStreams.h"

#include <array>

namespace host::geometry {

/// Its positions and texture coordinates are those of the mesh in another order; its triangles
/// follow from the faces. It delivers the same as `extractRenderMesh`, from a third of the memory.
class PlainRenderMesh final : public RenderStreams {
public:
    /// Null for a mesh that is not plain (see PlainVertices.h) or has vertices without a normal.
    static std::shared_ptr<PlainRenderMesh> make(const std::shared_ptr<const MeshData>& mesh,
                                                 std::string_view uvSetName);

    std::size_t vertexCount() const override { return m_vertexCount; }
    std::uint32_t faceCount() const override { return m_mesh->topology->faceCount(); }
    std::size_t firstTriangle(std::uint32_t face) const override;
    bool has(RenderStream stream) const override;
    void copyVertices(RenderStream stream, const VertexTarget& target) const override;
    void copyIndices(std::uint32_t firstFace, std::span<std::uint32_t> target) const override;
    void giveBack(RenderStream stream) override;

private:
    PlainRenderMesh(std::shared_ptr<const MeshData> mesh, std::string_view uvSetName);
    /// False if the mesh is not plain.
    bool find();

    template<class NumbersOf>
    void copyByPlace(const VertexTarget& target, const NumbersOf& numbersOf) const;

    std::shared_ptr<const MeshData> m_mesh;
    const UvSet* m_uvSet = nullptr; ///< of the mesh; null: no texture coordinates
    std::size_t m_vertexCount = 0;
    std::vector<std::uint32_t> m_places; ///< see PlainVertices
    std::vector<std::int32_t> m_uvs;
    std::vector<Vec3f> m_normals;
    std::vector<std::uint8_t> m_isCutFromSecond;
    std::array<bool, 4> m_isGone{}; ///< by stream
};

} // namespace host::geometry
