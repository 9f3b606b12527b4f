// cluster: points that go with one handle, each by its weight.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/clusterInputs.h"
#include "host/nodes/deform/deformTypes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs =
    deformerInputs("matrix", "bindPreMatrix", "geomMatrix", "relative", "weights");
enum Input : std::size_t { kHandle = kFirstDeformerInput, kWeights = kHandle + kHandleInputs };

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const Matrix4 matrix = handleMatrix(context, kHandle, deformation);
    const std::vector<Vec3d> before = pointsOf(deformation.geometry());
    const std::array<std::int32_t, 1> way{deformation.which()};
    const auto weights = pointWeights(context, kWeights, way, before.size());
    if (!context.isComplete() || matrix == Matrix4{}) {
        return deformation.geometry();
    }
    noteRelative(context, kHandle);
    std::vector<Vec3d> after = before;
    for (Vec3d& point : after) {
        point = transformPoint(point, matrix);
    }
    return deformation.moved(before, std::move(after), weights);
}

} // namespace

constinit const NodeCompute kCluster{
    .type = "cluster", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
