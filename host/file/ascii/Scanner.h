// The tokens of a scene's text: one forward walk over bytes that somebody else holds.
#pragma once

#include "host/file/Codeset.h"
#include "host/file/ascii/numbers.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace host::file::ascii {

struct Token {
    enum class Kind : std::uint8_t {
        End,       ///< of the file, also inside a string
        Semicolon, ///< not taken by anything but takeSemicolon
        String,    ///< `text` is what stands between the quotes, escapes and code page as written
        Word,
        Mark ///< one of ( ) { }
    };
    Kind kind = Kind::End;
    std::string_view text;
    bool hasEscapes = false;

    bool isText() const { return kind == Kind::String || kind == Kind::Word; }
    bool isMark(char c) const { return kind == Kind::Mark && text.front() == c; }
};

/// Walks over the bytes. Never reads outside them; what it returns are views of them.
class Scanner {
public:
    Scanner(std::string_view bytes, Codeset& codeset);

    std::string_view bytes() const { return m_bytes; }
    std::size_t offset() const { return static_cast<std::size_t>(m_p - m_bytes.data()); }
    std::size_t bytesLeft() const { return static_cast<std::size_t>(m_end - m_p); }
    /// Where the token that was taken or looked at last begins.
    std::size_t tokenOffset() const { return m_tokenOffset; }
    void moveTo(std::size_t offset) { m_p = m_bytes.data() + offset; }

    /// Skips blanks and comments.
    void skipBlanks();
    /// True when a semicolon or the end of the file comes next; takes nothing but blanks.
    bool isAtEndOfStatement();
    bool isAtEndOfFile();
    /// The next token; a semicolon or the end is answered but not taken.
    Token take();
    Token peek();
    /// Takes up to and with the next semicolon outside strings and comments. False: the file ends
    /// before it.
    bool skipStatement();

    /// The text of a string or word as UTF-8, escapes resolved, appended to `text`.
    void appendText(const Token& token, std::string& text);
    /// True when the token's text stands in the file as it is.
    bool isPlain(const Token& token) const;

    /// Fast reading of numbers: the place and the end of the bytes.
    const char* position() const { return m_p; }
    const char* end() const { return m_end; }
    void setPosition(const char* p) { m_p = p; }

private:
    const char* afterCharacter(const char* p) const;
    Token takeString();
    Token takeWord();
    bool skipComment();

    std::string_view m_bytes;
    const char* m_p;
    const char* m_end;
    std::size_t m_tokenOffset = 0;
    Codeset& m_codeset;
    bool m_isDoubleByte;
};

} // namespace host::file::ascii
