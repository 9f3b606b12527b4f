#include "host/geometry/deform/componentOrder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace host::geometry {
namespace {

constexpr std::size_t kMaxBrackets = 3;

struct Range {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
};

/// Three brackets; those that a text does not have stand before the others, with one number each.
struct Ranges {
    std::array<Range, kMaxBrackets> ranges;
    std::array<std::uint64_t, kMaxBrackets> sizes{1, 1, 1};
};

std::optional<std::uint32_t> numberIn(std::string_view text)
{
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = !text.empty() && error == std::errc() && stop == end;
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<Range> rangeIn(std::string_view text, std::uint32_t size)
{
    if (text == "*") {
        return size > 0 ? std::optional(Range{0, size - 1}) : std::nullopt;
    }
    const std::size_t colon = text.find(':');
    const auto first = numberIn(text.substr(0, colon));
    const std::string_view rest = colon == std::string_view::npos ? text : text.substr(colon + 1);
    const auto last = rest == "*" && size > 0 ? std::optional(size - 1) : numberIn(rest);
    return first && last ? std::optional(Range{*first, *last}) : std::nullopt;
}

/// What stands in the brackets of a text; nothing where one does not close.
std::vector<std::string_view> bracketsIn(std::string_view text)
{
    std::vector<std::string_view> brackets;
    std::size_t open = text.find('[');
    while (open != std::string_view::npos && brackets.size() <= kMaxBrackets) {
        const std::size_t close = text.find(']', open);
        if (close == std::string_view::npos) {
            return {};
        }
        brackets.push_back(text.substr(open + 1, close - open - 1));
        open = text.find('[', close);
    }
    return brackets;
}

std::optional<Ranges> rangesIn(std::string_view text, std::span<const std::uint32_t> sizes)
{
    const std::vector<std::string_view> brackets = bracketsIn(text);
    const std::size_t count = brackets.size();
    if (count == 0 || count > kMaxBrackets || (count != 1 && count != sizes.size())) {
        return std::nullopt;
    }
    std::uint64_t all = 1;
    for (const std::uint32_t size : sizes) {
        all = std::min<std::uint64_t>(all * size, kNoPoint);
    }
    Ranges found;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t size = count == 1 ? all : sizes[i];
        const auto range = rangeIn(brackets[i], static_cast<std::uint32_t>(size));
        if (!range) {
            return std::nullopt;
        }
        found.ranges[kMaxBrackets - count + i] = *range;
        found.sizes[kMaxBrackets - count + i] = size;
    }
    return found;
}

/// The numbers of a range in its direction, one after the other, until `take` says no.
template<class Take>
bool walk(const Range& range, Take take)
{
    const bool isDown = range.last < range.first;
    for (std::uint32_t at = range.first;; at = isDown ? at - 1 : at + 1) {
        if (!take(at)) {
            return false;
        }
        if (at == range.last) {
            return true;
        }
    }
}

void list(const Ranges& text, std::size_t most, std::vector<std::uint32_t>& points)
{
    const std::uint64_t a = text.sizes[0], b = text.sizes[1], c = text.sizes[2];
    walk(text.ranges[0], [&](std::uint32_t i) {
        return walk(text.ranges[1], [&](std::uint32_t j) {
            return walk(text.ranges[2], [&](std::uint32_t k) {
                if (points.size() >= most) {
                    return false;
                }
                const bool isThere = i < a && j < b && k < c;
                const std::uint64_t point = isThere ? (i * b + j) * c + k : kNoPoint;
                points.push_back(point < kNoPoint ? static_cast<std::uint32_t>(point) : kNoPoint);
                return true;
            });
        });
    });
}

} // namespace

std::vector<std::uint32_t> namedPoints(std::span<const std::string> texts,
                                       std::span<const std::uint32_t> sizes, std::size_t most)
{
    std::vector<std::uint32_t> points;
    for (const std::string& text : texts) {
        if (const auto ranges = rangesIn(text, sizes)) {
            list(*ranges, most, points);
        }
    }
    return points;
}

} // namespace host::geometry
