// Splines with other knots: uniform ones, those of another spline, simple or multiple ones.
#pragma once

#include "host/geometry/curve/SplineRows.h"

namespace host::geometry {

/// What a rebuilt spline's domain is; the numbers are those of the attribute keepRange.
enum class KeptRange : std::uint8_t { ZeroToOne = 0, Same = 1, ZeroToSpans = 2 };

/// A spline of `spans` equal spans of a degree (0: as it was, for both) that agrees with `rows` at
/// the Greville parameters of the new knots; a periodic one of degree 3 stays periodic and agrees
/// at its knots. The same curve where the new knots hold it, else near it. No points where there
/// would be too many.
SplineRows uniform(const SplineRows& rows, std::int32_t degree, std::size_t spans);
/// The same control points on equally spaced knots.
SplineRows uniformKnotsKeepingPoints(const SplineRows& rows);
/// The knots and degree of `model`, stretched over the domain of `rows`.
SplineRows withKnotsOf(const SplineRows& rows, const SplineRows& model);
/// Inner knots once each.
SplineRows withSimpleKnots(const SplineRows& rows);
/// All inner knots as often as the degree: Bezier pieces. Exactly the same curve; no points where
/// there would be too many.
SplineRows inBezierPieces(const SplineRows& rows);

void setRange(SplineRows& rows, KeptRange range, double start, double end);

/// Brings splines onto one knot vector of one degree over 0..1 without changing any, by clamping,
/// raising degrees and inserting each other's knots; periodic ones stay so when their knots agree
/// already. False when one is empty or there would be too many knots.
bool makeCompatible(std::vector<SplineRows>& splines);

struct AttachOptions {
    bool reversesFirst = false;
    bool reversesSecond = false;
    bool blends = false;
    double blendBias = 0.5; ///< 0 the first one's end, 1 the second one's start
};

/// Two splines one after the other, as wide as each other: the second's domain follows the first's,
/// the ends are joined half way between them (blending: as the bias says) and the knot at the joint
/// is as multiple as the degree. Empty where widths differ or both together have more than
/// kMaxSplineCvs control points.
SplineRows attached(const SplineRows& first, const SplineRows& second,
                    const AttachOptions& options);

/// A clamped spline whose ends are moved together half way, closed in form.
SplineRows closedUp(const SplineRows& rows, double blendBias);

/// A clamped spline with a straight piece from its end to its start, one span of mean length long.
SplineRows closedByLine(const SplineRows& rows);

/// More spans than this are not made in one rebuilding.
inline constexpr std::size_t kMaxRebuiltSpans = 1u << 14;

} // namespace host::geometry
