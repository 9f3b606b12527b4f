#include "host/geometry/mesh/faceList.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

namespace host::geometry {
namespace {

/// Faces first .. last, both included.
struct FaceRange {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
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

/// A face number; numbers too large to be one are the largest.
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

std::optional<FaceRange> parseRange(std::string_view text)
{
    text = trimmed(text);
    if (!text.starts_with("f[") || !text.ends_with("]")) {
        return std::nullopt;
    }
    text = text.substr(2, text.size() - 3);
    if (trimmed(text) == "*") {
        return FaceRange{0, std::numeric_limits<std::uint32_t>::max()};
    }
    const std::size_t colon = text.find(':');
    const auto first = parseNumber(text.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseNumber(text.substr(colon + 1));
    if (!first || !last) {
        return std::nullopt;
    }
    return FaceRange{std::min(*first, *last), std::max(*first, *last)};
}

} // namespace

std::vector<std::uint32_t> parseFaceList(std::span<const std::string> components,
                                         std::uint32_t faceCount)
{
    std::vector<FaceRange> ranges;
    for (const std::string& text : components) {
        const auto range = parseRange(text);
        if (range && range->first < faceCount) {
            ranges.push_back({range->first, std::min(range->last, faceCount - 1)});
        }
    }
    std::sort(ranges.begin(), ranges.end(),
              [](const FaceRange& a, const FaceRange& b) { return a.first < b.first; });
    std::vector<std::uint32_t> faces;
    std::uint32_t next = 0; // faces below are done
    for (const FaceRange& range : ranges) {
        for (std::uint32_t face = std::max(next, range.first); face <= range.last; ++face) {
            faces.push_back(face);
        }
        next = std::max(next, range.last + 1);
    }
    return faces;
}

} // namespace host::geometry
