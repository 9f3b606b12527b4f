// Between UTF-8 and the wide text of the system, for texts that come from anywhere.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::api {

/// The character that stands for what is none.
inline constexpr char32_t kReplacement = 0xFFFD;

/// Takes one character off `text`, which must not be empty. Overlong forms, surrogates, numbers
/// above U+10FFFF and cut sequences are malformed: then one byte goes and false is returned.
bool takeCharacter(std::string_view& text, char32_t& character);

bool isUtf8(std::string_view text);
/// Characters of `text`; a malformed byte counts as one.
std::size_t characterCount(std::string_view text);

/// UTF-16 where wchar_t has 16 bits, else UTF-32; malformed bytes become U+FFFD.
std::wstring toWide(std::string_view text);
/// The way back; lone surrogates and numbers that are no characters become U+FFFD.
std::string toUtf8(std::wstring_view text);

} // namespace host::api
