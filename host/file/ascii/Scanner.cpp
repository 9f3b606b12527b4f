#include "host/file/ascii/Scanner.h"

#include <algorithm>
#include <cstring>

namespace host::file::ascii {

Scanner::Scanner(std::string_view bytes, Codeset& codeset)
    : m_bytes(bytes)
    , m_p(bytes.data())
    , m_end(bytes.data() + bytes.size())
    , m_codeset(codeset)
    , m_isDoubleByte(codeset.isDoubleByte())
{
}

bool Scanner::skipComment()
{
    if (*m_p != '/' || m_end - m_p < 2) {
        return false;
    }
    if (m_p[1] == '/') {
        const void* const line = std::memchr(m_p, '\n', bytesLeft());
        m_p = line == nullptr ? m_end : static_cast<const char*>(line) + 1;
        return true;
    }
    if (m_p[1] == '*') {
        const std::size_t close = m_bytes.find("*/", offset() + 2);
        m_p = close == std::string_view::npos ? m_end : m_bytes.data() + close + 2;
        return true;
    }
    return false;
}

void Scanner::skipBlanks()
{
    while (m_p < m_end) {
        if (static_cast<unsigned char>(*m_p) <= ' ') {
            ++m_p;
        } else if (!skipComment()) {
            return;
        }
    }
}

bool Scanner::isAtEndOfStatement()
{
    skipBlanks();
    m_tokenOffset = offset();
    return m_p == m_end || *m_p == ';';
}

bool Scanner::isAtEndOfFile()
{
    skipBlanks();
    return m_p == m_end;
}

const char* Scanner::afterCharacter(const char* p) const
{
    const bool isPair = m_isDoubleByte && m_end - p > 1 && p[1] != '"' &&
                        isLeadByte(m_codeset.codePage(), static_cast<unsigned char>(*p));
    return p + (isPair ? 2 : 1);
}

Token Scanner::takeString()
{
    const char* const begin = ++m_p;
    bool hasEscapes = false;
    while (m_p < m_end) {
        if (*m_p == '"') {
            const std::string_view text(begin, static_cast<std::size_t>(m_p - begin));
            ++m_p;
            return {Token::Kind::String, text, hasEscapes};
        }
        if (*m_p == '\\') {
            hasEscapes = true;
            if (++m_p == m_end) {
                break;
            }
        }
        m_p = afterCharacter(m_p);
    }
    return {};
}

Token Scanner::takeWord()
{
    const char* const begin = m_p++;
    while (m_p < m_end && !isDelimiter(*m_p)) {
        const bool isComment = *m_p == '/' && m_end - m_p > 1 && (m_p[1] == '/' || m_p[1] == '*');
        if (isComment) {
            break;
        }
        ++m_p;
    }
    return {Token::Kind::Word, {begin, static_cast<std::size_t>(m_p - begin)}, false};
}

Token Scanner::take()
{
    skipBlanks();
    m_tokenOffset = offset();
    if (m_p == m_end) {
        return {};
    }
    switch (*m_p) {
    case ';':
        return {Token::Kind::Semicolon, {m_p, 1}, false};
    case '"':
        return takeString();
    case '(':
    case ')':
    case '{':
    case '}':
        return {Token::Kind::Mark, {m_p++, 1}, false};
    default:
        return takeWord();
    }
}

Token Scanner::peek()
{
    const char* const before = m_p;
    const Token token = take();
    m_p = before;
    return token;
}

bool Scanner::skipStatement()
{
    while (true) {
        const Token token = take();
        if (token.kind == Token::Kind::End) {
            return false;
        }
        if (token.kind == Token::Kind::Semicolon) {
            ++m_p;
            return true;
        }
    }
}

bool Scanner::isPlain(const Token& token) const
{
    return !token.hasEscapes && m_codeset.isPlain(token.text);
}

void Scanner::appendText(const Token& token, std::string& text)
{
    if (!token.hasEscapes) {
        m_codeset.append(token.text, text);
        return;
    }
    // Escapes go first, bytes stay bytes: an escaped character may be one of two bytes.
    std::string bytes;
    bytes.reserve(token.text.size());
    const char* p = token.text.data();
    const char* const end = p + token.text.size();
    while (p < end) {
        if (*p == '\\' && p + 1 < end) {
            ++p;
            if (*p == 'n' || *p == 't' || *p == 'r') {
                bytes += *p == 'n' ? '\n' : *p == 't' ? '\t' : '\r';
                ++p;
                continue;
            }
        }
        const char* const next = std::min(afterCharacter(p), end);
        bytes.append(p, next);
        p = next;
    }
    m_codeset.append(bytes, text);
}

} // namespace host::file::ascii
