// Points and derivatives of a curve.
#pragma once

#include "host/geometry/curve/HomogeneousPoint.h"
#include "host/geometry/curve/KnotVector.h"

namespace host::geometry {

/// A point with its first and second derivative by the parameter.
struct CurvePoint {
    Vec3d position, first, second;
};

/// Evaluates one curve, of which it holds a copy, without taking memory. A curve of dimension 2 has
/// z = 0. Parameters outside the domain are clamped, those of a periodic curve wrapped. At a knot
/// the derivatives are those to the right of it, at the end of the domain those to the left.
class CurveEvaluator {
public:
    explicit CurveEvaluator(const CurveData& curve);

    /// False for a record whose counts do not fit each other, whose knots decrease or whose numbers
    /// are not finite. Nothing but this may be asked of an invalid one.
    bool isValid() const { return m_isValid; }
    double start() const { return m_knots.start(); }
    double end() const { return m_knots.end(); }
    const KnotVector& knots() const { return m_knots; }

    Vec3d point(double u) const;
    CurvePoint evaluate(double u) const;

private:
    KnotVector m_knots;
    std::vector<HomogeneousPoint> m_points;
    bool m_isRational = false;
    bool m_isValid = false;
};

/// True for a record that can be evaluated.
bool isValidCurve(const CurveData& curve);

/// The control points of a curve times their weights (1 when it is not rational); empty where the
/// counts do not fit or a number is not finite.
std::vector<HomogeneousPoint> homogeneousPoints(const CurveData& curve);

} // namespace host::geometry
