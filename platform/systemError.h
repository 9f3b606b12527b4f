// What the system says about its last failing call.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Number of the calling thread's last failing system call: errno, or GetLastError on Windows.
[[nodiscard]] int lastSystemError();

/// One sentence for such a number, UTF-8, without a line end; in the user's language on Windows.
[[nodiscard]] std::string systemErrorText(int number);

/// `cannot <verb> "<path>": <sentence for number>`.
[[nodiscard]] std::string cannotText(std::string_view verb, std::string_view path, int number);

} // namespace platform
