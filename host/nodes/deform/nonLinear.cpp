// nonLinear: geometry bent, twisted, flared, squashed or waved in the space of a handle.
#include "host/nodes/deform/nonLinear.h"

#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/deformTypes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = deformerInputs("deformerData", "matrix", "weights");
enum Input : std::size_t { kShape = kFirstDeformerInput, kHandle, kWeights };

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const Value data = context.input(kShape);
    const Matrix4 handle = matrixOf(context.input(kHandle));
    const Matrix4 world = deformation.worldMatrix();
    const std::vector<Vec3d> before = pointsOf(deformation.geometry());
    const std::array<std::int32_t, 1> way{deformation.which()};
    const auto weights = pointWeights(context, kWeights, way, before.size());
    if (!context.isComplete()) {
        return Value();
    }
    const auto shape = shapeOf(data);
    if (!shape) {
        return deformation.passed();
    }
    if (!geometry::isWellKnown(*shape)) {
        context.noteUncomputed();
    }
    const Matrix4 toHandle = world * inverse(handle);
    const Matrix4 back = inverse(toHandle);
    std::vector<Vec3d> after = before;
    for (Vec3d& point : after) {
        point = transformPoint(point, toHandle);
    }
    geometry::applyShape(*shape, after);
    for (Vec3d& point : after) {
        point = transformPoint(point, back);
    }
    return deformation.moved(before, std::move(after), weights);
}

} // namespace

constinit const NodeCompute kNonLinear{
    .type = "nonLinear", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
