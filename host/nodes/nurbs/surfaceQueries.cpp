// Numbers of surfaces: pointOnSurfaceInfo, closestPointOnSurface.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/surfaceAlgebra.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::SurfaceEvaluator;
using geometry::SurfacePoint;

Value component(const Vec3d& vector, std::size_t axis)
{
    return Value(axis == 0 ? vector.x : axis == 1 ? vector.y : vector.z);
}

constexpr std::array<std::string_view, 4> kPointInputs{"inputSurface", "parameterU", "parameterV",
                                                       "turnOnPercentage"};
constexpr std::array<std::string_view, 21> kPointOutputs{"positionX",
                                                         "positionY",
                                                         "positionZ",
                                                         "normalX",
                                                         "normalY",
                                                         "normalZ",
                                                         "normalizedNormalX",
                                                         "normalizedNormalY",
                                                         "normalizedNormalZ",
                                                         "tangentUx",
                                                         "tangentUy",
                                                         "tangentUz",
                                                         "normalizedTangentUX",
                                                         "normalizedTangentUY",
                                                         "normalizedTangentUZ",
                                                         "tangentVx",
                                                         "tangentVy",
                                                         "tangentVz",
                                                         "normalizedTangentVX",
                                                         "normalizedTangentVY",
                                                         "normalizedTangentVZ"};

Expected<Value> computePoint(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    double u = context.number(1, 0);
    double v = context.number(2, 0);
    const bool areShares = flagInput(context, 3, false);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    const SurfaceEvaluator evaluator(*surface);
    if (!evaluator.isValid()) {
        return Value();
    }
    if (areShares) {
        u = evaluator.startU() + u * (evaluator.endU() - evaluator.startU());
        v = evaluator.startV() + v * (evaluator.endV() - evaluator.startV());
    }
    const SurfacePoint point = evaluator.evaluate(u, v);
    const std::array<Vec3d, 7> results{
        point.position, cross(point.du, point.dv), point.normal, point.du, normalized(point.du),
        point.dv,       normalized(point.dv)};
    return component(results[context.output() / 3], context.output() % 3);
}

constexpr std::array<std::string_view, 4> kClosestInputs{"inputSurface", "inPositionX",
                                                         "inPositionY", "inPositionZ"};
constexpr std::array<std::string_view, 5> kClosestOutputs{"positionX", "positionY", "positionZ",
                                                          "parameterU", "parameterV"};

Expected<Value> computeClosest(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const Vec3d target = vectorInput(context, 1, {});
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    const SurfaceEvaluator evaluator(*surface);
    if (!evaluator.isValid()) {
        return Value();
    }
    const geometry::SurfaceParameters at = geometry::nearestParameters(*surface, target);
    if (context.output() >= 3) {
        return Value(context.output() == 3 ? at.u : at.v);
    }
    return component(evaluator.point(at.u, at.v), context.output());
}

} // namespace

constinit const NodeCompute kPointOnSurfaceInfo{.type = "pointOnSurfaceInfo",
                                                .inputs = kPointInputs,
                                                .outputs = kPointOutputs,
                                                .compute = computePoint};
constinit const NodeCompute kClosestPointOnSurface{.type = "closestPointOnSurface",
                                                   .inputs = kClosestInputs,
                                                   .outputs = kClosestOutputs,
                                                   .compute = computeClosest};

} // namespace host::nodes
