// Lengths along curves, and the nearest point of one.
#pragma once

#include "host/geometry/curve/CurveEvaluator.h"

#include <vector>

namespace host::geometry {

/// Lengths along a curve from its start, measured once: Gauss's rule of five points on pieces of
/// every span.
class ArcLengthTable {
public:
    explicit ArcLengthTable(const CurveEvaluator& curve);

    double total() const { return m_lengths.empty() ? 0 : m_lengths.back(); }
    /// The length from the start to a parameter.
    double lengthTo(double u) const;
    /// The parameter at a length from the start; clamped to the curve.
    double parameterAt(double length) const;

private:
    double between(double from, double to) const;

    const CurveEvaluator& m_curve;
    std::vector<double> m_parameters;
    std::vector<double> m_lengths;
};

/// The parameter of the curve's point nearest to `target`: the best of evenly spread samples of
/// every span, made exact by Newton's steps on (C - target) . C' = 0.
double nearestParameter(const CurveEvaluator& curve, const Vec3d& target);

/// Samples of a span are fewer when a curve has so many spans that there would be more in all.
inline constexpr std::size_t kMaxNearestSamples = 1u << 16;

} // namespace host::geometry
