// Numbers of any size as 32-bit integers.
#pragma once

#include <cstdint>
#include <limits>

namespace host::file {

/// The fraction is cut off, the range's ends clamp, nan is 0.
constexpr std::int32_t toInt32(double number)
{
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    if (number != number) {
        return 0;
    }
    if (number <= kLowest) {
        return kLowest;
    }
    return number >= kHighest ? kHighest : static_cast<std::int32_t>(number);
}

} // namespace host::file
