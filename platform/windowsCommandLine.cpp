#include "platform/windowsCommandLine.h"

#include <cstddef>

namespace platform {
namespace {

void appendQuoted(std::string& line, const std::string& argument)
{
    if (!argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos) {
        line += argument;
        return;
    }
    line += '"';
    std::size_t backslashes = 0; // directly before the place reached
    for (const char character : argument) {
        if (character == '"') {
            line.append(backslashes + 1, '\\');
        }
        backslashes = character == '\\' ? backslashes + 1 : 0;
        line += character;
    }
    line.append(backslashes, '\\'); // the closing quote must not be taken for one of the text
    line += '"';
}

} // namespace

std::string windowsCommandLine(const std::string& program,
                               const std::vector<std::string>& arguments)
{
    std::string line = "\"" + program + "\"";
    for (const std::string& argument : arguments) {
        line += ' ';
        appendQuoted(line, argument);
    }
    return line;
}

} // namespace platform
