// createUVSet, deleteUVSet, copyUVSet, polyCopyUV: whole sets of texture coordinates.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/uvSets.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr std::array<std::string_view, 2> kSetInputs{"inputGeometry", "uvSetName"};
constexpr std::array<std::string_view, 3> kCopySetInputs{"inputGeometry", "uvSetName",
                                                         "uvSetName2"};
constexpr std::array<std::string_view, 1> kSetOutputs{"outputGeometry"};
constexpr auto kCopyInputs = meshInputs("uvSetName", "uvSetNameInput");
constexpr std::array<std::string_view, 1> kOutputs{"output"};

/// What the nodes on whole sets have in common.
struct SetTask {
    explicit SetTask(ComputeContext& context)
        : input(context.input(0)), mesh(input.data<MeshData>()), name(textInput(context, 1))
    {
    }
    Value input;
    SharedMesh mesh;
    std::string name;
};

Expected<Value> createSet(ComputeContext& context)
{
    const SetTask task(context);
    if (!context.isComplete() || task.mesh == nullptr || task.name.empty() ||
        geometry::findUvSet(*task.mesh, task.name)) {
        return task.input;
    }
    return Value(geometry::withUvSet(*task.mesh, task.name));
}

Expected<Value> deleteSet(ComputeContext& context)
{
    const SetTask task(context);
    const bool isThere = context.isComplete() && task.mesh != nullptr && !task.name.empty();
    const auto set = isThere ? geometry::findUvSet(*task.mesh, task.name) : std::nullopt;
    return set ? Value(geometry::withoutUvSet(*task.mesh, *set)) : task.input;
}

Expected<Value> copySet(ComputeContext& context)
{
    const SetTask task(context);
    const std::string target = textInput(context, 2);
    if (!context.isComplete() || task.mesh == nullptr || target.empty()) {
        return task.input;
    }
    const auto set = geometry::findUvSet(*task.mesh, task.name);
    return set ? Value(geometry::withCopiedUvSet(*task.mesh, *set, target)) : task.input;
}

/// The set that a name stands for, as a name.
std::string nameOfSet(const MeshData& mesh, const std::string& name)
{
    const auto set = geometry::findUvSet(mesh, name);
    return set ? mesh.uvSets[*set].name : name;
}

Expected<Value> copyFaces(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string target = textInput(context, kFirstOwnInput);
    const std::string source = textInput(context, kFirstOwnInput + 1);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const MeshData& mesh = *task.mesh;
    const auto faces = namedComponents(task, geometry::kFaceComponents, mesh.topology->faceCount());
    if (!faces) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    const std::string name = nameOfSet(mesh, target);
    if (faces->empty() || name == nameOfSet(mesh, source)) {
        return task.passed();
    }
    return computeOnUvSet(context, task, source, [&](const MeshData& from, std::size_t set) {
        return faces->size() == from.topology->faceCount()
                   ? geometry::withCopiedUvSet(from, set, name)
                   : geometry::withCopiedUvs(from, set, name, *faces);
    });
}

} // namespace

constinit const NodeCompute kCreateUVSet{
    .type = "createUVSet", .inputs = kSetInputs, .outputs = kSetOutputs, .compute = createSet};
constinit const NodeCompute kDeleteUVSet{
    .type = "deleteUVSet", .inputs = kSetInputs, .outputs = kSetOutputs, .compute = deleteSet};
constinit const NodeCompute kCopyUVSet{
    .type = "copyUVSet", .inputs = kCopySetInputs, .outputs = kSetOutputs, .compute = copySet};
constinit const NodeCompute kPolyCopyUV{
    .type = "polyCopyUV", .inputs = kCopyInputs, .outputs = kOutputs, .compute = copyFaces};

} // namespace host::nodes
