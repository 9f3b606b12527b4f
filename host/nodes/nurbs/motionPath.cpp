// motionPath: a place on a curve, and the rotation of what follows it.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/arcLength.h"
#include "host/math/decompose.h"
#include "host/math/rotation.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::CurveEvaluator;
using geometry::CurvePoint;

constexpr std::array<std::string_view, 18> kInputs{
    "geometryPath",   "uValue",         "fractionMode",  "follow",      "frontAxis",
    "upAxis",         "inverseFront",   "inverseUp",     "worldUpType", "worldUpVectorX",
    "worldUpVectorY", "worldUpVectorZ", "worldUpMatrix", "frontTwist",  "upTwist",
    "sideTwist",      "rotateOrder",    "bank"};
constexpr std::array<std::string_view, 7> kOutputs{
    "xCoordinate", "yCoordinate", "zCoordinate", "rotateX", "rotateY", "rotateZ", "orientMatrix"};
constexpr std::size_t kOrientMatrix = 6;

struct Follow {
    bool isOn = false;
    std::size_t frontAxis = 1, upAxis = 2;
    bool invertsFront = false, invertsUp = false;
    int upType = 3; ///< 0 scene, 1 object, 2 object's rotation, 3 vector, 4 the curve's normal
    Vec3d upVector{0, 1, 0};
    Matrix4 upMatrix;
    Vec3d twist; ///< front, up, side
    bool banks = false;
};

Follow readFollow(ComputeContext& context)
{
    Follow follow;
    follow.isOn = flagInput(context, 3, false);
    follow.frontAxis = static_cast<std::size_t>(wholeInput(context, 4, 1, 0, 2));
    follow.upAxis = static_cast<std::size_t>(wholeInput(context, 5, 2, 0, 2));
    follow.invertsFront = flagInput(context, 6, false);
    follow.invertsUp = flagInput(context, 7, false);
    follow.upType = wholeInput(context, 8, 3, 0, 4);
    follow.upVector = vectorInput(context, 9, {0, 1, 0});
    follow.upMatrix = matrixOf(context.input(12));
    follow.twist = {context.number(13, 0), context.number(14, 0), context.number(15, 0)};
    follow.banks = flagInput(context, 17, false);
    return follow;
}

Vec3d upDirection(const Follow& follow, const CurvePoint& point)
{
    switch (follow.upType) {
    case 0:
        return {0, 1, 0};
    case 1:
        return transformPoint({}, follow.upMatrix) - point.position;
    case 2:
        return transformVector(follow.upVector, follow.upMatrix);
    case 4:
        return point.second;
    default:
        return follow.upVector;
    }
}

/// Any direction across `front`.
Vec3d anyAcross(const Vec3d& front)
{
    const bool isNearX = std::fabs(front.x) > std::fabs(front.y);
    return normalized(cross(front, isNearX ? Vec3d{0, 1, 0} : Vec3d{1, 0, 0}));
}

Vec3d unitAxis(std::size_t axis)
{
    return {axis == 0 ? 1.0 : 0.0, axis == 1 ? 1.0 : 0.0, axis == 2 ? 1.0 : 0.0};
}

void setRow(Matrix4& matrix, std::size_t row, const Vec3d& vector)
{
    matrix.m[row] = {vector.x, vector.y, vector.z, 0};
}

/// The local front axis along the curve, the up axis as near to the up direction as that allows;
/// twists turn about the local axes before.
Matrix4 orientation(const Follow& follow, const CurvePoint& point)
{
    const Vec3d tangent = normalized(point.first);
    if (!follow.isOn || !(dot(tangent, tangent) > 0)) {
        return {};
    }
    const std::size_t upAxis =
        follow.upAxis == follow.frontAxis ? (follow.frontAxis + 1) % 3 : follow.upAxis;
    const std::size_t sideAxis = 3 - follow.frontAxis - upAxis;
    const Vec3d front = follow.invertsFront ? tangent * -1 : tangent;
    const Vec3d given = upDirection(follow, point) * (follow.invertsUp ? -1.0 : 1.0);
    const Vec3d rest = given - front * dot(given, front);
    const bool isUsable = length(rest) > 1e-9 * length(given);
    const Vec3d up = isUsable ? normalized(rest) : anyAcross(front);
    // The third axis makes the three right-handed.
    const bool isCyclic = (follow.frontAxis + 1) % 3 == upAxis;
    const Vec3d side = isCyclic ? cross(front, up) : cross(up, front);
    Matrix4 matrix;
    setRow(matrix, follow.frontAxis, front);
    setRow(matrix, upAxis, up);
    setRow(matrix, sideAxis, side);
    const Vec3d angles = unitAxis(follow.frontAxis) * follow.twist.x +
                         unitAxis(upAxis) * follow.twist.y + unitAxis(sideAxis) * follow.twist.z;
    return eulerRotation(angles, RotationOrder::Xyz) * matrix;
}

Expected<Value> compute(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    double u = context.number(1, 0);
    const bool isFraction = flagInput(context, 2, false);
    const Follow follow = readFollow(context);
    const RotationOrder order = rotationOrderFromNumber(context.number(16, 0));
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    const CurveEvaluator evaluator(*curve);
    if (!evaluator.isValid()) {
        return Value();
    }
    if (isFraction) {
        const geometry::ArcLengthTable lengths(evaluator);
        u = lengths.parameterAt(u * lengths.total());
    }
    const CurvePoint point = evaluator.evaluate(u);
    if (follow.isOn && follow.banks) {
        context.noteUncomputed(); // without the roll into bends
    }
    const std::size_t output = context.output();
    if (output < 3) {
        const std::array<double, 3> place{point.position.x, point.position.y, point.position.z};
        return Value(place[output]);
    }
    const Matrix4 matrix = orientation(follow, point);
    if (output == kOrientMatrix) {
        return matrixValue(matrix);
    }
    const Vec3d angles = decompose(matrix, order).rotate;
    return Value(output == 3 ? angles.x : output == 4 ? angles.y : angles.z);
}

} // namespace

constinit const NodeCompute kMotionPath{
    .type = "motionPath", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
