// tweak: moves points of what passes: control points of curves and surfaces, vertices of meshes.
#include "host/nodes/nurbs/controlPointTweaks.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/repeatOverlap.h"

#include <algorithm>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 10> kInputs{
    "inputGeometry", "envelope", "nodeState", "relativeTweak", "xValue",
    "yValue",        "zValue",   "xVertex",   "yVertex",       "zVertex"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};
constexpr std::size_t kControlPoints = 4;
constexpr std::size_t kVertices = 7;

Value tweakedMesh(const Shared<geometry::MeshData>& mesh, const ControlPointTweaks& tweaks)
{
    if (mesh->points == nullptr) {
        return Value(mesh);
    }
    auto points = std::make_shared<std::vector<Vec3f>>(*mesh->points);
    for (const ControlPointTweaks::Entry& entry : tweaks.entries) {
        if (entry.index >= points->size()) {
            break;
        }
        Vec3f& point = (*points)[entry.index];
        const std::array<float*, 3> numbers{&point.x, &point.y, &point.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto value = static_cast<float>(entry.values[axis]);
            if (entry.isSet[axis]) {
                *numbers[axis] = tweaks.isRelative ? *numbers[axis] + value : value;
            }
        }
    }
    auto moved = std::make_shared<geometry::MeshData>(*mesh);
    moved->points = std::move(points);
    return Value(Shared<geometry::MeshData>(std::move(moved)));
}

Value tweakedCurve(geometry::CurveData curve, const ControlPointTweaks& tweaks)
{
    if (curve.dimension == 3) {
        applyTweaks(tweaks, curve.stride(), curve.poles);
        geometry::repeatOverlap(curve);
    }
    return Value::of(std::move(curve));
}

Value tweakedSurface(geometry::SurfaceData surface, const ControlPointTweaks& tweaks)
{
    if (geometry::isValidSurface(surface)) {
        applyTweaks(tweaks, surface.stride(), surface.poles);
        geometry::repeatOverlap(surface);
    }
    return Value::of(std::move(surface));
}

void scale(ControlPointTweaks& tweaks, double factor)
{
    for (ControlPointTweaks::Entry& entry : tweaks.entries) {
        for (double& value : entry.values) {
            value *= factor;
        }
    }
}

/// Each geometry that passes has its points under its own index.
Expected<Value> compute(ComputeContext& context)
{
    const std::array<std::int32_t, 1> which{std::max(0, context.index())};
    const Value input = context.element(0, which);
    const double envelope = context.number(1, 1);
    const bool isOff = envelope == 0 || context.number(2, 0) == 1;
    ControlPointTweaks tweaks;
    tweaks.isRelative = flagInput(context, 3, true);
    const auto mesh = input.data<geometry::MeshData>();
    tweaks.entries = readPoints(context, mesh != nullptr ? kVertices : kControlPoints, which);
    if (!context.isComplete() || isOff || tweaks.empty()) {
        return input;
    }
    if (tweaks.isRelative && envelope != 1) {
        scale(tweaks, envelope);
    }
    if (mesh != nullptr) {
        return tweakedMesh(mesh, tweaks);
    }
    if (const auto curve = input.data<geometry::CurveData>()) {
        return tweakedCurve(*curve, tweaks);
    }
    if (const auto surface = input.data<geometry::SurfaceData>()) {
        return tweakedSurface(*surface, tweaks);
    }
    return input;
}

} // namespace

constinit const NodeCompute kTweak{
    .type = "tweak", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
