#include <maya/MStatus.h>

#include "host/api/src/Inside.h"

#include <maya/MString.h>

#include <array>
#include <cstdio>
#include <ostream>
#include <string>

namespace {

struct CodeText {
    const char* name;
    const char* sentence;
};

// By number of the code.
constexpr std::array<CodeText, 9> kCodeTexts{{
    {"kSuccess", "Success"},
    {"kFailure", "Unexpected Internal Failure"},
    {"kInsufficientMemory", "Insufficient memory to complete this method"},
    {"kInvalidParameter", "Object is incompatible with this method"},
    {"kLicenseFailure", "Application is not licensed for the attempted operation"},
    {"kUnknownParameter", "Unknown parameter"},
    {"kNotImplemented", "Method is not implemented"},
    {"kNotFound", "Item not found"},
    {"kEndOfFile", "End of file"},
}};
constexpr const char* kNoObject = "Object does not exist";

} // namespace

MString MStatus::errorString() const
{
    // A number that is no code reads as a failure.
    const auto number = static_cast<std::size_t>(m_code);
    const CodeText& text = kCodeTexts[number < kCodeTexts.size() ? number : 1];
    const std::string sentence = m_isWithoutObject ? kNoObject : text.sentence;
    return MString(("(" + std::string(text.name) + "): " + sentence).c_str());
}

void MStatus::perror(const char* message) const
{
    // The scene may be on its way through standard output.
    std::fprintf(stderr, "%s: %s\n", message != nullptr ? message : "", errorString().asUTF8());
}

void MStatus::perror(const MString& message) const
{
    perror(message.asUTF8());
}

std::ostream& operator<<(std::ostream& stream, const MStatus& status)
{
    return stream << status.errorString().asUTF8();
}
