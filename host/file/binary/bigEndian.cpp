#include "host/file/binary/bigEndian.h"

#include "host/support/wideProcessors.h"

namespace host::file::binary {

HOST_ALSO_FOR_WIDE_PROCESSORS void loadWords(const char* bytes, std::size_t count, void* target)
{
    char* const to = static_cast<char*>(target);
    for (std::size_t i = 0; i < count; ++i) {
        const auto word = load<std::uint32_t>(bytes + 4 * i);
        std::memcpy(to + 4 * i, &word, sizeof word);
    }
}

} // namespace host::file::binary
