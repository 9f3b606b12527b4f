#include <maya/MString.h>

#include "host/api/src/toStatus.h"
#include "host/api/src/utf8.h"

#include <maya/MStringArray.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ostream>
#include <string_view>
#include <utility>

using host::ErrorCode;
using host::api::answer;
using host::api::toStatus;

namespace {

/// Bytes of a text of at most `length`, which ends at a zero too; null and negative are nothing.
template<class T>
std::basic_string_view<T> bounded(const T* text, int length)
{
    std::size_t count = 0;
    while (text != nullptr && length > 0 && count < static_cast<std::size_t>(length) &&
           text[count] != T(0)) {
        ++count;
    }
    return {text, count};
}

/// The shortest text that reads back as the same number.
template<class T>
std::string numberText(T number)
{
    char text[64];
    const auto [end, error] = std::to_chars(text, text + sizeof text, number);
    return error == std::errc() ? std::string(text, end) : std::string();
}

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The variable that `text`, which begins with '$', names; its length in `used`, 0 for none.
std::string variableName(std::string_view text, std::size_t& used)
{
    const bool isBraced = text.size() > 1 && text[1] == '{';
    const std::size_t start = isBraced ? 2 : 1;
    std::size_t end = start;
    while (end < text.size() && isNameCharacter(text[end])) {
        ++end;
    }
    const bool isClosed = !isBraced || (end < text.size() && text[end] == '}');
    used = end == start || !isClosed ? 0 : end + (isBraced ? 1 : 0);
    return std::string(text.substr(start, end - start));
}

const char* homeFolder()
{
    const char* home = std::getenv("HOME");
    return home != nullptr ? home : std::getenv("USERPROFILE");
}

} // namespace

MString::MString(const char* text) : m_text(text != nullptr ? text : "") {}

MString::MString(const char* text, int length) : m_text(bounded(text, length)) {}

MString::MString(const wchar_t* text)
    : m_text(text != nullptr ? host::api::toUtf8(text) : std::string())
{
}

MString::MString(const wchar_t* text, int length) : m_text(host::api::toUtf8(bounded(text, length)))
{
}

MString::MString(const MString& other) : m_text(other.m_text) {}

MString::MString(MString&& other) noexcept
    : m_text(std::move(other.m_text)), m_wide(std::move(other.m_wide))
{
}

MString& MString::operator=(const MString& other)
{
    if (this != &other) {
        m_text = other.m_text;
        m_wide.reset();
    }
    return *this;
}

MString& MString::operator=(MString&& other) noexcept
{
    m_text = std::move(other.m_text);
    m_wide = std::move(other.m_wide);
    return *this;
}

MString& MString::operator=(const char* text)
{
    return *this = MString(text);
}

MString::~MString() = default;

MStatus MString::set(const char* text)
{
    *this = MString(text);
    return MStatus();
}

MStatus MString::setUTF8(const char* text)
{
    if (text != nullptr && !host::api::isUtf8(text)) {
        return toStatus(ErrorCode::BadInput);
    }
    return set(text);
}

MStatus MString::setWChar(const wchar_t* text)
{
    *this = MString(text);
    return MStatus();
}

const char* MString::asChar(int& length) const
{
    length = static_cast<int>(m_text.size());
    return asChar();
}

const char* MString::asUTF8(int& length) const
{
    return asChar(length);
}

const wchar_t* MString::asWChar() const
{
    if (m_wide == nullptr) {
        m_wide = std::make_unique<std::wstring>(host::api::toWide(m_text));
    }
    return m_wide->c_str();
}

const wchar_t* MString::asWChar(int& length) const
{
    const wchar_t* text = asWChar();
    length = static_cast<int>(m_wide->size());
    return text;
}

int MString::numChars() const
{
    return static_cast<int>(host::api::characterCount(m_text));
}

MString MString::substring(int start, int end) const
{
    MString part;
    if (start >= 0 && end >= start && static_cast<std::size_t>(end) < m_text.size()) {
        part.m_text = m_text.substr(static_cast<std::size_t>(start),
                                    static_cast<std::size_t>(end) - start + 1);
    }
    return part;
}

int MString::index(char wanted) const
{
    const std::size_t position = m_text.find(wanted);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

int MString::rindex(char wanted) const
{
    const std::size_t position = m_text.rfind(wanted);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

MStatus MString::split(char separator, MStringArray& pieces) const
{
    // Of a copy: the array may hold this very text.
    const std::string text = m_text;
    pieces.clear();
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        if (end > start) {
            MString piece;
            piece.m_text = text.substr(start, end - start);
            pieces.append(piece);
        }
        start = end + 1;
    }
    return pieces.length() > 0 ? MStatus() : toStatus(ErrorCode::Failure);
}

MString MString::expandEnvironmentVariablesAndTilde(MStatus* ReturnStatus) const
{
    MString expanded;
    std::string_view rest = m_text;
    const bool isHome = rest == "~" || rest.starts_with("~/") || rest.starts_with("~\\");
    if (isHome && homeFolder() != nullptr) {
        expanded.m_text = homeFolder();
        rest.remove_prefix(1);
    }
    while (!rest.empty()) {
        std::size_t used = 0;
        const std::string name = rest.front() == '$' ? variableName(rest, used) : std::string();
        const char* value = used > 0 ? std::getenv(name.c_str()) : nullptr;
        if (value != nullptr) {
            expanded.m_text += value;
            rest.remove_prefix(used);
            continue;
        }
        expanded.m_text.push_back(rest.front());
        rest.remove_prefix(1);
    }
    return answer(ReturnStatus, MStatus(), std::move(expanded));
}

MString& MString::operator+=(const MString& other)
{
    m_text += other.m_text;
    m_wide.reset();
    return *this;
}

MString& MString::operator+=(const char* text)
{
    return *this += MString(text);
}

MString& MString::operator+=(double number)
{
    return *this += numberText(number).c_str();
}

MString& MString::operator+=(float number)
{
    return *this += numberText(number).c_str();
}

MString& MString::operator+=(int number)
{
    return *this += numberText(number).c_str();
}

MString& MString::operator+=(unsigned int number)
{
    return *this += numberText(number).c_str();
}

MString MString::operator+(const MString& other) const
{
    return MString(*this) += other;
}

MString MString::operator+(const char* text) const
{
    return MString(*this) += text;
}

MString MString::operator+(double number) const
{
    return MString(*this) += number;
}

MString MString::operator+(float number) const
{
    return MString(*this) += number;
}

MString MString::operator+(int number) const
{
    return MString(*this) += number;
}

MString MString::operator+(unsigned int number) const
{
    return MString(*this) += number;
}

bool MString::operator==(const char* text) const
{
    return m_text == (text != nullptr ? text : "");
}

MString operator+(const char* text, const MString& other)
{
    return MString(text) += other;
}

std::ostream& operator<<(std::ostream& stream, const MString& text)
{
    return stream << text.asUTF8();
}
