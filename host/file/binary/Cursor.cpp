#include "host/file/binary/Cursor.h"

namespace host::file::binary {

void Cursor::fail(std::string_view reason)
{
    if (!hasFailed()) {
        m_reason = reason;
        m_p = m_end;
    }
}

void Cursor::expectEnd()
{
    if (!isAtEnd()) {
        fail(std::to_string(left()) + " bytes are left over");
    }
}

std::uint8_t Cursor::u8()
{
    if (isAtEnd()) {
        fail("the chunk is too short");
        return 0;
    }
    return static_cast<std::uint8_t>(*m_p++);
}

std::string_view Cursor::text()
{
    const void* const zero = isAtEnd() ? nullptr : std::memchr(m_p, 0, left());
    if (zero == nullptr) {
        fail("a text has no end");
        return {};
    }
    const char* const begin = m_p;
    const char* const end = static_cast<const char*>(zero);
    m_p = end + 1;
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::span<const char> Cursor::take(std::size_t byteCount)
{
    if (byteCount > left()) {
        fail("the chunk is too short");
        return {};
    }
    const char* const begin = m_p;
    m_p += byteCount;
    return {begin, byteCount};
}

std::size_t Cursor::count(std::size_t bytesEach)
{
    const std::size_t count = u32();
    if (count > left() / bytesEach) {
        fail("a count of " + std::to_string(count) + " exceeds the chunk");
        return 0;
    }
    return count;
}

std::span<const char> Cursor::takeItems(std::size_t count, std::size_t bytesEach)
{
    if (count > left() / bytesEach) {
        fail("a count of " + std::to_string(count) + " exceeds the chunk");
        return {};
    }
    return take(count * bytesEach);
}

} // namespace host::file::binary
