// JSON as text, written from front to back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host::session {

/// Objects and lists with two blanks of indentation. The caller keeps them balanced. Text that is
/// no valid UTF-8 has its bad bytes replaced by U+FFFD.
class JsonText {
public:
    void beginObject(std::string_view key = {}) { open(key, '{'); }
    void endObject() { close('}'); }
    void beginList(std::string_view key = {}) { open(key, '['); }
    void endList() { close(']'); }
    void text(std::string_view key, std::string_view value);
    void number(std::string_view key, std::uint64_t value);
    void real(std::string_view key, double value);

    /// The whole, with a line break at the end.
    std::string take();

private:
    void open(std::string_view key, char bracket);
    void close(char bracket);
    void beginEntry(std::string_view key);
    void quote(std::string_view value);

    std::string m_text;
    std::size_t m_depth = 0;
    bool m_isFirst = true;
};

} // namespace host::session
