#include "host/file/binary/Tag.h"

namespace host::file::binary {
namespace {

constexpr int kBytes = 4;

unsigned byteOf(std::uint32_t code, int position)
{
    return code >> (8 * (kBytes - 1 - position)) & 0xff;
}

} // namespace

bool Tag::isPrintable() const
{
    for (int i = 0; i < kBytes; ++i) {
        const unsigned byte = byteOf(code, i);
        if (byte < ' ' || byte > '~') {
            return false;
        }
    }
    return true;
}

std::string Tag::text() const
{
    std::string text;
    if (isPrintable()) {
        for (int i = 0; i < kBytes; ++i) {
            text += static_cast<char>(byteOf(code, i));
        }
        return text;
    }
    text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[code >> shift & 0xf];
    }
    return text;
}

} // namespace host::file::binary
