// The time side of a span with weighted tangents: where on the span a time lies.
#pragma once

namespace host::geometry {

/// A cubic Bezier curve in time from 0 to 1, with control points at `first` and `second`, that
/// never turns back.
struct WeightedSpan {
    double first = 1.0 / 3;
    double second = 2.0 / 3;
    /// What is left of the handles after `straightened`: factors for their heights.
    double firstKept = 1;
    double secondKept = 1;

    /// Control points within 1e-6 of one and two thirds: the parameter is the time itself.
    bool isEven() const;
    /// The parameter at which the curve has reached `time`, both in [0, 1].
    double parameterAt(double time) const;
};

/// A span whose control points are pulled back, if need be, so that time never turns: neither
/// before the span's begin nor beyond its end, and, where one of them lies beyond the other end,
/// not past the point at which the curve would stand still. Handles shrink as they are, so their
/// heights go with them. The limits are those of a monotonic cubic: x^2 + q^2 - 2 (x + q) + x q + 1
/// <= 0 with x the first control point and q the second's distance from the end.
WeightedSpan straightened(double first, double second);

} // namespace host::geometry
