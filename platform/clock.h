// The time of day and a counter of milliseconds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// Local wall-clock time as "HH:mm:ss", 24 hours, two digits each. No value if the system cannot
/// tell.
[[nodiscard]] std::optional<std::string> localTimeText();

/// Milliseconds since some moment in the past, never set back. Starts again from 0 after 49.7 days;
/// differences taken in 32 unsigned bits stay right. May advance in steps of up to 16 ms on
/// Windows.
[[nodiscard]] std::uint32_t tickMilliseconds();

} // namespace platform
