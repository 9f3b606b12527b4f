// An angle from its sine and cosine by the basic operations alone, so that every system gets the
// same digits (std::atan2 may differ in the last one between libraries).
#pragma once

#include <cmath>
#include <numbers>

namespace host {

/// atan(x) for |x| <= tan(pi / 8), by its power series; error below 1e-12. Summed in two halves
/// that a processor can work on at once.
inline double arcTangentOfSmall(double x)
{
    const double s = x * x;
    const double q = s * s;
    double even = 1.0 / 25;
    double odd = 1.0 / 27;
    for (int i = 21; i >= 1; i -= 4) {
        even = 1.0 / i + q * even;
        odd = 1.0 / (i + 2) + q * odd;
    }
    return x * (even - s * odd);
}

/// The angle in [0, pi] whose sine and cosine are in the ratio sine : cosine; `sine` >= 0, any
/// common length. 0 when both are 0. Absolute error below 1e-12.
inline double angleOf(double sine, double cosine)
{
    using std::numbers::pi;
    if (cosine == 0) {
        return sine > 0 ? pi / 2 : 0;
    }
    // Folded to the first octant, then to an eighth of pi by atan t = pi/4 + atan((t - 1)/(t + 1)).
    const double c = std::fabs(cosine);
    const bool isSteep = sine > c;
    const double t = isSteep ? c / sine : sine / c;
    constexpr double kTangentOfEighth = std::numbers::sqrt2 - 1;
    double angle =
        t > kTangentOfEighth ? pi / 4 + arcTangentOfSmall((t - 1) / (t + 1)) : arcTangentOfSmall(t);
    if (isSteep) {
        angle = pi / 2 - angle;
    }
    return cosine < 0 ? pi - angle : angle;
}

} // namespace host
