// Powers by the basic operations alone, so that every system gets the same digits.
#pragma once

#include <cmath>
#include <limits>
#include <numbers>

namespace host {

/// Logarithm to the base 2 of a positive finite number; relative error below 1e-15.
inline double binaryLogarithm(double x)
{
    int exponent = 0;
    double part = std::frexp(x, &exponent); // exact
    if (part < std::numbers::sqrt2 / 2) {
        part *= 2;
        --exponent;
    }
    // ln part = 2 artanh z with |z| < 0.172, by its power series.
    const double z = (part - 1) / (part + 1);
    const double square = z * z;
    double series = 0;
    for (int n = 25; n >= 1; n -= 2) {
        series = 1.0 / n + square * series;
    }
    return exponent + 2 * z * series * std::numbers::log2e;
}

/// 2 to the power of x; infinite or 0 beyond the range of numbers.
inline double binaryPower(double x)
{
    constexpr double kBeyond = 1100;
    if (!(std::fabs(x) < kBeyond)) {
        return x > 0 ? std::numeric_limits<double>::infinity() : (x < 0 ? 0 : x);
    }
    const double whole = std::floor(x + 0.5);
    const double rest = (x - whole) * std::numbers::ln2; // at most 0.35
    double series = 1;
    for (int n = 18; n >= 1; --n) {
        series = 1 + rest / n * series;
    }
    return std::ldexp(series, static_cast<int>(whole)); // exact
}

/// `base` times itself, by squaring: exact where the result is.
inline double wholePower(double base, int exponent)
{
    double product = 1;
    for (; exponent > 0; exponent /= 2) {
        if (exponent % 2 != 0) {
            product *= base;
        }
        base *= base;
    }
    return product;
}

/// `base` to the power of `exponent`; relative error about 1e-15 times |exponent * log2 base|. 0
/// for the powers of negative numbers that are no numbers, and for what is not finite.
inline double power(double base, double exponent)
{
    if (exponent == 0) {
        return 1;
    }
    if (base == 0 || !std::isfinite(base) || !std::isfinite(exponent)) {
        return 0;
    }
    if (exponent == 1) {
        return base;
    }
    const bool isWhole = std::floor(exponent) == exponent;
    if (base < 0 && !isWhole) {
        return 0;
    }
    constexpr double kFewFactors = 64;
    if (isWhole && std::fabs(exponent) <= kFewFactors) {
        const double product = wholePower(base, static_cast<int>(std::fabs(exponent)));
        return exponent > 0 ? product : 1 / product;
    }
    const double size = binaryPower(exponent * binaryLogarithm(std::fabs(base)));
    return base < 0 && std::fmod(exponent, 2) != 0 ? -size : size;
}

} // namespace host
