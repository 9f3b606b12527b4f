// The knots of one direction, and the B-spline basis on them.
#pragma once

#include "host/geometry/curve/CurveData.h"

#include <array>
#include <cstddef>

namespace host::geometry {

/// Degrees above this are not evaluated; files use 1, 2, 3, 5 and 7.
inline constexpr std::int32_t kMaxSplineDegree = 31;

/// The functions that are not zero at a parameter, with their first and second derivatives:
/// entries 0..degree belong to the control points firstCv, firstCv + 1, ...
struct SplineBasis {
    using Row = std::array<double, kMaxSplineDegree + 1>;
    std::size_t firstCv;
    Row value;
    Row first;
    Row second;
};

/// Knots t[0] .. t[cvCount + degree - 2], without the two outermost ones of the mathematical
/// vector, which no point of the domain t[degree - 1] .. t[cvCount - 1] depends on.
class KnotVector {
public:
    KnotVector() = default;
    /// Invalid unless 1 <= degree <= kMaxSplineDegree, there are knots for degree + 1 control
    /// points, all are finite, none decreases and the domain has a length.
    KnotVector(std::vector<double> knots, std::int32_t degree, SplineForm form);

    bool isValid() const { return m_isValid; }
    std::int32_t degree() const { return m_degree; }
    SplineForm form() const { return m_form; }
    std::size_t cvCount() const { return m_cvCount; }
    const std::vector<double>& knots() const { return m_knots; }
    double start() const { return m_start; }
    double end() const { return m_end; }

    /// The parameter brought into the domain: wrapped when periodic, else clamped; the start where
    /// it is no number.
    double inside(double u) const;
    /// The k with t[k] <= u < t[k + 1], degree - 1 <= k < cvCount - 1; at the end of the domain the
    /// last span that has a length. `u` must be inside.
    std::size_t findSpan(double u) const;
    /// Values and derivatives at a parameter, from the right at a knot (from the left at the end).
    void evaluate(double u, SplineBasis& basis) const;
    /// Values alone.
    void evaluateValues(double u, SplineBasis& basis) const;
    /// The distinct parameters of the domain at which knots are, both ends with it.
    std::vector<double> breaks() const;
    /// How often a knot occurs, up to `tolerance` beside it.
    std::size_t multiplicity(double u, double tolerance = 0) const;

private:
    std::vector<double> m_knots;
    std::size_t m_cvCount = 0;
    double m_start = 0;
    double m_end = 0;
    std::int32_t m_degree = 0;
    SplineForm m_form = SplineForm::Open;
    bool m_isValid = false;
};

} // namespace host::geometry
