// The tree of chunks that a file is made of.
#pragma once

#include "host/file/binary/Tag.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace host::file::binary {

/// 32-bit files ("FOR4") have sizes of 4 bytes and pad to 4, 64-bit files ("FOR8") to 8.
enum class Width : std::uint8_t { Bits32, Bits64 };

struct Chunk {
    Tag tag;
    bool isGroup = false;
    Tag kind;                      ///< of a group
    std::size_t offset = 0;        ///< of the tag in the file
    std::size_t begin = 0;         ///< of the payload, behind a group's kind
    std::span<const char> payload; ///< what the file has of it
    bool isCut = false; ///< the size passes the end of the group around it, or of the file
};

/// The chunks between two offsets of a file, front to back. Padding is skipped; sizes that pass the
/// end are clipped. Every step is at least a chunk's heading long.
class ChunkWalk {
public:
    ChunkWalk(std::span<const char> file, Width width, std::size_t begin, std::size_t end);
    /// The children of a group.
    ChunkWalk(std::span<const char> file, Width width, const Chunk& group)
        : ChunkWalk(file, width, group.begin, group.begin + group.payload.size())
    {
    }

    /// The next chunk; nothing at the end, and where fewer bytes are left than a heading has.
    std::optional<Chunk> next();
    std::size_t position() const { return m_position; }
    /// Bytes behind the last chunk that are none.
    std::size_t strayBytes() const { return m_end - m_position; }

private:
    std::span<const char> m_file;
    Width m_width;
    std::size_t m_position;
    std::size_t m_end;
};

} // namespace host::file::binary
