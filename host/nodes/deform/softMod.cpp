// softMod: points near a centre that go with a handle, less and less with their distance.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/clusterInputs.h"
#include "host/nodes/deform/deformTypes.h"

#include "host/geometry/hair/Ramp.h"

namespace host::nodes {
namespace {

constexpr auto kInputs =
    deformerInputs("matrix", "bindPreMatrix", "geomMatrix", "relative", "weights", "falloffRadius",
                   "falloffCenterX", "falloffCenterY", "falloffCenterZ", "falloffCurve_Position",
                   "falloffCurve_FloatValue", "falloffCurve_Interp", "falloffInX", "falloffInY",
                   "falloffInZ", "falloffMode");
enum Input : std::size_t {
    kHandle = kFirstDeformerInput,
    kWeights = kHandle + kHandleInputs,
    kRadius,
    kCenter,
    kPosition = kCenter + 3,
    kFloatValue,
    kInterp,
    kInX,
    kMode = kInX + 3
};

constexpr double kDefaultRadius = 5;

geometry::Ramp<double> falloffCurve(ComputeContext& context)
{
    std::vector<geometry::RampEntry<double>> entries;
    for (const std::int32_t index : context.elementIndices(kPosition)) {
        entries.push_back(
            {context.element(kPosition, index).number(0),
             context.element(kFloatValue, index).number(0),
             geometry::rampBlendFromNumber(context.element(kInterp, index).number(1))});
    }
    return geometry::Ramp<double>(std::move(entries));
}

struct Falloff {
    geometry::Ramp<double> curve;
    double radius = kDefaultRadius;
    Vec3d center;
    std::array<double, 3> axes{1, 1, 1}; ///< 0: the distance along the axis does not count

    /// 1 at the centre, 0 from the radius on; the curve's places run from the radius inwards.
    double at(const Vec3d& point) const
    {
        const Vec3d way = point - center;
        const double distance = length({way.x * axes[0], way.y * axes[1], way.z * axes[2]});
        const double place = 1 - distance / radius;
        return place > 0 ? curve.at(place, place) : 0;
    }
};

Falloff readFalloff(ComputeContext& context)
{
    Falloff falloff;
    falloff.curve = falloffCurve(context);
    falloff.radius = std::fmax(context.number(kRadius, kDefaultRadius), 1e-9);
    falloff.center = vectorInput(context, kCenter, {});
    for (std::size_t axis = 0; axis < 3; ++axis) {
        falloff.axes[axis] = flagInput(context, kInX + axis, true) ? 1 : 0;
    }
    return falloff;
}

/// The weights of points times what the distance leaves of them.
std::vector<float> fading(const std::vector<Vec3d>& points, const Matrix4& world,
                          const Falloff& falloff, std::vector<float> weights)
{
    weights.resize(points.size(), 1);
    for (std::size_t point = 0; point < points.size(); ++point) {
        const double share = falloff.at(transformPoint(points[point], world));
        weights[point] = static_cast<float>(double{weights[point]} * share);
    }
    return weights;
}

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const Matrix4 matrix = handleMatrix(context, kHandle, deformation);
    const Falloff falloff = readFalloff(context);
    const bool goesAlongSurface = context.number(kMode, 0) != 0;
    const Matrix4 world = deformation.worldMatrix();
    const std::vector<Vec3d> before = pointsOf(deformation.geometry());
    const std::array<std::int32_t, 1> way{deformation.which()};
    std::vector<float> weights = pointWeights(context, kWeights, way, before.size());
    if (!context.isComplete() || matrix == Matrix4{}) {
        return deformation.geometry();
    }
    noteRelative(context, kHandle);
    if (goesAlongSurface) { // straight distances stand in for those along the surface
        context.noteUncomputed();
    }
    std::vector<Vec3d> after = before;
    for (Vec3d& point : after) {
        point = transformPoint(point, matrix);
    }
    return deformation.moved(before, std::move(after),
                             fading(before, world, falloff, std::move(weights)));
}

} // namespace

constinit const NodeCompute kSoftMod{
    .type = "softMod", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
