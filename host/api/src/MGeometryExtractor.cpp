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
#include <string>
#include <vector>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::RenderMesh;

namespace MHWRender {

/// A stream that was asked for whole is given back where nobody else holds the mesh: the caller has
/// its own copy then, and most ask once. Asked for again, the mesh is extracted again.
struct MGeometryExtractor::Content {
    mutable std::shared_ptr<const RenderMesh> mesh; ///< faceFirstTriangle is always there
    MDagPath path;
    std::string uvSetName;
    bool isCage = false;    ///< smooth-mesh preview is left out
    bool isSurface = false; ///< the faces of a component mean nothing: always everything
    std::size_t vertexCount = 0;

    /// The mesh with all streams, or why it is gone.
    MStatus makeWhole() const;
    template<class T>
    void giveBack(std::vector<T> RenderMesh::*stream) const;
    /// Copies a vertex stream.
    template<class T>
    MStatus populate(std::vector<T> RenderMesh::*stream, float* target, std::size_t count,
                     const MVertexBufferDescriptor& descriptor) const;
    std::size_t faceCount() const { return mesh->faceFirstTriangle.size() - 1; }
    std::size_t firstTriangle(std::size_t face) const { return mesh->faceFirstTriangle[face]; }
    /// Calls with the first and the end triangle of each run of faces that a component has; null:
    /// all faces.
    template<class Action>
    void eachRun(const MObject& component, Action action) const;
};

template<class Action>
void MGeometryExtractor::Content::eachRun(const MObject& component, Action action) const
{
    const auto give = [&](std::size_t firstFace, std::size_t endFace) {
        action(firstTriangle(firstFace), firstTriangle(endFace));
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

MStatus MGeometryExtractor::Content::makeWhole() const
{
    try {
        const auto again = host::api::renderMeshOf(path, uvSetName, isCage);
        if (!again) {
            return toStatus(again.error().code);
        }
        const bool isSame = (*again)->positions.size() == vertexCount &&
                            (*again)->faceFirstTriangle == mesh->faceFirstTriangle;
        if (!isSame) { // the scene has changed since
            return toStatus(ErrorCode::Failure);
        }
        mesh = *again;
        return MStatus();
    } catch (const std::exception&) {
        return host::api::outOfMemory();
    }
}

template<class T>
void MGeometryExtractor::Content::giveBack(std::vector<T> RenderMesh::*stream) const
{
    if (mesh.use_count() == 1) {
        std::vector<T>().swap((*std::const_pointer_cast<RenderMesh>(mesh)).*stream);
    }
}

template<class T>
MStatus MGeometryExtractor::Content::populate(std::vector<T> RenderMesh::*stream, float* target,
                                              std::size_t count,
                                              const MVertexBufferDescriptor& descriptor) const
{
    if (((*mesh).*stream).empty() && count > 0) {
        if (const MStatus whole = makeWhole(); !whole) {
            return whole;
        }
    }
    scatter((*mesh).*stream, count, target, descriptor);
    if (count == vertexCount) {
        giveBack(stream);
    }
    return MStatus();
}

MGeometryExtractor::MGeometryExtractor(const MGeometryRequirements& requirements,
                                       const MDagPath& path, MPolyGeomOptions options,
                                       MStatus* ReturnStatus)
{
    const bool isCage = (options & kPolyGeom_BaseMesh) != 0;
    // The streams that are asked for differ in the uv set only.
    MString uvSetName;
    for (const MVertexBufferDescriptor& stream : Inside::vertexRequirements(requirements)) {
        uvSetName = stream.semantic() == MGeometry::kTexture ? stream.name() : uvSetName;
    }
    try {
        const auto mesh = host::api::renderMeshOf(path, uvSetName.asUTF8(), isCage);
        if (mesh) {
            m_content = std::make_shared<const Content>(
                Content{*mesh, path, uvSetName.asUTF8(), isCage, path.hasFn(MFn::kNurbsSurface),
                        (*mesh)->positions.size()});
        }
        answer(ReturnStatus, toStatus(mesh));
    } catch (const std::exception&) {
        answer(ReturnStatus, host::api::outOfMemory());
    }
}

MGeometryExtractor::~MGeometryExtractor() = default;

unsigned int MGeometryExtractor::vertexCount() const
{
    return m_content != nullptr ? static_cast<unsigned int>(m_content->vertexCount) : 0;
}

unsigned int MGeometryExtractor::primitiveCount(const MIndexBufferDescriptor& descriptor) const
{
    std::size_t count = 0;
    if (m_content != nullptr && isTriangleList(descriptor)) {
        m_content->eachRun(descriptor.component(),
                           [&](std::size_t first, std::size_t end) { count += end - first; });
    }
    return static_cast<unsigned int>(count);
}

MStatus MGeometryExtractor::populateVertexBuffer(void* data, unsigned int vertexCount,
                                                 const MVertexBufferDescriptor& descriptor) const
{
    if (m_content == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    const MGeometry::Semantic semantic = descriptor.semantic();
    const bool isTexture = semantic == MGeometry::kTexture;
    const bool isKnown =
        isTexture || semantic == MGeometry::kPosition || semantic == MGeometry::kNormal;
    if (!isKnown || !isFloatStream(descriptor, isTexture ? 2 : 3) ||
        (data == nullptr && vertexCount > 0) || vertexCount > m_content->vertexCount) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    auto* const target = static_cast<float*>(data);
    if (isTexture) {
        return m_content->populate(&RenderMesh::uvs, target, vertexCount, descriptor);
    }
    return m_content->populate(semantic == MGeometry::kNormal ? &RenderMesh::normals
                                                              : &RenderMesh::positions,
                               target, vertexCount, descriptor);
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
    if (m_content->mesh->indices.empty() && primitiveCount > 0) {
        if (const MStatus whole = m_content->makeWhole(); !whole) {
            return whole;
        }
    }
    const std::span<const std::uint32_t> indices = m_content->mesh->indices;
    auto* target = static_cast<std::uint32_t*>(data);
    std::size_t left = std::size_t{3} * primitiveCount;
    m_content->eachRun(descriptor.component(), [&](std::size_t first, std::size_t end) {
        const std::size_t count = std::min(left, 3 * (end - first));
        target =
            std::copy_n(indices.begin() + static_cast<std::ptrdiff_t>(3 * first), count, target);
        left -= count;
    });
    if (std::size_t{3} * primitiveCount == indices.size()) {
        m_content->giveBack(&RenderMesh::indices);
    }
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
