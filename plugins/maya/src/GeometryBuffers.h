// The streams that both extractors ask Maya's geometry extractor for, and the extraction of one of
// them.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MHWGeometry.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace MHWRender {
class MGeometryExtractor;
class MGeometryRequirements;
} // namespace MHWRender

/// Descriptors in the order in which they are required: positions, normals, texture coordinates of
/// a named set.
struct VertexStreams {
    explicit VertexStreams(const MString& uvSetName);
    void addTo(MHWRender::MGeometryRequirements& requirements) const;

    MHWRender::MVertexBufferDescriptor positions;
    MHWRender::MVertexBufferDescriptor normals;
    MHWRender::MVertexBufferDescriptor uvs;
};

/// Triangles of a component as 32-bit indices into the vertex streams.
MHWRender::MIndexBufferDescriptor triangleIndices(const MObject& component);

/// stride * vertex-count floats of a stream; false when Maya could not fill them.
bool fillVertexBuffer(const MHWRender::MGeometryExtractor& extractor,
                      const MHWRender::MVertexBufferDescriptor& stream, std::vector<float>& buffer);

/// The indices of a component's triangles, three each; false when Maya could not fill them. No
/// triangles are a success. Maya writes unsigned numbers; they are kept as the signed ones that the
/// scene has, in the same bytes.
bool fillIndexBuffer(const MHWRender::MGeometryExtractor& extractor,
                     const MHWRender::MIndexBufferDescriptor& indices, unsigned int primitiveCount,
                     std::vector<std::int32_t>& buffer);
