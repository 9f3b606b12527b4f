// polyAverageVertex: vertices drawn towards their neighbours.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include "host/geometry/mesh/shape/averageVertices.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("iterations", "alpha", "beta");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kSteps = kFirstOwnInput;
constexpr std::size_t kAlpha = kSteps + 1;
constexpr std::size_t kBeta = kSteps + 2;
constexpr std::int32_t kDefaultSteps = 10;

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::int32_t steps =
        countInput(context, kSteps, kDefaultSteps, geometry::kMostAveragings, 0);
    const double alpha = context.number(kAlpha, 0.5);
    const double beta = context.number(kBeta, 0.7);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto vertices =
        namedComponents(task, geometry::kVertexComponents, task.mesh->topology->vertexCount);
    if (!vertices.has_value() || task.mesh->points == nullptr) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return Value(geometry::averageVertices(*task.mesh, *vertices, steps, alpha, beta));
}

} // namespace

constinit const NodeCompute kPolyAverageVertex{
    .type = "polyAverageVertex", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
