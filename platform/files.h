// Opening stdio streams by UTF-8 path on every system.
#pragma once

#include <cstdio>
#include <string>

namespace platform {

/// fopen of a UTF-8 path, through the wide entry on Windows. `mode` is plain ASCII. Null, with
/// errno set, on failure.
[[nodiscard]] std::FILE* openUtf8(const std::string& path, const char* mode);

} // namespace platform
