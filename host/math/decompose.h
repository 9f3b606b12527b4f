// A matrix taken apart into the parts of a transform.
#pragma once

#include "host/math/rotation.h"

namespace host {

struct DecomposedMatrix {
    Vec3d translate;
    Vec3d rotate; ///< radians, in the order asked for
    Vec3d scale{1, 1, 1};
    Vec3d shear; ///< xy, xz, yz
    Quaternion rotation;
};

/// The parts with scale * shear * rotation * translation = matrix (an affine one, for row vectors).
/// The rows are made orthogonal one after the other; a mirrored matrix gets three negative scales.
/// A row without length counts as one of scale 0 along its axis.
DecomposedMatrix decompose(const Matrix4& matrix, RotationOrder order);

} // namespace host
