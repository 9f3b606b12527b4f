// Where the file writer puts its bytes: room is reserved, filled in place and committed, so that
// numbers are formatted straight into the buffer.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace orv {

class TextTarget {
public:
    TextTarget(const TextTarget&) = delete;
    TextTarget& operator=(const TextTarget&) = delete;
    virtual ~TextTarget() = default;

    /// Room for `size` bytes, at most kMaxReserve; valid until the next call.
    char* reserve(std::size_t size)
    {
        if (m_capacity - m_used < size) {
            makeRoom(size);
        }
        return m_data + m_used;
    }
    /// Takes over what was written into the reserved room, up to `end`.
    void commit(const char* end) { m_used = static_cast<std::size_t>(end - m_data); }

    void append(std::string_view text)
    {
        if (text.size() > kMaxReserve) {
            appendLarge(text);
        } else if (!text.empty()) {
            std::memcpy(reserve(text.size()), text.data(), text.size());
            m_used += text.size();
        }
    }
    void appendBlanks(std::size_t count);

    static constexpr std::size_t kMaxReserve = 4096;

protected:
    TextTarget() = default;
    virtual void makeRoom(std::size_t size) = 0;
    virtual void appendLarge(std::string_view text) = 0;

    char* m_data = nullptr;
    std::size_t m_used = 0;
    std::size_t m_capacity = 0;
};

} // namespace orv
