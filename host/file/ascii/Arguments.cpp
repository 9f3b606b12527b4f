#include "host/file/ascii/Arguments.h"

namespace host::file::ascii {
namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

bool looksLikeFlag(const Token& token)
{
    return token.kind == Token::Kind::Word && token.text.size() > 1 && token.text[0] == '-' &&
           isLetter(token.text[1]);
}

const FlagRow* findFlag(std::span<const FlagRow> table, std::string_view word)
{
    if (word.size() < 2 || word[0] != '-') {
        return nullptr;
    }
    word.remove_prefix(1);
    // Some thirty rows at most, and both columns count: a walk.
    for (const FlagRow& row : table) {
        if (row.shortName == word || row.longName == word) {
            return &row;
        }
    }
    return nullptr;
}

bool Arguments::takeFlag(Reader& reader, const FlagRow& row)
{
    if (row.value == FlagValue::None) {
        m_flags.push_back({row.shortName, "yes"});
        return true;
    }
    if (row.value == FlagValue::Boolean) {
        const Token next = reader.scanner.peek();
        const bool isGiven = next.kind == Token::Kind::Word && booleanOfWord(next.text).has_value();
        m_flags.push_back({row.shortName, isGiven ? reader.scanner.take().text : "yes"});
        return true;
    }
    const Token value = reader.scanner.take();
    if (value.isText()) {
        m_flags.push_back({row.shortName, reader.text(value)});
    }
    return value.kind != Token::Kind::End;
}

bool Arguments::read(Reader& reader, std::span<const FlagRow> table)
{
    m_objects.clear();
    m_flags.clear();
    m_unknownFlag = {};
    while (true) {
        const Token token = reader.scanner.take();
        if (token.kind == Token::Kind::End) {
            return false;
        }
        if (token.kind == Token::Kind::Semicolon) {
            return true;
        }
        if (token.kind == Token::Kind::Mark) {
            continue;
        }
        if (!looksLikeFlag(token)) {
            m_objects.push_back(reader.text(token));
            continue;
        }
        const FlagRow* const row = findFlag(table, token.text);
        if (row == nullptr) {
            m_unknownFlag = m_unknownFlag.empty() ? reader.text(token) : m_unknownFlag;
        } else if (!takeFlag(reader, *row)) {
            return false;
        }
    }
}

std::string_view Arguments::object(std::size_t position) const
{
    return position < m_objects.size() ? m_objects[position] : std::string_view();
}

const Arguments::Flag* Arguments::find(std::string_view shortName) const
{
    for (std::size_t i = m_flags.size(); i > 0; --i) {
        if (m_flags[i - 1].shortName == shortName) {
            return &m_flags[i - 1];
        }
    }
    return nullptr;
}

std::string_view Arguments::text(std::string_view shortName, std::string_view fallback) const
{
    const Flag* const flag = find(shortName);
    return flag == nullptr ? fallback : flag->text;
}

std::int8_t Arguments::state(std::string_view shortName) const
{
    const Flag* const flag = find(shortName);
    if (flag == nullptr) {
        return -1;
    }
    return booleanOfWord(flag->text).value_or(false) ? 1 : 0;
}

std::vector<std::string_view> Arguments::texts(std::string_view shortName) const
{
    std::vector<std::string_view> found;
    for (const Flag& flag : m_flags) {
        if (flag.shortName == shortName) {
            found.push_back(flag.text);
        }
    }
    return found;
}

} // namespace host::file::ascii
