#include "platform/wideText.h"

#include <cstddef>
#include <cstdint>

namespace platform {
namespace {

constexpr char32_t kFirstEscape = 0xdc80; // stands for the byte 0x80
constexpr char32_t kLastEscape = 0xdcff;  // stands for the byte 0xff

struct Decoded {
    char32_t character = 0;
    std::size_t length = 1; // bytes consumed
};

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// Bytes of the sequence that a lead byte announces; 0 for a byte that cannot lead.
std::size_t announcedLength(unsigned char lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xc2 && lead <= 0xdf) {
        return 2;
    }
    if (lead >= 0xe0 && lead <= 0xef) {
        return 3;
    }
    return lead >= 0xf0 && lead <= 0xf4 ? 4 : 0;
}

/// The first character of `text` (not empty), or the escape of its first byte.
Decoded decode(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const Decoded escape{static_cast<char32_t>(0xdc00U + lead), 1};
    const std::size_t length = announcedLength(lead);
    if (length == 1) {
        return {lead, 1};
    }
    if (length == 0 || text.size() < length) {
        return escape;
    }
    char32_t character = lead & (0xffU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) {
            return escape;
        }
        character = (character << 6) | (static_cast<unsigned char>(text[i]) & 0x3fU);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isEscape = character >= kFirstEscape && character <= kLastEscape;
    if (character < kSmallest[length] || character > 0x10ffff || isEscape) {
        return escape; // the escapes themselves are spelt out byte by byte, so that both ways agree
    }
    return {character, length};
}

void appendWide(std::wstring& wide, char32_t character)
{
    if constexpr (sizeof(wchar_t) == 2) {
        if (character >= 0x10000) {
            wide += static_cast<wchar_t>(0xd7c0 + (character >> 10));
            wide += static_cast<wchar_t>(0xdc00 + (character & 0x3ff));
            return;
        }
    }
    wide += static_cast<wchar_t>(character);
}

void appendUtf8(std::string& text, char32_t character)
{
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xc0 | (character >> 6));
    } else if (character < 0x10000) {
        text += static_cast<char>(0xe0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3f));
    } else {
        text += static_cast<char>(0xf0 | (character >> 18));
        text += static_cast<char>(0x80 | ((character >> 12) & 0x3f));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3f));
    }
    text += static_cast<char>(0x80 | (character & 0x3f));
}

char32_t unitAt(std::wstring_view text, std::size_t index)
{
    if constexpr (sizeof(wchar_t) == 2) {
        return static_cast<char16_t>(text[index]);
    } else {
        return static_cast<char32_t>(text[index]);
    }
}

bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xd800 && unit <= 0xdbff;
}

bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xdc00 && unit <= 0xdfff;
}

} // namespace

std::wstring toWide(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decode(text);
        appendWide(wide, next.character);
        text.remove_prefix(next.length);
    }
    return wide;
}

std::string toUtf8(std::wstring_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = unitAt(text, i);
        if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(unitAt(text, i + 1))) {
            ++i;
            appendUtf8(narrow, 0x10000 + ((unit - 0xd800) << 10) + (unitAt(text, i) - 0xdc00));
        } else if (unit >= kFirstEscape && unit <= kLastEscape) {
            narrow += static_cast<char>(unit - 0xdc00);
        } else {
            appendUtf8(narrow, unit);
        }
    }
    return narrow;
}

std::filesystem::path nativePath(const std::wstring& path)
{
#ifdef _WIN32
    return path;
#else
    return toUtf8(path);
#endif
}

} // namespace platform
