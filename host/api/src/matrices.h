// Between the API's vectors and matrices and the host's.
#pragma once

#include "host/math/Matrix4.h"

#include <maya/MMatrix.h>
#include <maya/MVector.h>

namespace host::api {

inline Vec3d toVec(const MVector& vector)
{
    return {vector.x, vector.y, vector.z};
}
inline MVector toVector(const Vec3d& vector)
{
    return {vector.x, vector.y, vector.z};
}
Matrix4 toMatrix4(const MMatrix& matrix);
MMatrix toMatrix(const Matrix4& matrix);

} // namespace host::api
