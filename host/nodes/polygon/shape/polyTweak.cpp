// polyTweak: offsets added to points.
#include "host/nodes/pointOffsets.h"
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("tweak", "tweakX", "tweakY", "tweakZ");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kTweak = kFirstOwnInput;

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const PointOffsets offsets(context, kTweak, kTweak + 1);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    if (!offsets.areWithin(task.mesh->topology->vertexCount)) {
        context.noteLack(Lack::Components);
    }
    return Value(offsets.applied(task.mesh));
}

} // namespace

constinit const NodeCompute kPolyTweak{
    .type = "polyTweak", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
