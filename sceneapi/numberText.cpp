#include "sceneapi/numberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace orv {
namespace {

constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
constexpr int kDigits = 6; // significant digits of "%g"

char* writeNonFinite(char* out, double value)
{
    if (std::signbit(value)) {
        *out++ = '-';
    }
    std::memcpy(out, std::isnan(value) ? "nan" : "inf", 3);
    return out + 3;
}

/// Six digits d (100000 to 999999) of the number d * 10^(exponent - 5), exponent from -4 to 5,
/// without a point at the end and without trailing zeros after it.
char* layOut(char* out, unsigned digits, int exponent)
{
    char text[kDigits];
    for (int i = kDigits - 1; i >= 0; --i) {
        text[i] = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    int count = kDigits;
    while (count > 1 && text[count - 1] == '0') {
        --count;
    }
    if (exponent < 0) {
        std::memcpy(out, "0.000", 5);
        out += 1 - exponent;
        std::memcpy(out, text, kDigits);
        return out + count;
    }
    const int whole = exponent + 1;
    std::memcpy(out, text, kDigits);
    if (count <= whole) {
        return out + whole;
    }
    std::memmove(out + whole + 1, out + whole, static_cast<std::size_t>(kDigits - whole));
    out[whole] = '.';
    return out + count + 1;
}

/// Decimal exponent of 1e-4 <= value < 1e6, or one too small or large beside a power of ten.
int exponentOf(double value)
{
    int exponent = -4;
    if (value >= 1.0) {
        exponent = 0;
        while (exponent < 5 && value >= kPowers[exponent + 1]) {
            ++exponent;
        }
        return exponent;
    }
    while (exponent < -1 && value * kPowers[-exponent - 1] >= 1.0) {
        ++exponent;
    }
    return exponent;
}

/// The quick way of "%g" for 1e-4 <= value < 999999: scales to six digits before the point and
/// rounds. The product has an error below 1e-9, so the rounding is that of the exact value unless
/// the fraction lies within 1e-6 of a half; null then, and the exact way decides.
char* writeQuickly(char* out, double value)
{
    int exponent = exponentOf(value);
    const double scaled = value * kPowers[kDigits - 1 - exponent];
    auto digits = static_cast<unsigned>(scaled);
    const double fraction = scaled - digits;
    if (std::fabs(fraction - 0.5) < 1e-6) {
        return nullptr;
    }
    digits += fraction > 0.5 ? 1 : 0;
    if (digits >= 1000000) {
        digits /= 10;
        ++exponent;
    }
    if (digits < 100000 || exponent > 5) {
        return nullptr;
    }
    return layOut(out, digits, exponent);
}

} // namespace

char* writeGeneral(char* out, double value)
{
    if (!std::isfinite(value)) {
        return writeNonFinite(out, value);
    }
    const double size = std::fabs(value);
    if (size == 0.0) {
        if (std::signbit(value)) {
            *out++ = '-';
        }
        *out = '0';
        return out + 1;
    }
    if (size >= 1e-4 && size < 999999.0) {
        char* start = out;
        if (value < 0.0) {
            *start++ = '-';
        }
        if (char* end = writeQuickly(start, size)) {
            return end;
        }
    }
    return std::to_chars(out, out + kMaxGeneralText, value, std::chars_format::general, kDigits)
        .ptr;
}

char* writeFixed(char* out, double value, int decimals)
{
    if (!std::isfinite(value)) {
        return writeNonFinite(out, value);
    }
    return std::to_chars(out, out + kMaxFixedText, value, std::chars_format::fixed, decimals).ptr;
}

char* writeFixed16(char* out, double value)
{
    constexpr int kWidth = 16;
    char* end = writeFixed(out, value, 16);
    const auto length = static_cast<int>(end - out);
    if (length >= kWidth) {
        return end;
    }
    std::memmove(out + (kWidth - length), out, static_cast<std::size_t>(length));
    std::fill_n(out, kWidth - length, ' ');
    return out + kWidth;
}

char* writeInteger(char* out, std::int32_t value)
{
    return std::to_chars(out, out + kMaxIntegerText, value).ptr;
}

char* writeUnsigned(char* out, std::uint32_t value)
{
    return std::to_chars(out, out + kMaxIntegerText, value).ptr;
}

} // namespace orv
