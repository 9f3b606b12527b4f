// Between UTF-8 and the wide text that the system's calls take.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// `text` (UTF-8) as wide characters: UTF-16 where wchar_t has 16 bits, else UTF-32.
/// Bytes that are not UTF-8 become lone surrogates U+DC80 to U+DCFF, one each, so that any file
/// name survives the way there and back.
[[nodiscard]] std::wstring toWide(std::string_view text);

/// The inverse of `toWide`. A lone surrogate of U+DC80 to U+DCFF gives its byte back; other lone
/// surrogates are written in three bytes as if they were characters.
[[nodiscard]] std::string toUtf8(std::wstring_view text);

/// `path` in the form that streams open, without any conversion by the locale.
[[nodiscard]] std::filesystem::path nativePath(const std::wstring& path);

} // namespace platform
