// Local matrices from the parts in which transforms, joints and stored poses are kept.
#pragma once

#include "host/math/rotation.h"

namespace host {

/// Lengths in centimetres, angles in radians. The initial values make the identity.
struct TransformParts {
    Vec3d translate;
    Vec3d rotate;
    RotationOrder order = RotationOrder::Xyz;
    Vec3d scale{1, 1, 1};
    Vec3d shear; ///< xy, xz, yz
    Vec3d rotatePivot;
    Vec3d rotatePivotTranslate;
    Vec3d scalePivot;
    Vec3d scalePivotTranslate;
    Vec3d rotateAxis; ///< always in the order xyz
    friend bool operator==(const TransformParts&, const TransformParts&) = default;
};

/// SP^-1 * S * SH * SP * ST * RP^-1 * RA * R * RP * RT * T for row vectors: scale about its pivot,
/// shear, then the rotations about theirs, then the translation.
Matrix4 composeTransform(const TransformParts& parts);

/// S * RA * R * JO * IS * T: pivots, their translations and shear do not enter. JO is the rotation
/// `jointOrient` (radians, order xyz), IS divides by `inverseScale` (the parent's scale) when
/// segmentScaleCompensate is on; a component that is zero divides by one.
Matrix4 composeJoint(const TransformParts& parts, const Vec3d& jointOrient,
                     const Vec3d& inverseScale, bool segmentScaleCompensate);

/// A stored pose: the parts with the two orientations as quaternions. `parts.rotateAxis` is not
/// used, `rotateOrient` stands in its place.
struct PoseParts {
    TransformParts parts;
    Quaternion rotateOrient;
    Quaternion jointOrient;
    Vec3d inverseScale{1, 1, 1};
    bool segmentScaleCompensate = false;
};

/// The matrix of a stored pose: that of a transform with JO after R and IS before T, so that it is
/// a transform's where the joint's parts are neutral and a joint's where pivots are.
Matrix4 composePose(const PoseParts& pose);

/// Lower and upper bound of one channel, each with its own switch.
struct ChannelLimits {
    double minimum = -1;
    double maximum = 1;
    bool hasMinimum = false;
    bool hasMaximum = false;
};

/// The value inside the enabled bounds. Where the bounds contradict each other the upper one holds.
double clampToLimits(double value, const ChannelLimits& limits);

} // namespace host
