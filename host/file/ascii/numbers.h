// Number texts of a scene: one token to one number, correctly rounded. The common forms are read
// inline, eight characters at a time; everything else is left to numbers.cpp.
#pragma once

#include "host/file/toInt32.h"

#include <array>
#include <bit>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace host::file::ascii {

static_assert(FLT_EVAL_METHOD == 0, "products of doubles must be rounded to double");

/// What ends a bare word: blanks and control characters, quotes, semicolon, parentheses, braces.
constexpr bool isDelimiter(char c)
{
    return static_cast<unsigned char>(c) <= ' ' || c == ';' || c == '"' || c == '(' || c == ')' ||
           c == '{' || c == '}';
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Any number text from `begin` on, the slow way: the end of the number, or null if there is none.
/// Finite decimal texts only (what exceeds the range of double becomes infinite or zero).
const char* readDoubleSlowly(const char* begin, const char* end, double& number);

/// Digits that were read so far: mantissa / 10^places, exactly.
struct DecimalDigits {
    std::uint64_t mantissa = 0;
    unsigned places = 0;
};

/// Goes on with a number from `begin` whose digits were read up to the "e" at `p`.
const char* readExponent(const char* begin, const char* end, const char* p, DecimalDigits digits,
                         double& number);

/// The number that a whole word stands for: decimal texts, with a plus sign too, hexadecimal
/// integers ("0x1F"), the words of booleans (yes no on off true false) and of non-finite numbers
/// ("nan", "-inf", "1.#QNAN", "-1.#IND00", in any case). None for any other word.
std::optional<double> numberOfWord(std::string_view word);

/// The truth of a word: the boolean words, or a number (true unless zero). None for other words.
std::optional<bool> booleanOfWord(std::string_view word);

namespace detail {

inline constexpr bool kCanReadRuns = std::endian::native == std::endian::little;

/// Up to eight digits that begin at a place with eight readable bytes.
struct DigitRun {
    std::uint64_t value = 0;
    unsigned count = 0;
};

inline DigitRun readRun(const char* p)
{
    std::uint64_t chunk = 0;
    std::memcpy(&chunk, p, sizeof chunk);
    const std::uint64_t digits = chunk ^ 0x3030303030303030u; // digits become 0..9
    const std::uint64_t others =
        (digits | (digits + 0x0606060606060606u)) & 0xf0f0f0f0f0f0f0f0u; // the first one is exact
    const unsigned count = static_cast<unsigned>(std::countr_zero(others)) >> 3; // 8 if others == 0
    // Leading zeros take the place of what follows the digits. Two shifts: one by 64 is undefined.
    std::uint64_t t = count == 8 ? digits : (digits << 1) << (63 - 8 * count);
    t = t * 10 + (t >> 8);
    constexpr std::uint64_t kMask = 0x000000ff000000ffu;
    t = ((t & kMask) * 0x000f424000000064u + ((t >> 16) & kMask) * 0x0000271000000001u) >> 32;
    return {t, count};
}

inline constexpr std::array<std::uint64_t, 9> kIntegerPowers{
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
inline constexpr std::array<double, 23> kExactPowers{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Bytes that the fast form of a number may touch: sign, two or three runs, point and exponent.
inline constexpr std::ptrdiff_t kFastBytes = 48;

} // namespace detail

/// A decimal number that begins at `begin` (begin < end): the end of the number, or null if there
/// is none. What follows the number is the caller's to check. Correctly rounded: a mantissa below
/// 2^53 and a power of ten up to 22 are both exact, so that one quotient rounds once (Clinger, How
/// to Read Floating Point Numbers Accurately, 1990); the rest goes the slow way. Few branches,
/// since signs and lengths of numbers are hard to predict.
inline const char* readDouble(const char* begin, const char* end, double& number)
{
    if (!detail::kCanReadRuns || end - begin < detail::kFastBytes) {
        return readDoubleSlowly(begin, end, number);
    }
    const std::uint64_t isNegative = *begin == '-' ? 1 : 0;
    const char* p = begin + isNegative;
    const detail::DigitRun whole = detail::readRun(p);
    p += whole.count;
    std::uint64_t mantissa = whole.value;
    unsigned places = 0;
    if (*p == '.') {
        ++p;
        const detail::DigitRun first = detail::readRun(p);
        detail::DigitRun second = detail::readRun(p + 8);
        second.count = first.count == 8 ? second.count : 0;
        second.value = first.count == 8 ? second.value : 0;
        mantissa = mantissa * detail::kIntegerPowers[first.count] + first.value;
        mantissa = mantissa * detail::kIntegerPowers[second.count] + second.value;
        places = first.count + second.count;
        p += places;
    }
    // Below the limits the mantissa has not overflowed; at sixteen places digits may follow.
    constexpr std::uint64_t kExactLimit = std::uint64_t{1} << 53;
    const unsigned digits = whole.count + places;
    const bool isExact =
        digits - 1 < 19 && whole.count < 8 && places < 16 && mantissa <= kExactLimit;
    if (!isExact || (*p | 0x20) == 'e') {
        return isExact ? readExponent(begin, end, p, {mantissa, places}, number)
                       : readDoubleSlowly(begin, end, number);
    }
    const double magnitude =
        static_cast<double>(static_cast<std::int64_t>(mantissa)) / detail::kExactPowers[places];
    number = std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) | (isNegative << 63));
    return p;
}

/// A whole number of digits with an optional minus sign that begins at `begin` (begin < end): the
/// end of its digits, or null if there are none or more than fifteen.
inline const char* readInteger(const char* begin, const char* end, std::int64_t& number)
{
    const char* p = begin;
    const bool isNegative = *p == '-';
    p += isNegative ? 1 : 0;
    if (detail::kCanReadRuns && end - p >= 8) {
        const detail::DigitRun run = detail::readRun(p);
        if (run.count == 0) {
            return nullptr;
        }
        if (run.count < 8) {
            number = isNegative ? -static_cast<std::int64_t>(run.value)
                                : static_cast<std::int64_t>(run.value);
            return p + run.count;
        }
    }
    std::int64_t value = 0;
    const char* const firstDigit = p;
    while (p < end && isDigit(*p) && p - firstDigit <= 15) {
        value = value * 10 + (*p - '0');
        ++p;
    }
    if (p == firstDigit || p - firstDigit > 15) {
        return nullptr;
    }
    number = isNegative ? -value : value;
    return p;
}

} // namespace host::file::ascii
