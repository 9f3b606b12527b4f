#include "importers/maya/src/base64.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The character for the six bits of `group` that begin at bit `shift`.
char characterAt(std::uint32_t group, int shift)
{
    return kAlphabet[(group >> shift) & 0x3fU];
}

} // namespace

std::string base64_encode(std::string_view bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = (group << 8) | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        text += characterAt(group, 18);
        text += characterAt(group, 12);
        text += count > 1 ? characterAt(group, 6) : '=';
        text += count > 2 ? characterAt(group, 0) : '=';
    }
    return text;
}

std::string base64_decode(std::string_view text)
{
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t pending = 0; // bits that are not yet part of a whole byte, lowest last
    int pendingBits = 0;
    for (const char character : text) {
        const std::size_t value = kAlphabet.find(character);
        if (value == std::string_view::npos) {
            break;
        }
        pending = (pending << 6) | static_cast<std::uint32_t>(value);
        pendingBits += 6;
        if (pendingBits >= 8) {
            pendingBits -= 8;
            bytes += static_cast<char>((pending >> pendingBits) & 0xffU);
        }
    }
    return bytes;
}
