#include "host/file/Codeset.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace host::file {
namespace {

constexpr std::string_view kReplacement = "\xef\xbf\xbd"; // U+FFFD

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Length of the UTF-8 sequence at the beginning of `bytes` (Unicode, table 3-7); 0 if there is no
/// valid one.
std::size_t utf8Length(std::string_view bytes)
{
    const auto at = [&](std::size_t i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u;
    };
    const auto isTail = [&](std::size_t i) { return (at(i) & 0xc0u) == 0x80u; };
    const unsigned lead = at(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xc2 && lead <= 0xdf) {
        return isTail(1) ? 2 : 0;
    }
    if (lead >= 0xe0 && lead <= 0xef) {
        const bool isShortest = lead != 0xe0 || at(1) >= 0xa0;
        const bool isNoSurrogate = lead != 0xed || at(1) < 0xa0;
        return isTail(1) && isTail(2) && isShortest && isNoSurrogate ? 3 : 0;
    }
    if (lead >= 0xf0 && lead <= 0xf4) {
        const bool isShortest = lead != 0xf0 || at(1) >= 0x90;
        const bool isInRange = lead != 0xf4 || at(1) < 0x90;
        return isTail(1) && isTail(2) && isTail(3) && isShortest && isInRange ? 4 : 0;
    }
    return 0;
}

struct NamedSet {
    std::string_view name; ///< small letters and digits only
    unsigned codePage;
};

// Sorted by name. The Windows pages extend the sets of the same script.
constexpr std::array<NamedSet, 16> kNamedSets{{
    {"ansix341968", kWesternEuropean},
    {"ascii", kWesternEuropean},
    {"big5", 950},
    {"cp1251", 1251},
    {"cp1252", kWesternEuropean},
    {"euckr", 949},
    {"gb18030", 936},
    {"gb2312", 936},
    {"gbk", 936},
    {"iso88591", kWesternEuropean},
    {"iso885915", kWesternEuropean},
    {"shiftjis", 932},
    {"sjis", 932},
    {"usascii", kWesternEuropean},
    {"utf8", kUtf8},
    {"windows31j", 932},
}};

unsigned codePageOfName(std::string_view name)
{
    unsigned number = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number);
    if (error == std::errc() && stop == end) {
        return number;
    }
    std::string folded;
    for (const char c : name.substr(0, 40)) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            folded += c;
        } else if (c >= 'A' && c <= 'Z') {
            folded += static_cast<char>(c - 'A' + 'a');
        }
    }
    const auto found =
        std::lower_bound(kNamedSets.begin(), kNamedSets.end(), folded,
                         [](const NamedSet& row, const std::string& n) { return row.name < n; });
    return found != kNamedSets.end() && found->name == folded ? found->codePage : kWesternEuropean;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

bool isDoubleByte(unsigned codePage)
{
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
}

bool isLeadByte(unsigned codePage, unsigned char byte)
{
    if (codePage == 932) {
        return (byte >= 0x81 && byte <= 0x9f) || (byte >= 0xe0 && byte <= 0xfc);
    }
    return isDoubleByte(codePage) && byte >= 0x81 && byte <= 0xfe;
}

unsigned findCodePage(std::string_view file, bool hasMark)
{
    constexpr std::string_view kKey = "//Codeset:";
    while (file.starts_with("//")) {
        const std::size_t end = file.find('\n');
        const std::string_view line = file.substr(0, end);
        if (line.starts_with(kKey)) {
            return codePageOfName(trimmed(line.substr(kKey.size())));
        }
        file.remove_prefix(end == std::string_view::npos ? file.size() : end + 1);
    }
    return hasMark ? kUtf8 : kWesternEuropean;
}

bool Codeset::isPlain(std::string_view bytes) const
{
    if (isAscii(bytes)) {
        return true;
    }
    if (m_codePage != kUtf8) {
        return false;
    }
    while (!bytes.empty()) {
        const std::size_t length = utf8Length(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

void Codeset::appendUtf8(std::string_view bytes, std::string& utf8) const
{
    while (!bytes.empty()) {
        const std::size_t length = utf8Length(bytes);
        utf8 += length == 0 ? kReplacement : bytes.substr(0, length);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
}

void Codeset::append(std::string_view bytes, std::string& utf8)
{
    if (isAscii(bytes)) {
        utf8 += bytes;
        return;
    }
    if (m_codePage == kUtf8) {
        appendUtf8(bytes, utf8);
        return;
    }
    if (!m_converter) {
        m_converter.emplace(m_codePage);
    }
    while (!bytes.empty()) {
        const unsigned char first = static_cast<unsigned char>(bytes[0]);
        if (first < 0x80) {
            utf8 += bytes[0];
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t length = isLeadByte(m_codePage, first) && bytes.size() > 1 ? 2 : 1;
        if (m_converter->append(bytes.substr(0, length), utf8)) {
            bytes.remove_prefix(length);
            continue;
        }
        utf8 += kReplacement;
        bytes.remove_prefix(1);
    }
}

} // namespace host::file
