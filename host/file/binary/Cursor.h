// Reads a chunk's payload front to back. The first thing that does not fit makes it fail: from then
// on every answer is zero or empty, and nothing is read any more.
#pragma once

#include "host/file/binary/Tag.h"
#include "host/file/binary/bigEndian.h"
#include "host/support/Expected.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host::file::binary {

class Cursor {
public:
    Cursor() = default;
    explicit Cursor(std::span<const char> bytes)
        : m_begin(bytes.data()), m_p(bytes.data()), m_end(bytes.data() + bytes.size())
    {
    }

    std::size_t left() const { return static_cast<std::size_t>(m_end - m_p); }
    std::size_t offset() const { return static_cast<std::size_t>(m_p - m_begin); }
    bool isAtEnd() const { return m_p == m_end; }
    bool hasFailed() const { return !m_reason.empty(); }
    const std::string& reason() const { return m_reason; }
    /// The first reason counts.
    void fail(std::string_view reason);
    /// Fails when bytes are left over.
    void expectEnd();
    Error error() const { return {ErrorCode::BadInput, m_reason, {}}; }

    std::uint8_t u8();
    std::uint16_t u16() { return number<std::uint16_t>(); }
    std::uint32_t u32() { return number<std::uint32_t>(); }
    std::int32_t i32() { return number<std::int32_t>(); }
    double f64() { return number<double>(); }
    Tag tag() { return Tag(u32()); }
    /// Up to a zero byte, which is taken too. Raw bytes; they live as long as the file.
    std::string_view text();
    std::span<const char> take(std::size_t byteCount);
    std::span<const char> rest() { return take(left()); }

    /// A count of 32 bits of items that follow, each of `bytesEach` (at least 1) or more: fails
    /// when the bytes that are left cannot hold as many.
    std::size_t count(std::size_t bytesEach);
    /// `count` numbers; fails before memory is taken when they are not there.
    template<class T>
    std::vector<T> numbers(std::size_t count)
    {
        std::vector<T> list;
        const std::span<const char> bytes = takeItems(count, sizeof(T));
        if (!hasFailed()) {
            list.resize(count);
            loadMany(bytes.data(), count, list.data());
        }
        return list;
    }
    /// The bytes of `count` items of `bytesEach` bytes.
    std::span<const char> takeItems(std::size_t count, std::size_t bytesEach);

private:
    template<class T>
    T number()
    {
        if (left() < sizeof(T)) {
            fail("the chunk is too short");
            return T{};
        }
        const T value = load<T>(m_p);
        m_p += sizeof(T);
        return value;
    }

    const char* m_begin = nullptr;
    const char* m_p = nullptr;
    const char* m_end = nullptr;
    std::string m_reason;
};

} // namespace host::file::binary
