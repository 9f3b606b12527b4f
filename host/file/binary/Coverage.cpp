#include "host/file/binary/Coverage.h"

namespace host::file::binary {

void Coverage::count(std::string_view section, Tag tag, std::size_t byteCount, bool isUnderstood,
                     std::string_view reason)
{
    const std::pair key(std::string(section), tag);
    for (Share* share : {&all, &byTag[key]}) {
        share->chunks += 1;
        share->bytes += byteCount;
        share->understoodChunks += isUnderstood ? 1 : 0;
        share->understoodBytes += isUnderstood ? byteCount : 0;
    }
    if (!isUnderstood) {
        firstReason.try_emplace(key, reason);
    }
}

} // namespace host::file::binary
