// polyUnite: several meshes in one.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/uniteMeshes.h"

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 4> kInputs{"inputPoly", "inputMat", "mergeUVSets",
                                                  "nodeState"};
enum Position : std::size_t { kPoly, kMatrix, kMergeUvSets, kState };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

geometry::UvSetMerging uvSetMerging(double number)
{
    return number == 0   ? geometry::UvSetMerging::None
           : number == 2 ? geometry::UvSetMerging::ByLinks
                         : geometry::UvSetMerging::ByName;
}

Expected<Value> compute(ComputeContext& context)
{
    std::vector<SharedMesh> meshes;
    std::vector<geometry::UnitedMesh> parts;
    for (const std::int32_t index : context.elementIndices(kPoly)) {
        const auto mesh = context.element(kPoly, index).data<geometry::MeshData>();
        const Matrix4 matrix = matrixOf(context.element(kMatrix, index));
        if (mesh != nullptr) {
            meshes.push_back(mesh);
            parts.push_back({mesh.get(), matrix});
        }
    }
    const auto merging = uvSetMerging(context.number(kMergeUvSets, 1));
    const bool hasNoEffect = context.number(kState, 0) == 1;
    if (!context.isComplete() || parts.empty()) {
        return Value();
    }
    const SharedMesh united = hasNoEffect ? meshes.front() : geometry::uniteMeshes(parts, merging);
    if (united == nullptr) {
        context.noteUncomputed();
    }
    return Value(united != nullptr ? united : meshes.front());
}

} // namespace

constinit const NodeCompute kPolyUnite{
    .type = "polyUnite", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
