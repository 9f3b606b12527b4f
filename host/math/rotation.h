// Rotations by three angles in the six orders, and by a quaternion.
#pragma once

#include "host/math/Matrix4.h"

namespace host {

/// The order in which the three angles act on a row vector; the numbers are those of the attribute
/// rotateOrder.
enum class RotationOrder : unsigned char { Xyz = 0, Yzx = 1, Zxy = 2, Xzy = 3, Yxz = 4, Zyx = 5 };

/// The order of an attribute's number; anything outside 0..5 is Xyz.
RotationOrder rotationOrderFromNumber(double number);

/// Rotation by the angles (radians) about x, y and z, applied in the given order: Xyz is RX * RY *
/// RZ with RX rows (1 0 0) (0 c s) (0 -s c), RY rows (c 0 -s) (0 1 0) (s 0 c), RZ rows (c s 0) (-s
/// c 0) (0 0 1).
Matrix4 eulerRotation(const Vec3d& angles, RotationOrder order);

/// Vector part (x, y, z) = axis * sin(angle / 2), w = cos(angle / 2); need not be of unit length.
struct Quaternion {
    double x = 0, y = 0, z = 0, w = 1;
    friend bool operator==(const Quaternion&, const Quaternion&) = default;
};

/// The rotation of a quaternion, in the sense of `eulerRotation`; identity for the zero quaternion
/// and for values that are not finite.
Matrix4 quaternionRotation(const Quaternion& quaternion);

} // namespace host
