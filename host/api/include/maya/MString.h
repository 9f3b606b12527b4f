// Text. Kept as UTF-8; the native `char*` encoding is taken to be UTF-8 too, on every system.
#pragma once

#include <maya/MStatus.h>

#include <iosfwd>
#include <memory>
#include <string>

class MStringArray;

class MString {
public:
    MString() = default;
    /// Null gives empty text; bytes are taken as they are.
    MString(const char* text);
    MString(const char* text, int length);
    /// UTF-16 where wchar_t has 16 bits, UTF-32 elsewhere; what is no character becomes U+FFFD.
    MString(const wchar_t* text);
    MString(const wchar_t* text, int length);
    MString(const MString& other);
    MString(MString&& other) noexcept;
    MString& operator=(const MString& other);
    MString& operator=(MString&& other) noexcept;
    MString& operator=(const char* text);
    ~MString();

    MStatus set(const char* text);
    /// Fails on malformed UTF-8 and then changes nothing.
    MStatus setUTF8(const char* text);
    MStatus setWChar(const wchar_t* text);

    /// The pointers hold until the text is changed or gone.
    const char* asChar() const { return m_text.c_str(); }
    const char* asChar(int& length) const;
    const char* asUTF8() const { return m_text.c_str(); }
    const char* asUTF8(int& length) const;
    const wchar_t* asWChar() const;
    const wchar_t* asWChar(int& length) const;

    /// Length in bytes, and in characters.
    unsigned int length() const { return static_cast<unsigned int>(m_text.size()); }
    int numChars() const;

    /// The bytes `start` to `end`, both included; empty when the range is not within the text.
    MString substring(int start, int end) const;
    /// Position of the first and of the last such byte; -1 when there is none.
    int index(char wanted) const;
    int rindex(char wanted) const;
    /// The pieces between separators; empty pieces are dropped. Fails when no piece is left.
    MStatus split(char separator, MStringArray& pieces) const;
    /// A copy with $NAME, ${NAME} and a leading ~ replaced from the environment; unknown names
    /// stay as they are written.
    MString expandEnvironmentVariablesAndTilde(MStatus* ReturnStatus = nullptr) const;

    MString& operator+=(const MString& other);
    MString& operator+=(const char* text);
    MString& operator+=(double number);
    MString& operator+=(float number);
    MString& operator+=(int number);
    MString& operator+=(unsigned int number);
    MString operator+(const MString& other) const;
    MString operator+(const char* text) const;
    MString operator+(double number) const;
    MString operator+(float number) const;
    MString operator+(int number) const;
    MString operator+(unsigned int number) const;

    bool operator==(const MString& other) const { return m_text == other.m_text; }
    bool operator==(const char* text) const;

private:
    std::string m_text;
    mutable std::unique_ptr<std::wstring> m_wide; // made when asked for
};

MString operator+(const char* text, const MString& other);
std::ostream& operator<<(std::ostream& stream, const MString& text);
