// Takes the parts of a short payload one after another.
#pragma once

#include "host/file/ascii/Reader.h"
#include "host/support/Expected.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::file::ascii {

/// Remembers the first failure; from then on everything taken is zero or empty, and loops that ask
/// `hasFailed` end. Nothing is ever allocated for a count that the rest of the file cannot hold.
class Cursor {
public:
    explicit Cursor(Reader& reader) : m_reader(reader), m_scanner(reader.scanner) {}

    double number();
    /// A whole number of the range; fails on any other.
    std::int64_t integer(std::int64_t lowest, std::int64_t highest);
    std::int32_t int32();
    bool boolean();
    /// A count of things of `tokensEach` tokens; fails when the file has no room for them.
    std::size_t count(std::size_t tokensEach);
    /// A string, a word, or strings in parentheses joined by plus signs, as UTF-8.
    std::string text();
    /// Takes the next token if it is `word`, quoted or not.
    bool takeIf(std::string_view word);
    void expect(std::string_view word);
    /// Fails when the statement goes on.
    void expectEnd();
    bool isAtEnd() { return m_scanner.isAtEndOfStatement(); }

    std::vector<double> numbers(std::size_t count);

    bool hasFailed() const { return !m_reason.empty(); }
    Error error() const { return {ErrorCode::BadInput, m_reason, {}}; }
    void fail(std::string_view reason);
    Reader& reader() { return m_reader; }

private:
    Token takeToken();

    Reader& m_reader;
    Scanner& m_scanner;
    std::string m_reason;
};

} // namespace host::file::ascii
