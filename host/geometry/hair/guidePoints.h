// The curve of a follicle as the points that its hairs follow.
#pragma once

#include "host/geometry/curve/CurveData.h"
#include "host/math/Matrix4.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace host::geometry {

/// Points of one hair before segments are put between them.
inline constexpr std::size_t kMaxGuidePoints = 4096;

/// How many points a curve gives.
struct GuideSampling {
    double density = 1;         ///< points per control point
    bool isFixedLength = false; ///< points at even distances instead
    double segmentLength = 1;   ///< that distance, centimetres
};

/// Points of a curve from its start to its end, moved by `matrix`.
///
/// Number   density * control points, rounded, at least 2; with a fixed length the length of the
///          curve over it, rounded up, and one. At most kMaxGuidePoints.
/// Places   at the parameters that lie as evenly as the points among the control points' Greville
///          abscissae (means of `degree` knots): with density 1 a curve of degree 1 gives its own
///          control points. With a fixed length at even lengths along the curve, measured on a
///          polygon of kMaxGuidePoints points.
/// Empty    for a curve that cannot be evaluated or has no points in space.
std::vector<Vec3d> guidePoints(const CurveData& curve, const GuideSampling& sampling,
                               const Matrix4& matrix);

/// A clamped curve with these control points and knots at whole numbers. The
/// degree is brought into 1..count - 1. Null without two points.
std::shared_ptr<const CurveData> curveThrough(const std::vector<Vec3d>& points, double degree);

} // namespace host::geometry
