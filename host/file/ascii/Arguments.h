// The flags and objects of a short statement, sorted out by a table of the command's flags.
#pragma once

#include "host/file/ascii/Reader.h"

#include <span>
#include <string_view>
#include <vector>

namespace host::file::ascii {

/// What follows a flag.
enum class FlagValue : std::uint8_t {
    None,
    Text,   ///< one token, whatever it is
    Boolean ///< one boolean word; the flag alone means yes
};

/// A flag in both spellings, without the dash. Tables are sorted by the short one.
struct FlagRow {
    std::string_view shortName;
    std::string_view longName;
    FlagValue value;
};

/// The row of a word such as "-ln"; null when it is no flag of the table.
const FlagRow* findFlag(std::span<const FlagRow> table, std::string_view word);

/// True for a bare word that has the form of a flag: a dash and a letter.
bool looksLikeFlag(const Token& token);

class Arguments {
public:
    /// Takes the tokens up to the statement's semicolon. False when the file ends before it.
    /// Unknown flags are left out, as flags without a value, and remembered.
    bool read(Reader& reader, std::span<const FlagRow> table);

    const std::vector<std::string_view>& objects() const { return m_objects; }
    /// The object of a position, empty if there is none.
    std::string_view object(std::size_t position) const;
    bool has(std::string_view shortName) const { return find(shortName) != nullptr; }
    /// The text of the last flag of that short name; `fallback` if there is none.
    std::string_view text(std::string_view shortName, std::string_view fallback = {}) const;
    /// -1 not given, else 0 or 1.
    std::int8_t state(std::string_view shortName) const;
    bool isSet(std::string_view shortName) const { return state(shortName) == 1; }
    /// All texts of a flag that may be repeated.
    std::vector<std::string_view> texts(std::string_view shortName) const;
    /// The first flag that the table lacks, empty if there is none.
    std::string_view unknownFlag() const { return m_unknownFlag; }

private:
    struct Flag {
        std::string_view shortName;
        std::string_view text;
    };
    const Flag* find(std::string_view shortName) const;
    bool takeFlag(Reader& reader, const FlagRow& row);

    std::vector<std::string_view> m_objects;
    std::vector<Flag> m_flags;
    std::string_view m_unknownFlag;
};

} // namespace host::file::ascii
