// Text of payloads, in full where they are short and as a digest where they are long.
#pragma once

#include "host/types/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace host::file {

/// Shortest text that gives the number back; "nan", "inf", "-inf".
std::string numberText(double number);
/// In double quotes; quotes, backslashes and control characters escaped.
std::string quotedText(std::string_view text);

/// Collects numbers and words one by one. `text()` is all of them with blanks between as long as
/// they are few, else the first ones, their count and a digest of all (FNV-1a of the bits of
/// doubles and of the bytes of words, 64 bits).
class PayloadText {
public:
    void add(double number);
    void add(float number); ///< shown with fewer digits than the double of the same value
    void add(std::string_view word);
    std::string text() const;

private:
    void addNumber(double number, std::string_view shown);
    void addBytes(const void* bytes, std::size_t size);
    void addText(std::string_view shown);

    static constexpr std::size_t kShownEntries = 64;
    static constexpr std::size_t kShownOfLong = 6;
    std::string m_shown;     ///< of the first kShownEntries entries
    std::string m_beginning; ///< of the first kShownOfLong entries
    std::size_t m_count = 0;
    std::uint64_t m_digest = 14695981039346656037u;
};

/// The kind of a value and its data.
std::string valueText(const Value& value);

} // namespace host::file
