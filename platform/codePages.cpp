#include "platform/codePages.h"

#include <array>
#include <cstdint>

#ifdef _WIN32
#include "platform/wideText.h"

#include <windows.h>
#else
#include <iconv.h>
#endif

namespace platform {
namespace {

// Code points of the bytes 0x80 to 0x9f of code page 1252; the five unused bytes stand for the
// control characters of their number, as in the tables of the system that it comes from.
constexpr std::array<std::uint16_t, 32> kWesternEuropean{
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

/// Code points below U+10000 only.
void appendCodePoint(unsigned point, std::string& utf8)
{
    if (point < 0x80) {
        utf8 += static_cast<char>(point);
    } else if (point < 0x800) {
        utf8 += static_cast<char>(0xc0 | (point >> 6));
        utf8 += static_cast<char>(0x80 | (point & 0x3f));
    } else {
        utf8 += static_cast<char>(0xe0 | (point >> 12));
        utf8 += static_cast<char>(0x80 | ((point >> 6) & 0x3f));
        utf8 += static_cast<char>(0x80 | (point & 0x3f));
    }
}

bool appendWesternEuropean(std::string_view bytes, std::string& utf8)
{
    if (bytes.size() != 1) {
        return false;
    }
    const unsigned char byte = static_cast<unsigned char>(bytes[0]);
    const bool isRemapped = byte >= 0x80 && byte < 0xa0;
    appendCodePoint(isRemapped ? kWesternEuropean[byte - 0x80u] : byte, utf8);
    return true;
}

} // namespace

#ifdef _WIN32

struct CodePage::Converter {
    unsigned number;

    explicit Converter(unsigned codePage) : number(codePage) {}

    bool append(std::string_view bytes, std::string& utf8) const
    {
        std::array<wchar_t, 4> wide{};
        const int length =
            MultiByteToWideChar(number, MB_ERR_INVALID_CHARS, bytes.data(),
                                static_cast<int>(bytes.size()), wide.data(), wide.size());
        if (length <= 0) {
            return false;
        }
        utf8 += toUtf8(std::wstring_view(wide.data(), static_cast<std::size_t>(length)));
        return true;
    }
};

#else

struct CodePage::Converter {
    iconv_t handle;

    explicit Converter(unsigned codePage)
        : handle(iconv_open("UTF-8", ("CP" + std::to_string(codePage)).c_str()))
    {
    }
    ~Converter()
    {
        if (isOpen()) {
            iconv_close(handle);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

    bool append(std::string_view bytes, std::string& utf8) const
    {
        if (!isOpen()) {
            return false;
        }
        std::string source(bytes);
        std::array<char, 16> target{};
        char* from = source.data();
        char* to = target.data();
        std::size_t fromLeft = source.size();
        std::size_t toLeft = target.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        const std::size_t status = iconv(handle, &from, &fromLeft, &to, &toLeft);
        if (status == static_cast<std::size_t>(-1) || fromLeft != 0) {
            return false;
        }
        utf8.append(target.data(), target.size() - toLeft);
        return true;
    }
};

#endif

CodePage::CodePage(unsigned number)
    : m_converter(number == 1252 ? nullptr : std::make_unique<Converter>(number))
{
}

CodePage::~CodePage() = default;
CodePage::CodePage(CodePage&&) noexcept = default;
CodePage& CodePage::operator=(CodePage&&) noexcept = default;

bool CodePage::append(std::string_view bytes, std::string& utf8)
{
    return m_converter == nullptr ? appendWesternEuropean(bytes, utf8)
                                  : m_converter->append(bytes, utf8);
}

} // namespace platform
