// polyMapCut, polyMapSew, polyMapDel: where faces share texture coordinates.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/cutUvs.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr auto kInputs = meshInputs("uvSetName");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kSetName = kFirstOwnInput;

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

/// The coordinates are right, their new numbers only believed: later nodes may name others by them.
template<Operation operation>
Expected<Value> changeBorders(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    Value result = changed<operation>(context, task, setName, geometry::kEdgeComponents);
    if (result.data<MeshData>() != task.mesh) {
        context.noteUncomputed();
    }
    return result;
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

constinit const NodeCompute kPolyMapCut{.type = "polyMapCut",
                                        .inputs = kInputs,
                                        .outputs = kOutputs,
                                        .compute = changeBorders<geometry::cutUvs>};
constinit const NodeCompute kPolyMapSew{.type = "polyMapSew",
                                        .inputs = kInputs,
                                        .outputs = kOutputs,
                                        .compute = changeBorders<geometry::sewUvs>};
constinit const NodeCompute kPolyMapDel{
    .type = "polyMapDel", .inputs = kInputs, .outputs = kOutputs, .compute = remove};

} // namespace host::nodes
