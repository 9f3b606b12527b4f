// polyMapCut, polyMapSew, polyMapDel: where faces share texture coordinates.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/cutUvs.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr auto kInputs = meshInputs("uvSetName");
constexpr auto kCutInputs = meshInputs("uvSetName", "moveRatio");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t { kSetName = kFirstOwnInput, kMoveRatio };

using Operation = SharedMesh (*)(const MeshData& mesh, std::size_t set,
                                 std::span<const std::uint32_t> parts);

template<Operation operation>
Value changed(ComputeContext& context, const MeshTask& task, const std::string& setName,
              std::string_view kind)
{
    const geometry::MeshTopology& topology = *task.mesh->topology;
    const std::size_t count =
        kind == geometry::kFaceComponents ? topology.faceCount() : topology.edges.size();
    const auto parts = namedComponents(task, kind, count);
    if (!parts) {
        return meshResult(context, task, nullptr);
    }
    if (parts->empty()) {
        return task.passed();
    }
    return computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
        return operation(mesh, set, *parts);
    });
}

/// A cut that is also opened has its coordinates left where they are.
Expected<Value> cut(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    const bool isOpened = context.number(kMoveRatio, 0) != 0;
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    if (isOpened) {
        context.noteUncomputed();
    }
    return changed<geometry::cutUvs>(context, task, setName, geometry::kEdgeComponents);
}

Expected<Value> sew(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return changed<geometry::sewUvs>(context, task, setName, geometry::kEdgeComponents);
}

Expected<Value> remove(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return changed<geometry::deleteUvs>(context, task, setName, geometry::kFaceComponents);
}

} // namespace

constinit const NodeCompute kPolyMapCut{
    .type = "polyMapCut", .inputs = kCutInputs, .outputs = kOutputs, .compute = cut};
constinit const NodeCompute kPolyMapSew{
    .type = "polyMapSew", .inputs = kInputs, .outputs = kOutputs, .compute = sew};
constinit const NodeCompute kPolyMapDel{
    .type = "polyMapDel", .inputs = kInputs, .outputs = kOutputs, .compute = remove};

} // namespace host::nodes
