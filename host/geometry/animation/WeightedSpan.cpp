#include "host/geometry/animation/WeightedSpan.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr double kEvenTolerance = 1e-6;

/// Halvings that bring the span below the distance of neighbouring numbers, and a few more.
constexpr int kMaxSteps = 64;

double kept(double now, double before)
{
    return before != 0 ? now / before : 1;
}

/// The second handle's length beside a first one of length `x`, as near to `q` as a curve without a
/// turn allows; both fractions of the span.
double boundedBeside(double x, double q)
{
    const double middle = (2 - x) / 2;
    const double square = middle * middle - (x - 1) * (x - 1);
    const double reach = std::sqrt(std::max(square, 0.0));
    return std::clamp(q, middle - reach, middle + reach);
}

} // namespace

bool WeightedSpan::isEven() const
{
    return std::fabs(first - 1.0 / 3) < kEvenTolerance &&
           std::fabs(second - 2.0 / 3) < kEvenTolerance;
}

double WeightedSpan::parameterAt(double time) const
{
    const double linear = 3 * first;
    const double quadratic = 3 * (second - 2 * first);
    const double cubic = 1 + 3 * (first - second);
    double low = 0;
    double high = 1;
    double at = time;
    double stride = 1;
    for (int step = 0; step < kMaxSteps && low < high; ++step) {
        const double error = ((cubic * at + quadratic) * at + linear) * at - time;
        if (error == 0) {
            return at;
        }
        (error < 0 ? low : high) = at;
        const double slope = (3 * cubic * at + 2 * quadratic) * at + linear;
        double next = at - error / slope;
        // A step out of the bounds, or one that hardly shrinks, halves them instead.
        if (!(next > low && next < high) || !(std::fabs(next - at) <= stride / 2)) {
            next = low + (high - low) / 2;
        }
        if (next == at || next == low || next == high) {
            return next;
        }
        stride = std::fabs(next - at);
        at = next;
    }
    return at;
}

WeightedSpan straightened(double first, double second)
{
    WeightedSpan span;
    double x = std::max(first, 0.0);
    double q = 1 - std::min(second, 1.0);
    const bool turns = (x > 1 || q > 1) && x * x + q * q - 2 * (x + q) + x * q + 1 > 0;
    if (turns) {
        constexpr double kLongest = 4.0 / 3;
        constexpr double kNearlyLongest = 1e-12; // both roots meet: rounding must not choose
        if (x > kLongest - kNearlyLongest) {
            x = kLongest;
            q = 1.0 / 3;
        } else {
            q = boundedBeside(x, q);
        }
    }
    span.first = x;
    span.second = 1 - q;
    span.firstKept = x == first ? 1 : kept(x, first);
    span.secondKept = 1 - q == second ? 1 : kept(q, 1 - second);
    return span;
}

} // namespace host::geometry
