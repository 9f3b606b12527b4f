// polyNormal: faces turned round.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"

#include "host/geometry/mesh/shape/turnFaces.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("normalMode", "userNormalMode");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kMode = kFirstOwnInput;
constexpr std::size_t kTurnsLocked = kMode + 1;
constexpr std::int32_t kLastMode = 4;

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::int32_t mode = wholeInput(context, kMode, 0, 0, kLastMode);
    const bool turnsLocked = flagInput(context, kTurnsLocked, true);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto faces =
        namedComponents(task, geometry::kFaceComponents, task.mesh->topology->faceCount());
    if (!faces.has_value()) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return meshResult(context, task,
                      geometry::turnFaces(*task.mesh, *faces, static_cast<geometry::TurnMode>(mode),
                                          turnsLocked));
}

} // namespace

constinit const NodeCompute kPolyNormal{
    .type = "polyNormal", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
