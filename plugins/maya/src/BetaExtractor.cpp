#include "plugins/maya/src/BetaExtractor.h"

#include "importers/maya/src/Log.h"
#include "plugins/maya/src/GeometryBuffers.h"
#include "scene/TriangleObject.h"

#include <maya/MFnMesh.h>
#include <maya/MGeometryExtractor.h>
#include <maya/MGeometryRequirements.h>

#include <cstdint>
#include <utility>
#include <vector>

using MHWRender::MGeometryExtractor;
using MHWRender::MVertexBufferDescriptor;

namespace {

using ArraySetter = void (orv::TriangleObject::*)(std::vector<float>&&);

/// Hands a whole stream to the object; false, with a record, when Maya could not fill it.
bool copyStream(const MGeometryExtractor& extractor, const MVertexBufferDescriptor& stream,
                orv::TriangleObject& object, ArraySetter set)
{
    std::vector<float> buffer;
    if (!fillVertexBuffer(extractor, stream, buffer)) {
        FILE_LOG(WARNING) << "handle Error";
        return false;
    }
    (object.*set)(std::move(buffer));
    return true;
}

} // namespace

void BetaExtractor::extract(const MDagPath& path,
                            const std::shared_ptr<orv::TriangleObject>& object,
                            const MObject& component)
{
    MFnMesh mesh(path);
    mesh.syncObject();
    const VertexStreams streams(mesh.currentUVSetName());
    MHWRender::MGeometryRequirements requirements;
    streams.addTo(requirements);
    const auto indexing = triangleIndices(component);
    requirements.addIndexingRequirement(indexing);

    MStatus status;
    const MGeometryExtractor extractor(requirements, path, MHWRender::kPolyGeom_Normal, &status);
    if (!status) {
        FILE_LOG(WARNING) << "handle Error";
        return;
    }
    if (!copyStream(extractor, streams.positions, *object, &orv::TriangleObject::setVertices) ||
        !copyStream(extractor, streams.normals, *object, &orv::TriangleObject::setNormals) ||
        !copyStream(extractor, streams.uvs, *object, &orv::TriangleObject::setUVs)) {
        return;
    }
    const unsigned int primitiveCount = extractor.primitiveCount(indexing);
    std::vector<std::int32_t> indices;
    if (!fillIndexBuffer(extractor, indexing, primitiveCount, indices)) {
        FILE_LOG(WARNING) << "handle Error";
        return;
    }
    object->setTriangles(std::move(indices));
    FILE_LOG(DEBUG2) << "Extracted Mesh with " << primitiveCount << " Triangles";
}
