// The user's folder for temporary files.
#pragma once

#include <string>

namespace platform {

/// What stands between the parts of a path on this system.
#ifdef _WIN32
inline constexpr wchar_t kPathSeparator = L'\\';
#else
inline constexpr wchar_t kPathSeparator = L'/';
#endif

/// The folder, always with a separator at its end (the form of GetTempPathW): on POSIX that of the
/// environment variable TMPDIR, "/tmp/" where it is unset or empty. Never fails; on Windows empty
/// if the system names none that fits into 260 characters.
[[nodiscard]] std::wstring temporaryFolder();

} // namespace platform
