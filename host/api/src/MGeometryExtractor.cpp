#include <maya/MGeometryExtractor.h>

#include "host/api/src/Inside.h"
#include "host/api/src/renderMeshOf.h"
#include "host/api/src/toStatus.h"

#include <maya/detail/ArrayOf.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <exception>
#include <span>
#include <vector>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::RenderMesh;

namespace MHWRender {

struct MGeometryExtractor::Content {
    std::shared_ptr<const RenderMesh> mesh;
    bool isSurface = false; ///< the faces of a component mean nothing: always everything

    std::size_t faceCount() const { return mesh->faceFirstTriangle.size() - 1; }
    std::size_t firstTriangle(std::size_t face) const { return mesh->faceFirstTriangle[face]; }
    /// Calls with the vertex numbers of each run of faces that a component has; null: all faces.
    template<class Action>
    void eachRun(const MObject& component, Action action) const;
};

template<class Action>
void MGeometryExtractor::Content::eachRun(const MObject& component, Action action) const
{
    const std::span<const std::uint32_t> indices = mesh->indices;
    const auto give = [&](std::size_t firstFace, std::size_t endFace) {
        const std::size_t first = firstTriangle(firstFace);
        action(indices.subspan(3 * first, 3 * (firstTriangle(endFace) - first)));
    };
    const Component* faces = Inside::componentOf(component);
    if (component.isNull() || isSurface) {
        give(0, faceCount());
    } else if (faces != nullptr && faces->isComplete) {
        give(0, std::min<std::size_t>(faces->completeCount, faceCount()));
    } else if (faces != nullptr) {
        for (std::size_t i = 0; i < faces->count() && faces->element(i) < faceCount(); ++i) {
            give(faces->element(i), faces->element(i) + 1);
        }
    }
}

namespace {

bool isTriangleList(const MIndexBufferDescriptor& descriptor)
{
    return descriptor.indexType() == MIndexBufferDescriptor::kTriangle &&
           descriptor.primitive() == MGeometry::kTriangles &&
           descriptor.dataType() == MGeometry::kUnsignedInt32;
}

/// Whether a descriptor takes up to `width` floats a vertex, one vertex after another.
bool isFloatStream(const MVertexBufferDescriptor& descriptor, int width)
{
    return descriptor.dataType() == MGeometry::kFloat && descriptor.dimension() >= 1 &&
           descriptor.dimension() <= width && descriptor.stride() >= descriptor.dimension() &&
           descriptor.offset() >= 0;
}

/// Copies the first `dimension` numbers of each vertex to its place.
template<class T>
void scatter(const std::vector<T>& vertices, std::size_t count, float* target,
             const MVertexBufferDescriptor& descriptor)
{
    const auto stride = static_cast<std::size_t>(descriptor.stride());
    float* out = target + descriptor.offset();
    for (std::size_t i = 0; i < count; ++i) {
        const auto numbers =
            std::bit_cast<std::array<float, sizeof(T) / sizeof(float)>>(vertices[i]);
        std::copy_n(numbers.begin(), descriptor.dimension(), out + i * stride);
    }
}

} // namespace

MGeometryExtractor::MGeometryExtractor(const MGeometryRequirements& requirements,
                                       const MDagPath& path, MPolyGeomOptions,
                                       MStatus* ReturnStatus)
{
    // The streams that are asked for differ in the uv set only.
    MString uvSetName;
    for (const MVertexBufferDescriptor& stream : Inside::vertexRequirements(requirements)) {
        uvSetName = stream.semantic() == MGeometry::kTexture ? stream.name() : uvSetName;
    }
    try {
        const auto mesh = host::api::renderMeshOf(path, uvSetName.asUTF8());
        if (mesh) {
            m_content =
                std::make_shared<const Content>(Content{*mesh, path.hasFn(MFn::kNurbsSurface)});
        }
        answer(ReturnStatus, toStatus(mesh));
    } catch (const std::exception&) {
        answer(ReturnStatus, host::api::outOfMemory());
    }
}

MGeometryExtractor::~MGeometryExtractor() = default;

unsigned int MGeometryExtractor::vertexCount() const
{
    return m_content != nullptr ? static_cast<unsigned int>(m_content->mesh->positions.size()) : 0;
}

unsigned int MGeometryExtractor::primitiveCount(const MIndexBufferDescriptor& descriptor) const
{
    std::size_t count = 0;
    if (m_content != nullptr && isTriangleList(descriptor)) {
        m_content->eachRun(descriptor.component(),
                           [&](std::span<const std::uint32_t> run) { count += run.size() / 3; });
    }
    return static_cast<unsigned int>(count);
}

MStatus MGeometryExtractor::populateVertexBuffer(void* data, unsigned int vertexCount,
                                                 const MVertexBufferDescriptor& descriptor) const
{
    if (m_content == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    const RenderMesh& mesh = *m_content->mesh;
    const MGeometry::Semantic semantic = descriptor.semantic();
    const bool isTexture = semantic == MGeometry::kTexture;
    const bool isKnown =
        isTexture || semantic == MGeometry::kPosition || semantic == MGeometry::kNormal;
    if (!isKnown || !isFloatStream(descriptor, isTexture ? 2 : 3) ||
        (data == nullptr && vertexCount > 0) || vertexCount > mesh.positions.size()) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    auto* const target = static_cast<float*>(data);
    if (isTexture) {
        scatter(mesh.uvs, vertexCount, target, descriptor);
    } else {
        scatter(semantic == MGeometry::kNormal ? mesh.normals : mesh.positions, vertexCount, target,
                descriptor);
    }
    return MStatus();
}

MStatus MGeometryExtractor::populateIndexBuffer(void* data, unsigned int primitiveCount,
                                                const MIndexBufferDescriptor& descriptor) const
{
    if (m_content == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (!isTriangleList(descriptor) || (data == nullptr && primitiveCount > 0) ||
        primitiveCount > this->primitiveCount(descriptor)) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    auto* target = static_cast<std::uint32_t*>(data);
    std::size_t left = std::size_t{3} * primitiveCount;
    m_content->eachRun(descriptor.component(), [&](std::span<const std::uint32_t> run) {
        const std::size_t count = std::min(left, run.size());
        target = std::copy_n(run.begin(), count, target);
        left -= count;
    });
    return MStatus();
}

unsigned int MGeometryExtractor::minimumBufferSize(unsigned int primitiveCount,
                                                   MGeometry::Primitive primitive,
                                                   unsigned int primitiveStride)
{
    switch (primitive) {
    case MGeometry::kPoints:
        return primitiveCount;
    case MGeometry::kLines:
        return 2 * primitiveCount;
    case MGeometry::kTriangles:
        return 3 * primitiveCount;
    case MGeometry::kPatch:
        return primitiveStride * primitiveCount;
    default:
        return 0;
    }
}

} // namespace MHWRender
