// skinCluster: points that go with joints, each by its weights.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/deform/skinInputs.h"

#include "host/geometry/deform/skinPoints.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = deformerInputs(
    "geomMatrix", "matrix", "bindPreMatrix", "weights", "normalizeWeights", "skinningMethod",
    "blendWeights", "dqsSupportNonRigid", "useComponents", "driverPoints", "relativeSpaceMode");
enum Input : std::size_t {
    kGeomMatrix = kFirstDeformerInput,
    kMatrix,
    kBindPreMatrix,
    kWeights,
    kNormalizeWeights,
    kSkinningMethod,
    kBlendWeights,
    kSupportNonRigid,
    kUseComponents,
    kDriverPoints,
    kRelativeSpaceMode
};

constexpr double kNormalizedAfterwards = 2;
enum SkinningMethod : std::int32_t { kLinear = 0, kDualQuaternion = 1, kBlended = 2 };

/// What every influence does to the points, in the space of the geometry.
std::vector<Matrix4> influenceMatrices(ComputeContext& context, const SkinTable& table)
{
    const Matrix4 geometry = matrixOf(context.input(kGeomMatrix));
    const Matrix4 back = inverse(geometry);
    std::vector<Matrix4> matrices;
    matrices.reserve(table.influences.size());
    for (const std::int32_t influence : table.influences) {
        const Matrix4 bind = matrixOf(context.element(kBindPreMatrix, influence));
        const Matrix4 now = matrixOf(context.element(kMatrix, influence));
        matrices.push_back(geometry * bind * now * back);
    }
    return matrices;
}

void moveByDualQuaternions(const SkinTable& table, const std::vector<Matrix4>& matrices,
                           bool isStretched, std::span<Vec3d> points)
{
    std::vector<geometry::RigidMotion> motions;
    motions.reserve(matrices.size());
    for (const Matrix4& matrix : matrices) {
        motions.push_back(geometry::rigidMotion(matrix));
    }
    geometry::skinDualQuaternion(table.weights, motions, isStretched, points);
}

/// Each point between the two ways of blending, by its own weight: 0 is linear.
void blend(std::vector<Vec3d>& linear, const std::vector<Vec3d>& dual,
           const std::vector<float>& weights)
{
    for (std::size_t point = 0; point < weights.size(); ++point) {
        linear[point] = linear[point] + (dual[point] - linear[point]) * double{weights[point]};
    }
}

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    const bool isNormalized = context.number(kNormalizeWeights, 1) == kNormalizedAfterwards;
    const std::int32_t method = wholeInput(context, kSkinningMethod, kLinear, kLinear, kBlended);
    const bool isStretched = flagInput(context, kSupportNonRigid, false);
    const bool hasOtherInfluences = flagInput(context, kUseComponents, false) &&
                                    !context.connectedIndices(kDriverPoints).empty();
    const bool isRelative = context.number(kRelativeSpaceMode, 0) != 0;
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const auto table = skinTable(context, kWeights, isNormalized);
    const std::vector<Matrix4> matrices = influenceMatrices(context, *table);
    if (!context.isComplete()) {
        return Value();
    }
    if (hasOtherInfluences || isRelative || table->hasLostInfluences) {
        context.noteUncomputed();
    }
    const std::vector<Vec3d> before = pointsOf(deformation.geometry());
    std::vector<Vec3d> after = before;
    if (method == kDualQuaternion) {
        moveByDualQuaternions(*table, matrices, isStretched, after);
    } else {
        geometry::skinLinear(table->weights, matrices, after);
    }
    if (method == kBlended) {
        const auto weights = pointWeights(context, kBlendWeights, {}, before.size(), 0);
        std::vector<Vec3d> dual = before;
        moveByDualQuaternions(*table, matrices, isStretched, dual);
        blend(after, dual, weights);
    }
    return context.isComplete() ? deformation.moved(before, std::move(after)) : Value();
}

} // namespace

constinit const NodeCompute kSkinCluster{
    .type = "skinCluster", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
