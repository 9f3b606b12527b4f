// A B-spline curve as files store it.
#pragma once

#include <cstdint>
#include <vector>

namespace host::geometry {

enum class SplineForm : std::uint8_t { Open = 0, Closed = 1, Periodic = 2 };

/// Knots lack the two outermost of the mathematical vector: knots.size() == cvCount() + degree - 1.
/// A periodic curve stores its overlapping control points. `poles` holds `dimension` coordinates
/// per control point, and its weight after them when rational; centimetres for dimension 3, surface
/// parameters for dimension 2.
struct CurveData {
    std::int32_t degree = 0;
    std::int32_t spans = 0;
    SplineForm form = SplineForm::Open;
    bool rational = false;
    std::int32_t dimension = 3;
    std::vector<double> knots;
    std::vector<double> poles;

    std::size_t stride() const { return static_cast<std::size_t>(dimension) + (rational ? 1 : 0); }
    std::size_t cvCount() const { return poles.size() / stride(); }
    /// The ends of the domain. Precondition: counts that fit the degree.
    double start() const { return knots[static_cast<std::size_t>(degree) - 1]; }
    double end() const { return knots[cvCount() - 1]; }
};

} // namespace host::geometry
