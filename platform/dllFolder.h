// The folder in which Windows looks for libraries in addition to its own places.
#pragma once

#include <cstddef>

namespace platform {

/// Writes `location` and "\bin" into `buffer`, which has room for `room` wide characters (at least
/// 16), with a zero at the end.
///
/// The bytes of `location` are handed to the wide formatter as they stand: each two of them make
/// one UTF-16 character. A null pointer is handed on too and reads "(null)". What does not fit is
/// cut off before "\bin", so that neither a read nor a write leaves its buffer whatever the value.
/// Where there is no such folder, the buffer becomes the empty text.
void formatDllFolder(wchar_t* buffer, std::size_t room, const char* location);

/// Sets the folder. False if the system refuses. Does nothing and succeeds where there is no such
/// folder.
[[nodiscard]] bool setDllFolder(const wchar_t* folder);

} // namespace platform
