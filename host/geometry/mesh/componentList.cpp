#include "host/geometry/mesh/componentList.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

namespace host::geometry {
namespace {

/// Components first .. last, both included.
struct Range {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    bool isAll = false; ///< "*"
};

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// A component's number; numbers too large to be one are the largest.
std::optional<std::uint32_t> parseNumber(std::string_view text)
{
    text = trimmed(text);
    std::uint32_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || stop != text.data() + text.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        return std::numeric_limits<std::uint32_t>::max();
    }
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<Range> parseRange(std::string_view text, std::string_view kind)
{
    text = trimmed(text);
    if (!text.starts_with(kind) || !text.substr(kind.size()).starts_with("[") ||
        !text.ends_with("]")) {
        return std::nullopt;
    }
    text.remove_prefix(kind.size() + 1);
    text.remove_suffix(1);
    if (trimmed(text) == "*") {
        return Range{0, std::numeric_limits<std::uint32_t>::max(), true};
    }
    const std::size_t colon = text.find(':');
    const auto first = parseNumber(text.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseNumber(text.substr(colon + 1));
    if (!first || !last) {
        return std::nullopt;
    }
    return Range{std::min(*first, *last), std::max(*first, *last), false};
}

} // namespace

std::vector<std::uint32_t> parseComponentList(std::span<const std::string> components,
                                              std::string_view kind, std::uint32_t count)
{
    std::vector<Range> ranges;
    for (const std::string& text : components) {
        const auto range = parseRange(text, kind);
        if (range && range->first < count) {
            ranges.push_back({range->first, std::min(range->last, count - 1), false});
        }
    }
    std::sort(ranges.begin(), ranges.end(),
              [](const Range& a, const Range& b) { return a.first < b.first; });
    std::vector<std::uint32_t> numbers;
    std::uint32_t next = 0; // numbers below are done
    for (const Range& range : ranges) {
        for (std::uint32_t number = std::max(next, range.first); number <= range.last; ++number) {
            numbers.push_back(number);
        }
        next = std::max(next, range.last + 1);
    }
    return numbers;
}

std::vector<std::uint32_t> parseFaceList(std::span<const std::string> components,
                                         std::uint32_t faceCount)
{
    return parseComponentList(components, kFaceComponents, faceCount);
}

bool doComponentsExist(std::span<const std::string> components, std::string_view kind,
                       std::uint32_t count)
{
    return std::all_of(components.begin(), components.end(), [&](const std::string& text) {
        const auto range = parseRange(text, kind);
        return range && (range->isAll || range->last < count);
    });
}

} // namespace host::geometry
