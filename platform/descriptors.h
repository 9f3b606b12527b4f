// File descriptors of the C runtime: duplicating and diverting the standard streams.
#pragma once

#include <cstdio>

namespace platform {

inline constexpr int kStandardOutput = 1;
inline constexpr int kStandardError = 2;

/// A second descriptor for the file behind `descriptor`; -1, with errno set, when that fails.
[[nodiscard]] int duplicateDescriptor(int descriptor);

/// Points `target` at the file behind `source`; what `target` named before is closed. False, with
/// errno set, on failure.
bool replaceDescriptor(int source, int target);

/// A stdio stream on a descriptor, which it owns from then on; null, with errno set, when that
/// fails (the descriptor stays open then).
[[nodiscard]] std::FILE* openDescriptor(int descriptor, const char* mode);

/// Ends the translation of line ends on Windows; elsewhere there is none. False, with errno set, on
/// failure.
bool setBinaryMode(int descriptor);

bool closeDescriptor(int descriptor);

/// Descriptor of a stream.
[[nodiscard]] int descriptorOf(std::FILE* stream);

} // namespace platform
