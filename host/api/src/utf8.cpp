#include "host/api/src/utf8.h"

namespace host::api {
namespace {

constexpr bool kIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool isSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

/// Bytes of the sequence that a byte begins, 0 for none.
std::size_t sequenceLength(unsigned char first)
{
    return first < 0x80   ? 1
           : first < 0xC2 ? 0
           : first < 0xE0 ? 2
           : first < 0xF0 ? 3
           : first < 0xF5 ? 4
                          : 0;
}

void appendUtf8(std::string& text, char32_t c)
{
    const auto byte = [&](char32_t bits) { text.push_back(static_cast<char>(bits)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

/// Takes one character off wide text that is not empty.
char32_t takeWide(std::wstring_view& text)
{
    const auto first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (kIsUtf16 && first >= 0xD800 && first <= 0xDBFF && !text.empty()) {
        const auto second = static_cast<char32_t>(text.front());
        if (second >= 0xDC00 && second <= 0xDFFF) {
            text.remove_prefix(1);
            return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
        }
    }
    return isSurrogate(first) || first > kLastCharacter ? kReplacement : first;
}

} // namespace

bool takeCharacter(std::string_view& text, char32_t& character)
{
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000}; // by length: below is overlong
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = sequenceLength(first);
    char32_t value = length <= 1 ? first : first & (0xFFu >> (length + 1));
    bool isGood = length != 0 && length <= text.size();
    for (std::size_t i = 1; isGood && i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        isGood = (next & 0xC0) == 0x80;
        value = (value << 6) | (next & 0x3F);
    }
    isGood = isGood && value >= kLeast[length] && value <= kLastCharacter && !isSurrogate(value);
    text.remove_prefix(isGood ? length : 1);
    character = isGood ? value : kReplacement;
    return isGood;
}

bool isUtf8(std::string_view text)
{
    char32_t character = 0;
    while (!text.empty()) {
        if (!takeCharacter(text, character)) {
            return false;
        }
    }
    return true;
}

std::size_t characterCount(std::string_view text)
{
    std::size_t count = 0;
    for (char32_t character = 0; !text.empty(); ++count) {
        takeCharacter(text, character);
    }
    return count;
}

std::wstring toWide(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        char32_t character = 0;
        takeCharacter(text, character);
        if (kIsUtf16 && character >= 0x10000) {
            wide.push_back(static_cast<wchar_t>(0xD7C0 + (character >> 10)));
            wide.push_back(static_cast<wchar_t>(0xDC00 + (character & 0x3FF)));
        } else {
            wide.push_back(static_cast<wchar_t>(character));
        }
    }
    return wide;
}

std::string toUtf8(std::wstring_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    while (!text.empty()) {
        appendUtf8(narrow, takeWide(text));
    }
    return narrow;
}

} // namespace host::api
