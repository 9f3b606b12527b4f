// The end of a text that may be longer than one wants to keep.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// Keeps the last bytes of what is appended, at most `limit` of them.
class TailText {
public:
    explicit TailText(std::size_t limit) : m_limit(limit) {}

    void append(std::string_view bytes)
    {
        m_text.append(bytes);
        if (m_text.size() > 2 * m_limit) { // cutting rarely keeps the cost of a byte constant
            m_text.erase(0, m_text.size() - m_limit);
        }
    }

    [[nodiscard]] std::string text() const
    {
        return m_text.size() > m_limit ? m_text.substr(m_text.size() - m_limit) : m_text;
    }

private:
    std::string m_text;
    std::size_t m_limit;
};

} // namespace platform
