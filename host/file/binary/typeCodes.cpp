#include "host/file/binary/typeCodes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace host::file::binary {
namespace {

struct TypeCode {
    std::uint32_t code;
    std::uint16_t name; // offset into the store of names
    std::uint8_t nameLength;
};

#include "host/file/binary/tables/typeCodes.inc"

} // namespace

std::string_view findTypeOfCode(Tag code)
{
    const TypeCode* const found = std::lower_bound(
        std::begin(kTypeCodes), std::end(kTypeCodes), code.code,
        [](const TypeCode& row, std::uint32_t sought) { return row.code < sought; });
    if (found == std::end(kTypeCodes) || found->code != code.code) {
        return {};
    }
    return {kNames + found->name, found->nameLength};
}

} // namespace host::file::binary
