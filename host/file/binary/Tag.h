// The four bytes that name a chunk, a group or a node type.
#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace host::file::binary {

struct Tag {
    std::uint32_t code = 0; ///< the four bytes, the first one highest

    constexpr Tag() = default;
    constexpr explicit Tag(std::uint32_t bytes) : code(bytes) {}
    /// Of four letters.
    constexpr Tag(const char (&letters)[5])
    {
        for (int i = 0; i < 4; ++i) {
            code = code << 8 | static_cast<unsigned char>(letters[i]);
        }
    }
    friend constexpr auto operator<=>(const Tag&, const Tag&) = default;

    bool isPrintable() const;
    /// "MESH", or "0x00115c00" where the bytes are no visible characters.
    std::string text() const;
};

} // namespace host::file::binary
