// Curves and surfaces moved by a matrix.
#pragma once

#include "host/geometry/nurbs/SurfaceData.h"
#include "host/math/Matrix4.h"

namespace host::geometry {

/// The control points times the matrix (affine), weights as they are. A curve in the parameter
/// plane stays where it is.
CurveData transformed(const CurveData& curve, const Matrix4& matrix);
/// The same of a surface; the spatial curves of its trim regions come along.
SurfaceData transformed(const SurfaceData& surface, const Matrix4& matrix);

} // namespace host::geometry
