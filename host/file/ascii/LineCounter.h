// Lines and columns of offsets that only grow.
#pragma once

#include "host/file/Command.h"

#include <algorithm>
#include <string_view>

namespace host::file::ascii {

/// Counts each line break once, up to the furthest place that was asked for. Columns count bytes.
class LineCounter {
public:
    explicit LineCounter(std::string_view bytes) : m_bytes(bytes) {}

    /// The place of `offset`, which is not less than that of any call before.
    Place placeOf(std::size_t offset)
    {
        const std::string_view passed = m_bytes.substr(m_counted, offset - m_counted);
        m_line += countBreaks(passed);
        m_counted = offset;
        const std::size_t lastBreak = passed.rfind('\n');
        if (lastBreak != std::string_view::npos) {
            m_lineStart = offset - passed.size() + lastBreak + 1;
        }
        return {m_line, offset - m_lineStart + 1, offset};
    }

private:
    /// Blocks so short that their count fits a byte: the compiler counts sixteen bytes at a time.
    static std::uint64_t countBreaks(std::string_view text)
    {
        constexpr std::size_t kBlock = 240;
        std::uint64_t count = 0;
        while (text.size() >= kBlock) {
            std::uint8_t inBlock = 0;
            for (std::size_t i = 0; i < kBlock; ++i) {
                inBlock = static_cast<std::uint8_t>(inBlock + (text[i] == '\n' ? 1 : 0));
            }
            count += inBlock;
            text.remove_prefix(kBlock);
        }
        return count + static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
    }

    std::string_view m_bytes;
    std::size_t m_counted = 0;
    std::size_t m_lineStart = 0;
    std::uint64_t m_line = 1;
};

} // namespace host::file::ascii
