// Reading texts from the Windows registry.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

enum class RegistryRoot { LocalMachine, CurrentUser };

/// The text `value` of the key `key` (names separated by backslashes) below `root`, as it would
/// arrive in a buffer of `roomBytes` bytes (two a character). Up to its first zero; placeholders of
/// environment variables are not filled in.
/// Failure: no value, for a key or value that is missing, is no text or does not fit. Where there
/// is no registry, always.
[[nodiscard]] std::optional<std::wstring> registryText(RegistryRoot root, const std::wstring& key,
                                                       const std::wstring& value,
                                                       std::size_t roomBytes);

} // namespace platform
