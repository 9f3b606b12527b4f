#include "host/api/src/renderMeshOf.h"

#include "host/api/src/Inside.h"

#include <string>

namespace host::api {
namespace {

using geometry::MeshData;
using geometry::RenderMesh;

/// The last result. It is known by the mesh value that it was made of; a value that is gone fits
/// no other.
struct Kept {
    std::weak_ptr<const MeshData> source;
    std::string uvSetName;
    std::shared_ptr<const RenderMesh> result;
};

Kept& kept()
{
    static Kept last;
    return last;
}

std::shared_ptr<const RenderMesh> extract(const std::shared_ptr<const MeshData>& mesh,
                                          std::string_view uvSetName)
{
    Kept& last = kept();
    if (last.result != nullptr && last.source.lock() == mesh && last.uvSetName == uvSetName) {
        return last.result;
    }
    last = Kept(); // the memory of the former goes first
    std::shared_ptr<const RenderMesh> result =
        std::make_shared<RenderMesh>(geometry::extractRenderMesh(*mesh, uvSetName));
    if (!mesh->groups.empty()) {
        last = {mesh, std::string(uvSetName), result};
    }
    return result;
}

Expected<std::shared_ptr<const RenderMesh>> tessellationOf(session::NodeId shape)
{
    auto result = session::currentSession()->tessellation(shape);
    if (result == nullptr || result->indices.empty()) {
        return Error{ErrorCode::Failure, "a surface without geometry", {}};
    }
    return result;
}

} // namespace

Expected<std::shared_ptr<const RenderMesh>> renderMeshOf(const MDagPath& path,
                                                         std::string_view uvSetName)
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
    return extract(mesh, uvSetName);
}

} // namespace host::api
