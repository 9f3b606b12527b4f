// deleteComponent: faces, edges and vertices taken out of a mesh.
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "host/geometry/mesh/edit/dissolveVertices.h"
#include "host/nodes/polygon/topology/componentOperation.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::MeshData;
using Texts = std::vector<std::string>;
using Numbers = std::vector<std::uint32_t>;

constexpr std::array<std::string_view, 3> kInputs{"inputGeometry", "deleteComponents", "nodeState"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};

/// The texts of one kind; the others stay behind.
Texts takeKind(Texts& texts, std::string_view kind)
{
    const auto isOther = [kind](const std::string& text) {
        return text.compare(0, text.find('['), kind) != 0;
    };
    const auto first = std::stable_partition(texts.begin(), texts.end(), isOther);
    Texts taken(std::make_move_iterator(first), std::make_move_iterator(texts.end()));
    texts.erase(first, texts.end());
    return taken;
}

struct DeletedParts {
    Numbers faces;
    Numbers edges;
    Numbers vertices;
    std::size_t kinds() const
    {
        return std::size_t{!faces.empty()} + std::size_t{!edges.empty()} +
               std::size_t{!vertices.empty()};
    }
};

/// What is to be deleted; nothing where the list names what the mesh does not have.
std::optional<DeletedParts> deletedParts(const MeshData& mesh, Texts texts)
{
    const auto take = [&](std::string_view kind) -> std::optional<Numbers> {
        const Texts taken = takeKind(texts, kind);
        const auto count = static_cast<std::uint32_t>(componentCount(mesh, kind));
        if (!geometry::doComponentsExist(taken, kind, count)) {
            return std::nullopt;
        }
        return geometry::parseComponentList(taken, kind, count);
    };
    const auto faces = take(geometry::kFaceComponents);
    const auto edges = take(geometry::kEdgeComponents);
    const auto vertices = take(geometry::kVertexComponents);
    if (!faces || !edges || !vertices || !texts.empty()) {
        return std::nullopt;
    }
    return DeletedParts{*faces, *edges, *vertices};
}

/// All numbers are those of the mesh that comes in: edges and vertices keep theirs until what is
/// loose goes at the end, and faces go first.
SharedMesh deleteMixed(const MeshData& mesh, const DeletedParts& parts)
{
    SharedMesh result = geometry::deleteFaces(mesh, parts.faces, {});
    if (result != nullptr && !parts.edges.empty()) {
        result = geometry::dissolveEdges(*result, parts.edges, {});
    }
    if (result != nullptr && !parts.vertices.empty()) {
        result = geometry::dissolveVertices(*result, parts.vertices, {});
    }
    return result != nullptr ? geometry::withoutLooseParts(*result) : nullptr;
}

SharedMesh deleteParts(const MeshData& mesh, const DeletedParts& parts)
{
    if (parts.kinds() > 1) {
        return deleteMixed(mesh, parts);
    }
    return !parts.faces.empty() ? geometry::deleteFaces(mesh, parts.faces, geometry::kCleanAll)
           : !parts.edges.empty()
               ? geometry::deleteEdges(mesh, parts.edges, false)
               : geometry::dissolveVertices(mesh, parts.vertices, geometry::kCleanAll);
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle() || task.components == nullptr ||
        task.components->components.empty()) {
        return task.passed();
    }
    const auto parts = deletedParts(*task.mesh, task.components->components);
    return meshResult(context, task, parts ? deleteParts(*task.mesh, *parts) : nullptr);
}

} // namespace

constinit const NodeCompute kDeleteComponent{
    .type = "deleteComponent", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
