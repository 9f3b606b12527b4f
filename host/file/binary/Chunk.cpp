#include "host/file/binary/Chunk.h"

#include "host/file/binary/bigEndian.h"

#include <algorithm>

namespace host::file::binary {
namespace {

constexpr std::size_t kKindBytes = 4;

constexpr Tag kGroupTags[] = {"FOR4", "LIS4", "CAT4", "PRO4", "FOR8", "LIS8", "CAT8", "PRO8"};

bool isGroupTag(Tag tag)
{
    return std::find(std::begin(kGroupTags), std::end(kGroupTags), tag) != std::end(kGroupTags);
}

} // namespace

ChunkWalk::ChunkWalk(std::span<const char> file, Width width, std::size_t begin, std::size_t end)
    : m_file(file)
    , m_width(width)
    , m_position(std::min(begin, end))
    , m_end(std::min(end, file.size()))
{
    m_position = std::min(m_position, m_end);
}

std::optional<Chunk> ChunkWalk::next()
{
    const bool isWide = m_width == Width::Bits64;
    const std::size_t headingBytes = isWide ? 16 : 8;
    const std::size_t alignment = isWide ? 8 : 4;
    if (m_end - m_position < headingBytes) {
        return std::nullopt;
    }
    const char* const heading = m_file.data() + m_position;
    Chunk chunk;
    chunk.tag = Tag(loadBits<std::uint32_t>(heading));
    chunk.offset = m_position;
    chunk.begin = m_position + headingBytes;
    // The four bytes behind the tag of a 64-bit file are left-over memory.
    const std::uint64_t size =
        isWide ? loadBits<std::uint64_t>(heading + 8) : loadBits<std::uint32_t>(heading + 4);
    const std::size_t room = m_end - chunk.begin;
    chunk.isCut = size > room;
    const std::size_t there = chunk.isCut ? room : static_cast<std::size_t>(size);
    chunk.payload = m_file.subspan(chunk.begin, there);
    chunk.isGroup = isGroupTag(chunk.tag) && there >= kKindBytes;
    const std::size_t padding = chunk.isGroup ? 0 : (alignment - there % alignment) % alignment;
    m_position = chunk.begin + there + std::min(padding, room - there);
    if (chunk.isGroup) {
        chunk.kind = Tag(loadBits<std::uint32_t>(chunk.payload.data()));
        chunk.begin += kKindBytes;
        chunk.payload = chunk.payload.subspan(kKindBytes);
    }
    return chunk;
}

} // namespace host::file::binary
