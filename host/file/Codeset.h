// The character set of a scene's text, and its strings as UTF-8.
#pragma once

#include "platform/codePages.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host::file {

/// Windows code page numbers that are named in the code.
inline constexpr unsigned kWesternEuropean = 1252;
inline constexpr unsigned kUtf8 = 65001;

/// True when a byte of a double-byte code page begins a character of two bytes. False for every
/// byte of other code pages.
bool isLeadByte(unsigned codePage, unsigned char byte);
/// Code pages whose second bytes may look like a backslash (932, 936, 949, 950).
bool isDoubleByte(unsigned codePage);

/// The code page that a scene's first comment lines name ("//Codeset: 932"). Numbers are Windows
/// code pages; names of POSIX sets are taken where they are known. 1252 when there is no such line
/// or the name is unknown, UTF-8 when `hasMark` says that a byte order mark stood before the text.
unsigned findCodePage(std::string_view file, bool hasMark);

/// Texts of one code page as UTF-8.
class Codeset {
public:
    explicit Codeset(unsigned codePage) : m_codePage(codePage) {}

    unsigned codePage() const { return m_codePage; }
    /// True when ASCII bytes alone can not be second bytes: strings may be searched byte by byte.
    bool isDoubleByte() const { return file::isDoubleByte(m_codePage); }
    /// Appends `bytes` as UTF-8. What is no character of the code page becomes U+FFFD, one for each
    /// byte; so does everything outside ASCII when the system knows nothing of the code page.
    void append(std::string_view bytes, std::string& utf8);
    /// True when `bytes` stand as they are: pure ASCII, or valid UTF-8 in a UTF-8 file.
    bool isPlain(std::string_view bytes) const;

private:
    void appendUtf8(std::string_view bytes, std::string& utf8) const;

    unsigned m_codePage;
    std::optional<platform::CodePage> m_converter; ///< opened for the first text that needs it
};

} // namespace host::file
