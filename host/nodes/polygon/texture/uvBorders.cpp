// polyMapCut, polyMapSew, polyMapSewMove, polyMergeUV, polyMapDel: where faces share texture
// coordinates.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/cutUvs.h"
#include "host/geometry/mesh/texture/joinUvs.h"

#include <limits>

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr auto kInputs = meshInputs("uvSetName");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kSetName = kFirstOwnInput;

constexpr auto kSewMoveInputs = meshInputs("uvSetName", "limitPieceSize", "numberFaces");
enum SewMovePosition : std::size_t { kIsLimited = kSetName + 1, kFaceLimit };
constexpr auto kMergeInputs = meshInputs("uvSetName", "distance");
constexpr std::size_t kDistance = kSetName + 1;

using Parts = std::span<const std::uint32_t>;

template<class Operation>
Value changed(ComputeContext& context, const MeshTask& task, const std::string& setName,
              std::string_view kind, const Operation& operation)
{
    const geometry::MeshTopology& topology = *task.mesh->topology;
    const std::size_t count =
        kind == geometry::kFaceComponents ? topology.faceCount() : topology.edges.size();
    const auto parts = namedComponents(task, kind, count);
    if (!parts) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    if (parts->empty()) {
        return task.passed();
    }
    return computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
        return operation(mesh, set, *parts);
    });
}

/// The coordinates are right, their new numbers only believed: later nodes may name others by them.
Value noted(ComputeContext& context, const MeshTask& task, Value result)
{
    if (result.data<MeshData>() != task.mesh) {
        context.noteLack(Lack::Textures);
    }
    return result;
}

using BorderOperation = SharedMesh (*)(const MeshData& mesh, std::size_t set, Parts edges);

template<BorderOperation operation>
Expected<Value> changeBorders(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return noted(context, task,
                 changed(context, task, setName, geometry::kEdgeComponents, operation));
}

Expected<Value> moveAndSew(ComputeContext& context)
{
    constexpr std::int32_t kAnyCount = std::numeric_limits<std::int32_t>::max();
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    const bool isLimited = flagInput(context, kIsLimited, false);
    const std::int32_t limit = wholeInput(context, kFaceLimit, 10, 0, kAnyCount);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto most = static_cast<std::uint32_t>(isLimited ? limit : kAnyCount);
    return noted(context, task,
                 changed(context, task, setName, geometry::kEdgeComponents,
                         [most](const MeshData& mesh, std::size_t set, Parts edges) {
                             return geometry::moveAndSewUvs(mesh, set, edges, most);
                         }));
}

Expected<Value> merge(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    const double distance = context.number(kDistance, 0);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return noted(context, task,
                 computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
                     const auto ids = namedUvs(task, set);
                     return ids && !ids->empty() ? geometry::mergeUvs(mesh, set, *ids, distance)
                            : ids                ? task.mesh
                                                 : SharedMesh();
                 }));
}

Expected<Value> remove(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return changed(context, task, setName, geometry::kFaceComponents, geometry::deleteUvs);
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
constinit const NodeCompute kPolyMapSewMove{
    .type = "polyMapSewMove", .inputs = kSewMoveInputs, .outputs = kOutputs, .compute = moveAndSew};
constinit const NodeCompute kPolyMergeUV{
    .type = "polyMergeUV", .inputs = kMergeInputs, .outputs = kOutputs, .compute = merge};
constinit const NodeCompute kPolyMapDel{
    .type = "polyMapDel", .inputs = kInputs, .outputs = kOutputs, .compute = remove};

} // namespace host::nodes
