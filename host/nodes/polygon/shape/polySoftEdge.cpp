// polySoftEdge: edges hard where their faces meet at more than an angle, soft elsewhere.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include "host/geometry/mesh/shape/softenEdges.h"

#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("inputMatrix", "worldSpace", "angle");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kMatrix = kFirstOwnInput;
constexpr std::size_t kWorldSpace = kMatrix + 1;
constexpr std::size_t kAngle = kMatrix + 2;
constexpr double kDefaultAngle = std::numbers::pi / 6;

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const Matrix4 world = matrixOf(context.input(kMatrix));
    const bool isInWorld = flagInput(context, kWorldSpace, false);
    const double angle = context.number(kAngle, kDefaultAngle);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto edges =
        namedComponents(task, geometry::kEdgeComponents, task.mesh->topology->edges.size());
    if (!edges.has_value()) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return meshResult(
        context, task,
        geometry::softenEdges(*task.mesh, *edges, angle, isInWorld ? world : Matrix4{}));
}

} // namespace

constinit const NodeCompute kPolySoftEdge{
    .type = "polySoftEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
