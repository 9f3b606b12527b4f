#include "host/file/ascii/payloads/Cursor.h"

#include <cmath>
#include <limits>

namespace host::file::ascii {
namespace {

std::string quoted(std::string_view text)
{
    constexpr std::size_t kMaxShownBytes = 40;
    std::string shown(1, '\'');
    shown += text.substr(0, kMaxShownBytes);
    shown += '\'';
    return shown;
}

} // namespace

void Cursor::fail(std::string_view reason)
{
    if (m_reason.empty()) {
        m_reason = reason;
    }
}

Token Cursor::takeToken()
{
    if (hasFailed()) {
        return {};
    }
    const Token token = m_scanner.take();
    const bool isCut = m_scanner.position() == m_scanner.end(); // its other half may be missing
    if (token.kind == Token::Kind::End || isCut) {
        fail("the file ends inside the statement");
        return {};
    }
    if (token.kind == Token::Kind::Semicolon) {
        fail("the statement ends inside its payload");
        return {};
    }
    return token;
}

double Cursor::number()
{
    if (hasFailed()) {
        return 0;
    }
    m_scanner.skipBlanks();
    const char* const p = m_scanner.position();
    if (p < m_scanner.end()) {
        double value = 0;
        const char* const next = readDouble(p, m_scanner.end(), value);
        if (next != nullptr && next < m_scanner.end() && isDelimiter(*next)) {
            m_scanner.setPosition(next);
            return value;
        }
    }
    const Token token = takeToken();
    const auto odd = token.isText() ? numberOfWord(token.text) : std::nullopt;
    if (!odd) {
        fail("a number was expected instead of " + quoted(m_reader.text(token)));
    }
    return odd.value_or(0);
}

std::int64_t Cursor::integer(std::int64_t lowest, std::int64_t highest)
{
    const double value = number();
    const bool isGood = value == std::floor(value) && value >= static_cast<double>(lowest) &&
                        value <= static_cast<double>(highest);
    if (hasFailed() || isGood) {
        return hasFailed() ? 0 : static_cast<std::int64_t>(value);
    }
    fail("a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest) +
         " was expected");
    return 0;
}

std::int32_t Cursor::int32()
{
    return static_cast<std::int32_t>(integer(std::numeric_limits<std::int32_t>::min(),
                                             std::numeric_limits<std::int32_t>::max()));
}

bool Cursor::boolean()
{
    return number() != 0;
}

std::size_t Cursor::count(std::size_t tokensEach)
{
    const std::int64_t value = integer(0, std::numeric_limits<std::int32_t>::max());
    const std::uint64_t needed = static_cast<std::uint64_t>(value) * tokensEach;
    // A token has a character and something that parts it from the next one.
    if (needed > m_scanner.bytesLeft() / 2 + 1) {
        fail(std::to_string(value) + " entries announced, " +
             std::to_string(m_scanner.bytesLeft()) + " bytes left");
        return 0;
    }
    return static_cast<std::size_t>(value);
}

std::string Cursor::text()
{
    std::string result;
    Token token = takeToken();
    if (!token.isMark('(')) {
        if (!hasFailed() && !token.isText()) {
            fail("a text was expected instead of " + quoted(token.text));
        }
        m_scanner.appendText(token, result);
        return result;
    }
    while (!hasFailed()) {
        token = takeToken();
        if (token.isMark(')')) {
            break;
        }
        const bool isPlus = token.kind == Token::Kind::Word && token.text == "+";
        if (token.kind == Token::Kind::String) {
            m_scanner.appendText(token, result);
        } else if (!hasFailed() && !isPlus) {
            fail("a string was expected instead of " + quoted(m_reader.text(token)));
        }
    }
    return result;
}

bool Cursor::takeIf(std::string_view word)
{
    if (hasFailed()) {
        return false;
    }
    const Token token = m_scanner.peek();
    if (!token.isText() || token.text != word) {
        return false;
    }
    takeToken();
    return true;
}

void Cursor::expect(std::string_view word)
{
    if (!takeIf(word)) {
        fail(quoted(word) + " was expected");
    }
}

void Cursor::expectEnd()
{
    if (hasFailed()) {
        return;
    }
    if (!m_scanner.isAtEndOfStatement()) {
        fail("the statement goes on behind its payload");
    } else if (m_scanner.isAtEndOfFile()) {
        fail("the file ends inside the statement");
    }
}

std::vector<double> Cursor::numbers(std::size_t count)
{
    std::vector<double> result;
    if (count > m_scanner.bytesLeft() / 2 + 1) {
        fail(std::to_string(count) + " numbers announced, " +
             std::to_string(m_scanner.bytesLeft()) + " bytes left");
        return result;
    }
    result.reserve(count);
    for (std::size_t i = 0; i < count && !hasFailed(); ++i) {
        result.push_back(number());
    }
    return result;
}

} // namespace host::file::ascii
