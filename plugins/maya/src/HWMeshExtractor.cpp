#include "plugins/maya/src/HWMeshExtractor.h"

#include "importers/maya/src/Log.h"
#include "plugins/maya/src/GeometryBuffers.h"
#include "scene/TriangleObject.h"

#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGeometryExtractor.h>
#include <maya/MGeometryRequirements.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

using MHWRender::MGeometryExtractor;

namespace {

constexpr std::int32_t kUnused = -1;

/// Every face of a mesh, as a component.
MObject allFaces(const MFnMesh& mesh)
{
    MFnSingleIndexedComponent faces;
    MObject component = faces.create(MFn::kMeshPolygonComponent);
    faces.setCompleteData(mesh.numPolygons());
    return component;
}

/// Renumbers `indices` by first use; returns the source vertex of each new one. Indices beyond
/// `vertexCount` are not expected of Maya and drop their triangle.
std::vector<std::uint32_t> renumber(std::vector<std::int32_t>& indices, std::size_t vertexCount)
{
    std::vector<std::int32_t> newIndex(vertexCount, kUnused);
    std::vector<std::uint32_t> sources;
    sources.reserve(std::min(vertexCount, indices.size()));
    const auto isKnown = [vertexCount](std::int32_t index) {
        return static_cast<std::uint32_t>(index) < vertexCount;
    };
    std::size_t kept = 0;
    for (std::size_t first = 0; first + 2 < indices.size(); first += 3) {
        if (!isKnown(indices[first]) || !isKnown(indices[first + 1]) ||
            !isKnown(indices[first + 2])) {
            continue;
        }
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const auto source = static_cast<std::uint32_t>(indices[first + corner]);
            if (newIndex[source] == kUnused) {
                newIndex[source] = static_cast<std::int32_t>(sources.size());
                sources.push_back(source);
            }
            indices[kept++] = newIndex[source];
        }
    }
    indices.resize(kept);
    return sources;
}

/// The values of the used vertices, in their new order; `buffer` is taken over when nothing changes
/// places.
std::vector<float> gather(std::vector<float>&& buffer, std::size_t stride,
                          const std::vector<std::uint32_t>& sources)
{
    bool isUnchanged = sources.size() * stride == buffer.size();
    for (std::size_t i = 0; isUnchanged && i < sources.size(); ++i) {
        isUnchanged = sources[i] == i;
    }
    if (isUnchanged) {
        return std::move(buffer);
    }
    std::vector<float> result(sources.size() * stride);
    std::size_t position = 0;
    for (const std::uint32_t source : sources) {
        for (std::size_t k = 0; k < stride; ++k) {
            result[position++] = buffer[source * stride + k];
        }
    }
    std::vector<float>().swap(buffer);
    return result;
}

} // namespace

void HWMeshExtractor::extract(const MDagPath& path,
                              const std::shared_ptr<orv::TriangleObject>& object,
                              const MObject& component)
{
    MFnMesh mesh(path);
    mesh.syncObject();
    const VertexStreams streams(mesh.currentUVSetName());
    MHWRender::MGeometryRequirements requirements;
    streams.addTo(requirements);
    const auto indexing =
        triangleIndices(component == MObject::kNullObj ? allFaces(mesh) : component);
    requirements.addIndexingRequirement(indexing);

    MStatus status;
    const MGeometryExtractor extractor(requirements, path, MHWRender::kPolyGeom_Normal, &status);
    if (!status) {
        FILE_LOG(WARNING) << "handle Error";
        return;
    }

    std::vector<float> positions;
    std::vector<float> normals;
    std::vector<float> uvs;
    const struct {
        const MHWRender::MVertexBufferDescriptor& stream;
        std::vector<float>& buffer;
        const char* message;
    } steps[] = {
        {streams.positions, positions,
         "Could not: populateVertexBuffer(vertices.get(), numVertices, posDesc);"},
        {streams.normals, normals,
         "Could not: populateVertexBuffer(normals.get(), numVertices, normalDesc);"},
        {streams.uvs, uvs, "Could not: populateVertexBuffer(uvs.get(), numVertices, uvDesc);"},
    };
    for (const auto& step : steps) {
        if (!fillVertexBuffer(extractor, step.stream, step.buffer)) {
            FILE_LOG(WARNING) << step.message;
            return;
        }
    }

    const unsigned int primitiveCount = extractor.primitiveCount(indexing);
    std::vector<std::int32_t> indices;
    if (!fillIndexBuffer(extractor, indexing, primitiveCount, indices)) {
        FILE_LOG(WARNING) << "handle Error";
        return;
    }
    const std::vector<std::uint32_t> sources = renumber(indices, extractor.vertexCount());
    object->setVertices(gather(std::move(positions),
                               static_cast<std::size_t>(streams.positions.stride()), sources));
    object->setNormals(
        gather(std::move(normals), static_cast<std::size_t>(streams.normals.stride()), sources));
    object->setUVs(gather(std::move(uvs), static_cast<std::size_t>(streams.uvs.stride()), sources));
    object->setTriangles(std::move(indices));
    FILE_LOG(DEBUG2) << "Extracted Mesh with " << primitiveCount << " Triangles";
}
