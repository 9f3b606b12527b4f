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

/// Whether all vertices are used and numbered by first use already, as those of whole meshes often
/// are.
bool isByFirstUse(const std::vector<std::int32_t>& indices, std::size_t vertexCount)
{
    std::uint32_t next = 0;
    for (const std::int32_t signedIndex : indices) {
        const auto index = static_cast<std::uint32_t>(signedIndex);
        if (index > next) { // negative ones, too
            return false;
        }
        next += index == next ? 1U : 0U;
    }
    return next == vertexCount && indices.size() % 3 == 0;
}

/// Where the vertices of a mesh go: by the first use of each.
struct NewOrder {
    std::vector<std::int32_t> of; ///< by old vertex; kUnused: nowhere
    std::size_t count = 0;        ///< of the used ones
};

/// Renumbers `indices` by first use. Indices beyond `vertexCount` are not expected of Maya and drop
/// their triangle.
NewOrder renumber(std::vector<std::int32_t>& indices, std::size_t vertexCount)
{
    NewOrder order{std::vector<std::int32_t>(vertexCount, kUnused)};
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
            std::int32_t& place = order.of[static_cast<std::size_t>(indices[first + corner])];
            if (place == kUnused) {
                place = static_cast<std::int32_t>(order.count++);
            }
            indices[kept++] = place;
        }
    }
    indices.resize(kept);
    return order;
}

/// The numbers of all vertices.
struct Streams {
    std::vector<float> positions;
    std::vector<float> normals;
    std::vector<float> uvs;
};

template<std::size_t kStride>
void exchange(float* a, float* b)
{
    std::swap_ranges(a, a + kStride, b);
}

/// Puts every vertex to its new place, cycle by cycle; all are used.
void permute(Streams& streams, const std::vector<std::int32_t>& newPlace)
{
    std::vector<bool> isDone(newPlace.size());
    for (std::size_t first = 0; first < newPlace.size(); ++first) {
        if (isDone[first]) {
            continue;
        }
        // The first place holds what comes to the next ones in turn, and at last its own.
        for (auto to = static_cast<std::size_t>(newPlace[first]); to != first;
             to = static_cast<std::size_t>(newPlace[to])) {
            exchange<3>(&streams.positions[3 * first], &streams.positions[3 * to]);
            exchange<3>(&streams.normals[3 * first], &streams.normals[3 * to]);
            exchange<2>(&streams.uvs[2 * first], &streams.uvs[2 * to]);
            isDone[to] = true;
        }
    }
}

/// The numbers of the used vertices, in their new order.
std::vector<float> gather(std::vector<float>&& buffer, std::size_t stride, const NewOrder& order)
{
    std::vector<float> result(order.count * stride);
    for (std::size_t vertex = 0; vertex < order.of.size(); ++vertex) {
        if (order.of[vertex] != kUnused) {
            std::copy_n(&buffer[vertex * stride], stride,
                        &result[static_cast<std::size_t>(order.of[vertex]) * stride]);
        }
    }
    std::vector<float>().swap(buffer);
    return result;
}

void reorder(Streams& streams, const NewOrder& order)
{
    if (order.count == order.of.size()) {
        permute(streams, order.of);
        return;
    }
    streams.positions = gather(std::move(streams.positions), 3, order);
    streams.normals = gather(std::move(streams.normals), 3, order);
    streams.uvs = gather(std::move(streams.uvs), 2, order);
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

    Streams buffers;
    const struct {
        const MHWRender::MVertexBufferDescriptor& stream;
        std::vector<float>& buffer;
        const char* message;
    } steps[] = {
        {streams.positions, buffers.positions,
         "Could not: populateVertexBuffer(vertices.get(), numVertices, posDesc);"},
        {streams.normals, buffers.normals,
         "Could not: populateVertexBuffer(normals.get(), numVertices, normalDesc);"},
        {streams.uvs, buffers.uvs,
         "Could not: populateVertexBuffer(uvs.get(), numVertices, uvDesc);"},
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
    if (!isByFirstUse(indices, extractor.vertexCount())) {
        reorder(buffers, renumber(indices, extractor.vertexCount()));
    }
    object->setVertices(std::move(buffers.positions));
    object->setNormals(std::move(buffers.normals));
    object->setUVs(std::move(buffers.uvs));
    object->setTriangles(std::move(indices));
    FILE_LOG(DEBUG2) << "Extracted Mesh with " << primitiveCount << " Triangles";
}
