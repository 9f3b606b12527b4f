// The triangles of a shape as buffers: positions, normals and texture coordinates per vertex, a
// vertex being one combination of them that occurs in a corner of a face.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MGeometryRequirements.h>
#include <maya/MHWGeometry.h>
#include <maya/MStatus.h>

#include <memory>

namespace MHWRender {

using MPolyGeomOptions = int;
inline constexpr MPolyGeomOptions kPolyGeom_Normal = 0;
inline constexpr MPolyGeomOptions kPolyGeom_NotSharing = 1;
inline constexpr MPolyGeomOptions kPolyGeom_BaseMesh = 2;

class MGeometryExtractor {
public:
    /// Takes the evaluated shape at the current time, in object space. Fails for a path that is no
    /// mesh and for a mesh without geometry; the extractor is empty then.
    MGeometryExtractor(const MGeometryRequirements& requirements, const MDagPath& path,
                       MPolyGeomOptions options, MStatus* ReturnStatus = nullptr);
    ~MGeometryExtractor();
    MGeometryExtractor(const MGeometryExtractor&) = delete;
    MGeometryExtractor& operator=(const MGeometryExtractor&) = delete;

    /// One number for all streams, whatever the components.
    unsigned int vertexCount() const;
    /// Triangles of the descriptor's component, or of the whole shape.
    unsigned int primitiveCount(const MIndexBufferDescriptor& descriptor) const;
    /// Writes offset() + vertexCount * stride() numbers at most; what lies between the dimension
    /// and the stride is left alone. Missing texture coordinates are 0, 0.
    MStatus populateVertexBuffer(void* data, unsigned int vertexCount,
                                 const MVertexBufferDescriptor& descriptor) const;
    /// Writes three vertex numbers per triangle, faces ascending.
    MStatus populateIndexBuffer(void* data, unsigned int primitiveCount,
                                const MIndexBufferDescriptor& descriptor) const;

    /// Indices that so many primitives need.
    static unsigned int minimumBufferSize(unsigned int primitiveCount,
                                          MGeometry::Primitive primitive,
                                          unsigned int primitiveStride = 0);

private:
    struct Content;
    std::shared_ptr<const Content> m_content;
};

} // namespace MHWRender
