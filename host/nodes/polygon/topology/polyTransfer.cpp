// polyTransfer: points and texture coordinates of another mesh, number by number. Colours are not
// kept.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/texture/transferUvs.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("otherPoly", "vertices", "uvSets");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kOther = kFirstOwnInput, kVertices, kUvSets };

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const auto other = context.input(kOther).data<geometry::MeshData>();
    const bool takesPoints = flagInput(context, kVertices, false);
    const bool takesUvs = flagInput(context, kUvSets, true);
    if (!context.isComplete() || task.isIdle() || other == nullptr) {
        return task.passed();
    }
    const geometry::MeshTopology& topology = *task.mesh->topology;
    const bool hasPoints =
        other->points != nullptr && other->topology->vertexCount == topology.vertexCount;
    const bool hasUvs = geometry::haveSameCorners(topology, *other->topology);
    if ((takesPoints && !hasPoints) || (takesUvs && !hasUvs)) {
        context.noteLack(Lack::Input);
    }
    auto mesh = std::make_shared<geometry::MeshData>(*task.mesh);
    if (takesPoints && hasPoints) {
        mesh->points = other->points;
    }
    if (takesUvs && hasUvs) {
        mesh->uvSets = other->uvSets;
        mesh->currentUvSet = other->currentUvSet;
    }
    return Value(SharedMesh(std::move(mesh)));
}

} // namespace

constinit const NodeCompute kPolyTransfer{
    .type = "polyTransfer", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
