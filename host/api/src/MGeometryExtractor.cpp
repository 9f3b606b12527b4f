#include <maya/MGeometryExtractor.h>

#include "host/api/src/Inside.h"
#include "host/api/src/renderMeshOf.h"
#include "host/api/src/toStatus.h"

#include <maya/detail/ArrayOf.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <span>
#include <string>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::RenderStream;
using host::geometry::RenderStreams;

namespace MHWRender {

/// A stream that was asked for whole is given back where nobody else holds the mesh: the caller has
/// its own copy then, and most ask once. Asked for again, the mesh is extracted again.
struct MGeometryExtractor::Content {
    mutable std::shared_ptr<RenderStreams> mesh;
    MDagPath path;
    std::string uvSetName;
    bool isCage = false;    ///< smooth-mesh preview is left out
    bool isSurface = false; ///< the faces of a component mean nothing: always everything

    /// Makes a stream that was given back anew, or says why that cannot be.
    MStatus provide(RenderStream stream) const;
    void giveBack(RenderStream stream) const;
    MStatus populate(RenderStream stream, float* target, std::size_t count,
                     const MVertexBufferDescriptor& descriptor) const;
    /// Calls with the first and the end face of each run of faces that a component has; null: all
    /// faces.
    template<class Action>
    void eachRun(const MObject& component, Action action) const;
};

template<class Action>
void MGeometryExtractor::Content::eachRun(const MObject& component, Action action) const
{
    const std::uint32_t faceCount = mesh->faceCount();
    const Component* faces = Inside::componentOf(component);
    if (component.isNull() || isSurface) {
        action(std::uint32_t{0}, faceCount);
    } else if (faces != nullptr && faces->isComplete) {
        action(std::uint32_t{0}, std::min<std::uint32_t>(faces->completeCount, faceCount));
    } else if (faces != nullptr) {
        for (std::size_t i = 0; i < faces->count() && faces->element(i) < faceCount; ++i) {
            action(faces->element(i), faces->element(i) + 1);
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

/// Whether two streams are of the same faces and vertices.
bool areAlike(const RenderStreams& a, const RenderStreams& b)
{
    bool isSame = a.vertexCount() == b.vertexCount() && a.faceCount() == b.faceCount();
    for (std::uint32_t face = 0; isSame && face <= a.faceCount(); ++face) {
        isSame = a.firstTriangle(face) == b.firstTriangle(face);
    }
    return isSame;
}

} // namespace

MStatus MGeometryExtractor::Content::provide(RenderStream stream) const
{
    if (mesh->has(stream)) {
        return MStatus();
    }
    try {
        const auto again = host::api::renderMeshOf(path, uvSetName, isCage);
        if (!again) {
            return toStatus(again.error().code);
        }
        if (!areAlike(**again, *mesh)) { // the scene has changed since
            return toStatus(ErrorCode::Failure);
        }
        mesh = *again;
        return MStatus();
    } catch (const std::exception&) {
        return host::api::outOfMemory();
    }
}

void MGeometryExtractor::Content::giveBack(RenderStream stream) const
{
    if (mesh.use_count() == 1) {
        mesh->giveBack(stream);
    }
}

MStatus MGeometryExtractor::Content::populate(RenderStream stream, float* target, std::size_t count,
                                              const MVertexBufferDescriptor& descriptor) const
{
    if (const MStatus status = provide(stream); !status) {
        return status;
    }
    mesh->copyVertices(stream, {target + descriptor.offset(), count,
                                static_cast<std::size_t>(descriptor.dimension()),
                                static_cast<std::size_t>(descriptor.stride())});
    if (count == mesh->vertexCount()) {
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
                Content{*mesh, path, uvSetName.asUTF8(), isCage, path.hasFn(MFn::kNurbsSurface)});
        }
        answer(ReturnStatus, toStatus(mesh));
    } catch (const std::exception&) {
        answer(ReturnStatus, host::api::outOfMemory());
    }
}

MGeometryExtractor::~MGeometryExtractor() = default;

unsigned int MGeometryExtractor::vertexCount() const
{
    return m_content != nullptr ? static_cast<unsigned int>(m_content->mesh->vertexCount()) : 0;
}

unsigned int MGeometryExtractor::primitiveCount(const MIndexBufferDescriptor& descriptor) const
{
    std::size_t count = 0;
    if (m_content != nullptr && isTriangleList(descriptor)) {
        const RenderStreams& mesh = *m_content->mesh;
        m_content->eachRun(descriptor.component(), [&](std::uint32_t first, std::uint32_t end) {
            count += mesh.firstTriangle(end) - mesh.firstTriangle(first);
        });
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
        (data == nullptr && vertexCount > 0) || vertexCount > m_content->mesh->vertexCount()) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    auto* const target = static_cast<float*>(data);
    const RenderStream stream = isTexture                        ? RenderStream::Uvs
                                : semantic == MGeometry::kNormal ? RenderStream::Normals
                                                                 : RenderStream::Positions;
    return m_content->populate(stream, target, vertexCount, descriptor);
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
    if (const MStatus status = m_content->provide(RenderStream::Indices); !status) {
        return status;
    }
    const RenderStreams& mesh = *m_content->mesh;
    auto* target = static_cast<std::uint32_t*>(data);
    std::size_t left = std::size_t{3} * primitiveCount;
    m_content->eachRun(descriptor.component(), [&](std::uint32_t first, std::uint32_t end) {
        const std::size_t triangles = mesh.firstTriangle(end) - mesh.firstTriangle(first);
        const std::size_t count = std::min(left, 3 * triangles);
        mesh.copyIndices(first, {target, count});
        target += count;
        left -= count;
    });
    if (primitiveCount == mesh.firstTriangle(mesh.faceCount())) {
        m_content->giveBack(RenderStream::Indices);
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
