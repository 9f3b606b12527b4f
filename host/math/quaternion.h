// Rotations as quaternions: from matrices, from angles, and in between; and angles from matrices.
#pragma once

#include "host/math/rotation.h"

namespace host {

/// The unit quaternion of a rotation matrix (upper 3x3 part; scale must be gone), w >= 0.
Quaternion quaternionOf(const Matrix4& rotation);

/// The unit quaternion of three angles (radians) in the given order.
Quaternion quaternionFromEuler(const Vec3d& angles, RotationOrder order);

/// The angles (radians) of a rotation matrix in the given order: the middle axis turns by at most a
/// right angle. Where it turns by exactly that much the last axis does not turn.
Vec3d eulerAngles(const Matrix4& rotation, RotationOrder order);

/// Of the triples of angles that stand for the same rotation as `angles` the one nearest to
/// `wanted`: whole turns are added, and the other way round the middle axis is tried.
Vec3d eulerNearest(const Vec3d& angles, const Vec3d& wanted, RotationOrder order);

/// `by` of the way from one rotation to another (unit quaternions) on the short arc at even speed;
/// `by` may lie outside 0..1. With `isShort` false the arc is the one that the signs give.
Quaternion slerp(const Quaternion& from, const Quaternion& to, double by, bool isShort = true);

/// The rotation `first`, then `second`.
Quaternion product(const Quaternion& first, const Quaternion& second);
/// The rotation back (unit quaternions).
Quaternion conjugate(const Quaternion& quaternion);
double dot(const Quaternion& a, const Quaternion& b);

} // namespace host
