// Characters of the code pages that old files are written in, as UTF-8. The tables are the
// system's.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// One Windows code page, by its number (932, 1251, ...). 1252 is always there; whether another one
/// is depends on the system (its conversion modules on POSIX, its language files on Windows).
class CodePage {
public:
    explicit CodePage(unsigned number);
    ~CodePage();
    CodePage(CodePage&&) noexcept;
    CodePage& operator=(CodePage&&) noexcept;

    /// Appends the one character (one or two bytes) that `bytes` are. False, and nothing appended,
    /// when they are none of this code page or the system does not know the code page.
    [[nodiscard]] bool append(std::string_view bytes, std::string& utf8);

private:
    struct Converter;
    std::unique_ptr<Converter> m_converter;
};

} // namespace platform
