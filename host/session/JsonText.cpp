#include "host/session/JsonText.h"

#include <array>
#include <charconv>
#include <utility>

namespace host::session {
namespace {

constexpr std::string_view kReplacement = "\xef\xbf\xbd"; // U+FFFD
constexpr std::string_view kHexDigits = "0123456789abcdef";

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// Length of the well-formed UTF-8 sequence at the front of a text; 0 for none.
std::size_t sequenceLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xc2 && lead < 0xe0 ? 2
                               : lead >= 0xe0 && lead < 0xf0 ? 3
                               : lead >= 0xf0 && lead < 0xf5 ? 4
                                                             : 0;
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) {
            return 0;
        }
    }
    if (length >= 3) {
        const auto second = static_cast<unsigned char>(text[1]);
        const bool isOverlong = (lead == 0xe0 && second < 0xa0) || (lead == 0xf0 && second < 0x90);
        const bool isOutside = (lead == 0xed && second >= 0xa0) || (lead == 0xf4 && second >= 0x90);
        return isOverlong || isOutside ? 0 : length;
    }
    return length;
}

} // namespace

void JsonText::open(std::string_view key, char bracket)
{
    beginEntry(key);
    m_text += bracket;
    ++m_depth;
    m_isFirst = true;
}

void JsonText::close(char bracket)
{
    --m_depth;
    if (!m_isFirst) {
        m_text += '\n';
        m_text.append(m_depth * 2, ' ');
    }
    m_text += bracket;
    m_isFirst = false;
}

void JsonText::beginEntry(std::string_view key)
{
    if (m_depth > 0) {
        m_text += m_isFirst ? "\n" : ",\n";
        m_text.append(m_depth * 2, ' ');
    }
    m_isFirst = false;
    if (!key.empty()) {
        quote(key);
        m_text += ": ";
    }
}

void JsonText::text(std::string_view key, std::string_view value)
{
    beginEntry(key);
    quote(value);
}

void JsonText::number(std::string_view key, std::uint64_t value)
{
    beginEntry(key);
    m_text += std::to_string(value);
}

void JsonText::real(std::string_view key, double value)
{
    beginEntry(key);
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    m_text.append(digits.data(), end.ptr);
}

void JsonText::quote(std::string_view value)
{
    m_text += '"';
    while (!value.empty()) {
        const char letter = value.front();
        const std::size_t length = sequenceLength(value);
        if (length == 0) {
            m_text += kReplacement;
        } else if (letter == '"' || letter == '\\') {
            m_text += '\\';
            m_text += letter;
        } else if (letter == '\n') {
            m_text += "\\n";
        } else if (static_cast<unsigned char>(letter) < 0x20) {
            m_text += "\\u00";
            m_text += kHexDigits[static_cast<unsigned char>(letter) >> 4];
            m_text += kHexDigits[static_cast<unsigned char>(letter) & 15];
        } else {
            m_text += value.substr(0, length);
        }
        value.remove_prefix(length == 0 ? 1 : length);
    }
    m_text += '"';
}

std::string JsonText::take()
{
    m_text += '\n';
    m_depth = 0;
    m_isFirst = true;
    return std::exchange(m_text, {});
}

} // namespace host::session
