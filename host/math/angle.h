// Angles from sines and cosines and back by the basic operations alone, so that every system gets
// the same digits (std::sin and std::atan2 may differ in the last one between libraries).
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
///
/// Without `kMayFold` the same to its last digit, but only of sines and cosines that are
/// `isNearAnAxis`.
template<bool kMayFold = true>
double angleOf(double sine, double cosine)
{
    using std::numbers::pi;
    // Folded to the first octant, then to an eighth of pi by atan t = pi/4 + atan((t - 1)/(t + 1)).
    // One choice at a time, so that a processor can work on several angles at once.
    const double c = std::fabs(cosine);
    const bool isSteep = sine > c;
    const double t = (isSteep ? c : sine) / (isSteep ? sine : c);
    double octant;
    if constexpr (kMayFold) {
        constexpr double kTangentOfEighth = std::numbers::sqrt2 - 1;
        const bool isWide = t > kTangentOfEighth;
        const double folded = (t - 1) / (t + 1);
        const double rest = arcTangentOfSmall(isWide ? folded : t);
        octant = isWide ? pi / 4 + rest : rest;
    } else {
        octant = arcTangentOfSmall(t);
    }
    const double quadrant = isSteep ? pi / 2 - octant : octant;
    const double angle = cosine < 0 ? pi - quadrant : quadrant;
    const double atRight = sine > 0 ? pi / 2 : 0;
    return cosine == 0 ? atRight : angle;
}

/// Whether an angle is less than about an eighth of pi away from 0, a right one or pi, so that
/// `angleOf` has nothing to fold; sometimes false though it is. `sine` is not subnormal.
inline bool isNearAnAxis(double sine, double cosine)
{
    constexpr double kRatio = 0.41; // less than the tangent of an eighth of pi
    const double c = std::fabs(cosine);
    // "|", since a branch would keep a processor from looking at several at once
    return (sine <= kRatio * c) | (c <= kRatio * sine);
}

struct SineCosine {
    double sine = 0;
    double cosine = 1;
};

/// Sine and cosine of |x| <= pi/4 by their power series (the terms left out are below 1e-19).
inline SineCosine sineCosineOfSmall(double x)
{
    const double s = x * x;
    double sine = 0;
    double cosine = 0;
    for (int n = 18; n >= 2; n -= 2) {
        cosine = (1 + cosine) * -s / ((n - 1) * n);
        sine = (1 + sine) * -s / (n * (n + 1));
    }
    return {x + x * sine, 1 + cosine};
}

/// Sine and cosine of an angle in radians; error within two units of the last place up to a million
/// turns. An angle that is not finite, or beyond 2^32, counts as 0.
inline SineCosine sineCosine(double angle)
{
    // pi/2 in three pieces; the first two have 33 bits, so that their products with whole numbers
    // up to 2^20 are exact.
    constexpr double kQuarterHigh = 0x1.921fb544p+0;
    constexpr double kQuarterMiddle = 0x1.0b4611a6p-34;
    constexpr double kQuarterLow = 0x1.3198a2e037073p-69;
    constexpr double kLargest = 4294967296.0;
    if (!(std::fabs(angle) < kLargest)) {
        return {};
    }
    const double quarters = std::floor(angle * (2 / std::numbers::pi) + 0.5);
    const double rest =
        ((angle - quarters * kQuarterHigh) - quarters * kQuarterMiddle) - quarters * kQuarterLow;
    const SineCosine small = sineCosineOfSmall(rest);
    switch (static_cast<long long>(quarters) & 3) {
    case 0:
        return small;
    case 1:
        return {small.cosine, -small.sine};
    case 2:
        return {-small.sine, -small.cosine};
    default:
        return {-small.cosine, small.sine};
    }
}

} // namespace host
