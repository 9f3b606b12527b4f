#include "host/file/Command.h"

#include <array>
#include <charconv>

namespace host::file {
namespace {

std::string numberText(std::uint64_t number, int base)
{
    std::array<char, 24> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number, base);
    return std::string(digits.data(), result.ptr);
}

} // namespace

std::string Place::text() const
{
    if (line == 0) {
        return "offset 0x" + numberText(offset, 16);
    }
    return "line " + numberText(line, 10) + ", column " + numberText(column, 10);
}

} // namespace host::file
