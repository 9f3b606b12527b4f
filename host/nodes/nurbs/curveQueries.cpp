// Numbers of curves: curveInfo, pointOnCurveInfo, nearestPointOnCurve.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/arcLength.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::CurveEvaluator;
using geometry::CurvePoint;

Value component(const Vec3d& vector, std::size_t axis)
{
    return Value(axis == 0 ? vector.x : axis == 1 ? vector.y : vector.z);
}

constexpr std::array<std::string_view, 1> kCurveInput{"inputCurve"};
constexpr std::array<std::string_view, 5> kInfoOutputs{"arcLength", "xValue", "yValue", "zValue",
                                                       "weights"};

/// Control points by their index as stored.
Value controlPoint(const geometry::CurveData& curve, std::size_t output, std::int32_t index)
{
    const std::size_t at = static_cast<std::size_t>(std::max(index, 0)) * curve.stride();
    if (at + curve.stride() > curve.poles.size() || curve.dimension != 3) {
        return {};
    }
    if (output == 4) {
        return Value(curve.rational ? curve.poles[at + 3] : 1.0);
    }
    return Value(curve.poles[at + output - 1]);
}

Expected<Value> computeInfo(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    if (context.output() != 0) {
        return controlPoint(*curve, context.output(), context.index());
    }
    const CurveEvaluator evaluator(*curve);
    return evaluator.isValid() ? Value(geometry::ArcLengthTable(evaluator).total()) : Value(0.0);
}

constexpr std::array<std::string_view, 3> kPointInputs{"inputCurve", "parameter",
                                                       "turnOnPercentage"};
constexpr std::array<std::string_view, 19> kPointOutputs{"positionX",
                                                         "positionY",
                                                         "positionZ",
                                                         "normalX",
                                                         "normalY",
                                                         "normalZ",
                                                         "normalizedNormalX",
                                                         "normalizedNormalY",
                                                         "normalizedNormalZ",
                                                         "tangentX",
                                                         "tangentY",
                                                         "tangentZ",
                                                         "normalizedTangentX",
                                                         "normalizedTangentY",
                                                         "normalizedTangentZ",
                                                         "curvatureCenterX",
                                                         "curvatureCenterY",
                                                         "curvatureCenterZ",
                                                         "curvatureRadius"};

/// Direction to the centre of curvature as long as the curvature, and the centre's distance.
struct Bend {
    Vec3d normal;
    double radius = 0;
};

/// Of C' and C'': the part of C'' across C' over |C'|^2 is the curvature vector.
Bend bendAt(const CurvePoint& point)
{
    Bend bend;
    const double speed = dot(point.first, point.first);
    if (!(speed > 0)) {
        return bend;
    }
    const Vec3d across = point.second - point.first * (dot(point.second, point.first) / speed);
    bend.normal = across * (1 / speed);
    const double curvature = length(bend.normal);
    bend.radius = curvature > 0 ? 1 / curvature : 0;
    return bend;
}

Expected<Value> computePoint(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    double u = context.number(1, 0);
    const bool isShare = flagInput(context, 2, false);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    const CurveEvaluator evaluator(*curve);
    if (!evaluator.isValid()) {
        return Value();
    }
    u = isShare ? evaluator.start() + u * (evaluator.end() - evaluator.start()) : u;
    const CurvePoint point = evaluator.evaluate(u);
    const std::size_t axis = context.output() % 3;
    const Bend bend = bendAt(point);
    switch (context.output() / 3) {
    case 0:
        return component(point.position, axis);
    case 1:
        return component(bend.normal, axis);
    case 2:
        return component(normalized(bend.normal), axis);
    case 3:
        return component(point.first, axis);
    case 4:
        return component(normalized(point.first), axis);
    case 5:
        return component(point.position + normalized(bend.normal) * bend.radius, axis);
    default:
        return Value(bend.radius);
    }
}

constexpr std::array<std::string_view, 4> kNearestInputs{"inputCurve", "inPositionX", "inPositionY",
                                                         "inPositionZ"};
constexpr std::array<std::string_view, 4> kNearestOutputs{"positionX", "positionY", "positionZ",
                                                          "parameter"};

Expected<Value> computeNearest(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const Vec3d target = vectorInput(context, 1, {});
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    const CurveEvaluator evaluator(*curve);
    if (!evaluator.isValid()) {
        return Value();
    }
    const double u = geometry::nearestParameter(evaluator, target);
    return context.output() == 3 ? Value(u) : component(evaluator.point(u), context.output());
}

} // namespace

constinit const NodeCompute kCurveInfo{
    .type = "curveInfo", .inputs = kCurveInput, .outputs = kInfoOutputs, .compute = computeInfo};
constinit const NodeCompute kPointOnCurveInfo{.type = "pointOnCurveInfo",
                                              .inputs = kPointInputs,
                                              .outputs = kPointOutputs,
                                              .compute = computePoint};
constinit const NodeCompute kNearestPointOnCurve{.type = "nearestPointOnCurve",
                                                 .inputs = kNearestInputs,
                                                 .outputs = kNearestOutputs,
                                                 .compute = computeNearest};

} // namespace host::nodes
