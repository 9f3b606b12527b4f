#include "host/file/ascii/numbers.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <limits>

namespace host::file::ascii {
namespace {

constexpr char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalsIgnoringCase(std::string_view word, std::string_view lowerCase)
{
    return std::equal(word.begin(), word.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return lowered(a) == b; });
}

bool startsIgnoringCase(std::string_view word, std::string_view lowerCase)
{
    return equalsIgnoringCase(word.substr(0, lowerCase.size()), lowerCase);
}

struct BooleanWord {
    std::string_view word;
    bool isTrue;
};

constexpr std::array<BooleanWord, 6> kBooleanWords{{
    {"false", false},
    {"no", false},
    {"off", false},
    {"on", true},
    {"true", true},
    {"yes", true},
}};

const BooleanWord* findBooleanWord(std::string_view word)
{
    const auto found =
        std::lower_bound(kBooleanWords.begin(), kBooleanWords.end(), word,
                         [](const BooleanWord& row, std::string_view w) { return row.word < w; });
    return found != kBooleanWords.end() && found->word == word ? &*found : nullptr;
}

/// "nan", "nan(ind)", "inf", "infinity", "1.#INF", "1.#QNAN00", "1.#IND", without sign.
std::optional<double> nonFinite(std::string_view word)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr std::string_view kWindowsForm = "1.#";
    if (word.starts_with(kWindowsForm)) {
        const std::string_view rest = word.substr(kWindowsForm.size());
        if (startsIgnoringCase(rest, "inf")) {
            return kInfinity;
        }
        const bool isNan = startsIgnoringCase(rest, "qnan") || startsIgnoringCase(rest, "snan") ||
                           startsIgnoringCase(rest, "nan") || startsIgnoringCase(rest, "ind");
        return isNan ? std::optional(kNotANumber) : std::nullopt;
    }
    if (equalsIgnoringCase(word, "inf") || equalsIgnoringCase(word, "infinity")) {
        return kInfinity;
    }
    return startsIgnoringCase(word, "nan") ? std::optional(kNotANumber) : std::nullopt;
}

std::optional<double> hexadecimal(std::string_view word)
{
    if (word.size() < 3 || word[0] != '0' || lowered(word[1]) != 'x') {
        return std::nullopt;
    }
    double value = 0;
    for (const char c : word.substr(2)) {
        const char digit = lowered(c);
        if (!isDigit(digit) && (digit < 'a' || digit > 'f')) {
            return std::nullopt;
        }
        value = value * 16 + (isDigit(digit) ? digit - '0' : digit - 'a' + 10);
    }
    return value;
}

} // namespace

const char* readDoubleSlowly(const char* begin, const char* end, double& number)
{
    const char* const first = begin + (begin < end && *begin == '-' ? 1 : 0);
    if (first == end || (!isDigit(*first) && *first != '.')) {
        return nullptr; // the library would take "nan" and "inf" here
    }
    const auto result = fast_float::from_chars(begin, end, number);
    return result.ec == std::errc::invalid_argument ? nullptr : result.ptr;
}

const char* readExponent(const char* begin, const char* end, const char* p, DecimalDigits digits,
                         double& number)
{
    constexpr int kMaxExponent = 99;
    constexpr int kExact = static_cast<int>(detail::kExactPowers.size()) - 1;
    const char* q = p + 1;
    const bool isDown = q < end && *q == '-';
    q += q < end && (isDown || *q == '+') ? 1 : 0;
    const char* const firstDigit = q;
    int written = 0;
    while (q < end && isDigit(*q) && written <= kMaxExponent) {
        written = written * 10 + (*q - '0');
        ++q;
    }
    const int exponent = (isDown ? -written : written) - static_cast<int>(digits.places);
    if (q == firstDigit || written > kMaxExponent || exponent < -kExact || exponent > kExact) {
        return readDoubleSlowly(begin, end, number);
    }
    double magnitude = static_cast<double>(static_cast<std::int64_t>(digits.mantissa));
    if (exponent < 0) {
        magnitude /= detail::kExactPowers[static_cast<std::size_t>(-exponent)];
    } else {
        magnitude *= detail::kExactPowers[static_cast<std::size_t>(exponent)];
    }
    number = *begin == '-' ? -magnitude : magnitude;
    return q;
}

std::optional<double> numberOfWord(std::string_view word)
{
    if (word.empty()) {
        return std::nullopt;
    }
    const bool hasSign = word.front() == '-' || word.front() == '+';
    const double sign = word.front() == '-' ? -1 : 1;
    const std::string_view magnitude = word.substr(hasSign ? 1 : 0);
    if (!magnitude.empty() && magnitude.front() != '-') {
        double number = 0;
        const char* const end = magnitude.data() + magnitude.size();
        if (readDoubleSlowly(magnitude.data(), end, number) == end) {
            return sign * number;
        }
    }
    if (const auto odd = nonFinite(magnitude)) {
        return sign * *odd;
    }
    if (const auto hex = hexadecimal(magnitude)) {
        return sign * *hex;
    }
    const BooleanWord* const boolean = findBooleanWord(word);
    return boolean != nullptr ? std::optional(boolean->isTrue ? 1.0 : 0.0) : std::nullopt;
}

std::optional<bool> booleanOfWord(std::string_view word)
{
    const auto number = numberOfWord(word);
    return number ? std::optional(*number != 0) : std::nullopt;
}

} // namespace host::file::ascii
