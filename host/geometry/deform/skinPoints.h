// Points that go with several moving frames at once, each by its weight.
#pragma once

#include "host/geometry/deform/SkinWeights.h"
#include "host/math/Matrix4.h"
#include "host/math/rotation.h"

#include <span>

namespace host::geometry {

/// A rigid motion as a dual quaternion, after what is no rotation was split off.
struct RigidMotion {
    Quaternion real;   ///< the rotation
    Quaternion dual;   ///< half the translation times the rotation
    Matrix4 stretch{}; ///< scale and shear that come before it
};

/// The motion of a matrix: matrix = stretch * rotation * translation (row vectors).
RigidMotion rigidMotion(const Matrix4& matrix);

/// Linear blending: every point p that has weights becomes the sum of weight * (p * matrix of the
/// influence). A point whose weights are all 0 stays.
///
/// Precondition  entries name influences below motions.size(); rows of points that are not there
///               are left out.
void skinLinear(const SkinWeights& weights, std::span<const Matrix4> influences,
                std::span<Vec3d> points);

/// Dual quaternion blending: the motions are averaged as dual quaternions, in the sense of that of
/// largest weight, brought to unit length, and move the point; with `isStretched` the blended
/// scale and shear move it before. Precondition as above.
///
/// Source  L. Kavan and others, "Skinning with Dual Quaternions" (2007): the published method.
void skinDualQuaternion(const SkinWeights& weights, std::span<const RigidMotion> influences,
                        bool isStretched, std::span<Vec3d> points);

} // namespace host::geometry
