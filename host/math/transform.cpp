#include "host/math/transform.h"

namespace host {
namespace {

/// matrix * translation(offset), for a matrix whose fourth column is (0 0 0 1).
void appendTranslation(Matrix4& matrix, const Vec3d& offset)
{
    matrix.m[3][0] += offset.x;
    matrix.m[3][1] += offset.y;
    matrix.m[3][2] += offset.z;
}

void appendFactor(Matrix4& matrix, const Matrix4& factor)
{
    static constexpr Matrix4 kIdentity{};
    if (factor != kIdentity) {
        matrix = matrix * factor;
    }
}

Matrix4 inverseScaling(const Vec3d& scale)
{
    const auto divisor = [](double value) { return value == 0 ? 1.0 : value; };
    return scaling({1 / divisor(scale.x), 1 / divisor(scale.y), 1 / divisor(scale.z)});
}

/// The chain that all kinds share, with the rotations left of R, right of it, and the scale
/// compensation.
Matrix4 compose(const TransformParts& parts, const Matrix4& axis, const Matrix4& orient,
                const Matrix4& compensation)
{
    Matrix4 result = translation(parts.scalePivot * -1);
    appendFactor(result, scaling(parts.scale));
    appendFactor(result, shearing(parts.shear));
    appendTranslation(result, parts.scalePivot);
    appendTranslation(result, parts.scalePivotTranslate);
    appendTranslation(result, parts.rotatePivot * -1);
    appendFactor(result, axis);
    appendFactor(result, eulerRotation(parts.rotate, parts.order));
    appendFactor(result, orient);
    appendTranslation(result, parts.rotatePivot);
    appendTranslation(result, parts.rotatePivotTranslate);
    appendFactor(result, compensation);
    appendTranslation(result, parts.translate);
    return result;
}

} // namespace

Matrix4 composeTransform(const TransformParts& parts)
{
    return compose(parts, eulerRotation(parts.rotateAxis, RotationOrder::Xyz), {}, {});
}

Matrix4 composeJoint(const TransformParts& parts, const Vec3d& jointOrient,
                     const Vec3d& inverseScale, bool segmentScaleCompensate)
{
    TransformParts used;
    used.translate = parts.translate;
    used.rotate = parts.rotate;
    used.order = parts.order;
    used.scale = parts.scale;
    return compose(used, eulerRotation(parts.rotateAxis, RotationOrder::Xyz),
                   eulerRotation(jointOrient, RotationOrder::Xyz),
                   segmentScaleCompensate ? inverseScaling(inverseScale) : Matrix4{});
}

Matrix4 composePose(const PoseParts& pose)
{
    return compose(pose.parts, quaternionRotation(pose.rotateOrient),
                   quaternionRotation(pose.jointOrient),
                   pose.segmentScaleCompensate ? inverseScaling(pose.inverseScale) : Matrix4{});
}

double clampToLimits(double value, const ChannelLimits& limits)
{
    if (limits.hasMinimum && value < limits.minimum) {
        value = limits.minimum;
    }
    if (limits.hasMaximum && value > limits.maximum) {
        value = limits.maximum;
    }
    return value;
}

} // namespace host
