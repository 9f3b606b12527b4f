#include "plugins/maya/src/GeometryBuffers.h"

#include <maya/MGeometryExtractor.h>
#include <maya/MGeometryRequirements.h>
#include <maya/MStatus.h>

using MHWRender::MGeometry;
using MHWRender::MGeometryExtractor;
using MHWRender::MIndexBufferDescriptor;
using MHWRender::MVertexBufferDescriptor;

namespace {

constexpr unsigned int kTriangleStride = 3;

} // namespace

VertexStreams::VertexStreams(const MString& uvSetName)
    : positions(MString(), MGeometry::kPosition, MGeometry::kFloat, 3)
    , normals(MString(), MGeometry::kNormal, MGeometry::kFloat, 3)
    , uvs(uvSetName, MGeometry::kTexture, MGeometry::kFloat, 2)
{
}

void VertexStreams::addTo(MHWRender::MGeometryRequirements& requirements) const
{
    requirements.addVertexRequirement(positions);
    requirements.addVertexRequirement(normals);
    requirements.addVertexRequirement(uvs);
}

MIndexBufferDescriptor triangleIndices(const MObject& component)
{
    return MIndexBufferDescriptor(MIndexBufferDescriptor::kTriangle, MString(),
                                  MGeometry::kTriangles, kTriangleStride, component,
                                  MGeometry::kUnsignedInt32);
}

bool fillVertexBuffer(const MGeometryExtractor& extractor, const MVertexBufferDescriptor& stream,
                      std::vector<float>& buffer)
{
    const unsigned int vertexCount = extractor.vertexCount();
    buffer.resize(static_cast<std::size_t>(stream.stride()) * vertexCount);
    const MStatus status = extractor.populateVertexBuffer(buffer.data(), vertexCount, stream);
    return static_cast<bool>(status);
}

bool fillIndexBuffer(const MGeometryExtractor& extractor, const MIndexBufferDescriptor& indices,
                     unsigned int primitiveCount, std::vector<std::int32_t>& buffer)
{
    buffer.resize(MGeometryExtractor::minimumBufferSize(primitiveCount, indices.primitive()));
    if (primitiveCount == 0) {
        return true;
    }
    const MStatus status = extractor.populateIndexBuffer(buffer.data(), primitiveCount, indices);
    return static_cast<bool>(status);
}
