// A render mesh that is handed out stream by stream, into the arrays of whoever wants it.
#pragma once

#include "host/geometry/mesh/renderMesh.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace host::geometry {

enum class RenderStream : std::uint8_t { Positions, Normals, Uvs, Indices };

/// Where the numbers of the first `count` vertices go: `width` of each, those of the next vertex
/// `stride` numbers further on.
struct VertexTarget {
    float* first = nullptr;
    std::size_t count = 0;
    std::size_t width = 0;
    std::size_t stride = 0;
};

/// What `RenderMesh` has, perhaps made only when it is copied. A stream that was given back is
/// gone.
class RenderStreams {
public:
    RenderStreams() = default;
    RenderStreams(const RenderStreams&) = delete;
    RenderStreams& operator=(const RenderStreams&) = delete;
    virtual ~RenderStreams() = default;

    virtual std::size_t vertexCount() const = 0;
    virtual std::uint32_t faceCount() const = 0;
    /// The first triangle of a face; of `faceCount()` the number of all.
    virtual std::size_t firstTriangle(std::uint32_t face) const = 0;
    virtual bool has(RenderStream stream) const = 0;
    /// Of a vertex stream, which is there; no more vertices than there are, and no more numbers of
    /// each than the stream has: 2 of texture coordinates, else 3.
    virtual void copyVertices(RenderStream stream, const VertexTarget& target) const = 0;
    /// As many indices as the target takes, from the first triangle of a face on.
    virtual void copyIndices(std::uint32_t firstFace, std::span<std::uint32_t> target) const = 0;
    virtual void giveBack(RenderStream stream) = 0;
};

/// The streams of a render mesh that is there. They can be given back when nobody else holds it.
std::shared_ptr<RenderStreams> streamsOf(std::shared_ptr<const RenderMesh> mesh);

/// The streams of what `extractRenderMesh` makes of a mesh, which is held along with them.
std::shared_ptr<RenderStreams> extractRenderStreams(const std::shared_ptr<const MeshData>& mesh,
                                                    std::string_view uvSetName);

} // namespace host::geometry
