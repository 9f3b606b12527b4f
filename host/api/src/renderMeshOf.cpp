#include "host/api/src/renderMeshOf.h"

#include "host/api/src/Inside.h"

#include <string>

namespace host::api {
namespace {

using geometry::MeshData;
using geometry::RenderMesh;
using geometry::RenderStreams;

/// The last result. It is known by the shape and the mesh value that it was made of; a value that
/// is gone fits no other.
struct Kept {
    session::NodeId shape = session::kNoNode;
    std::weak_ptr<const MeshData> source;
    std::string uvSetName;
    bool isCage = false;
    std::shared_ptr<RenderStreams> result;
};

Kept& kept()
{
    static Kept last;
    return last;
}

/// Gives each face of the mesh before the triangles of all the faces that it was divided into.
void joinFaces(const geometry::MeshTopology& before, std::uint32_t divisions, RenderMesh& mesh)
{
    const std::uint32_t shift = 2 * (divisions - 1);
    std::vector<std::uint32_t> first;
    first.reserve(before.faceCount() + std::size_t{1});
    for (std::uint32_t face = 0; face < before.faceCount(); ++face) {
        first.push_back(mesh.faceFirstTriangle[std::size_t{before.firstCorner(face)} << shift]);
    }
    first.push_back(mesh.faceFirstTriangle.back());
    mesh.faceFirstTriangle = std::move(first);
}

std::shared_ptr<RenderStreams> extract(const session::ShownMesh& shown,
                                       const std::shared_ptr<const MeshData>& mesh,
                                       std::string_view uvSetName)
{
    // Groups are kept, which a plain mesh that is held along with its streams is too large for.
    if (shown.divisions == 0 && mesh->groups.empty()) {
        return geometry::extractRenderStreams(shown.mesh, uvSetName);
    }
    auto result = std::make_shared<RenderMesh>(geometry::extractRenderMesh(*shown.mesh, uvSetName));
    if (shown.divisions > 0) {
        joinFaces(*mesh->topology, shown.divisions, *result);
    }
    return geometry::streamsOf(std::move(result));
}

std::shared_ptr<RenderStreams> keptOrExtracted(session::NodeId shape,
                                               const std::shared_ptr<const MeshData>& mesh,
                                               std::string_view uvSetName, bool isCage)
{
    Kept& last = kept();
    if (last.result != nullptr && last.shape == shape && last.source.lock() == mesh &&
        last.uvSetName == uvSetName && last.isCage == isCage) {
        return last.result;
    }
    last = Kept(); // the memory of the former goes first
    const session::ShownMesh shown =
        isCage ? session::ShownMesh{mesh, 0} : session::currentSession()->shownMesh(shape);
    std::shared_ptr<RenderStreams> result = extract(shown, mesh, uvSetName);
    if (!mesh->groups.empty()) {
        last = {shape, mesh, std::string(uvSetName), isCage, result};
    }
    return result;
}

Expected<std::shared_ptr<RenderStreams>> tessellationOf(session::NodeId shape)
{
    auto result = session::currentSession()->tessellation(shape);
    if (result == nullptr || result->indices.empty()) {
        return Error{ErrorCode::Failure, "a surface without geometry", {}};
    }
    return geometry::streamsOf(std::move(result));
}

} // namespace

Expected<std::shared_ptr<RenderStreams>> renderMeshOf(const MDagPath& path,
                                                      std::string_view uvSetName, bool isCage)
{
    const session::DagPath* held = Inside::pathOf(path);
    if (held == nullptr) {
        return Error{ErrorCode::NotFound, "no path of the open scene", {}};
    }
    if (path.hasFn(MFn::kNurbsSurface)) {
        return tessellationOf(held->end());
    }
    if (!path.hasFn(MFn::kMesh)) {
        return Error{ErrorCode::InvalidParameter, "no mesh or surface shape", {}};
    }
    const std::shared_ptr<const MeshData> mesh = session::currentSession()->mesh(held->end());
    if (mesh == nullptr || mesh->topology->faceCount() == 0) {
        return Error{ErrorCode::Failure, "a mesh without faces", {}};
    }
    return keptOrExtracted(held->end(), mesh, uvSetName, isCage);
}

} // namespace host::api
