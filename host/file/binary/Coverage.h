// How much of a file was understood.
#pragma once

#include "host/file/binary/Tag.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace host::file::binary {

/// Counts leaf chunks and the bytes of their payloads. A chunk is understood when it was read to
/// its last byte.
struct Coverage {
    struct Share {
        std::uint64_t chunks = 0;
        std::uint64_t bytes = 0;
        std::uint64_t understoodChunks = 0;
        std::uint64_t understoodBytes = 0;
    };
    Share all;
    /// By section ("HEAD", "CONN", "node", ...) and tag.
    std::map<std::pair<std::string, Tag>, Share> byTag;
    std::map<std::pair<std::string, Tag>, std::string> firstReason; ///< of those not understood

    void count(std::string_view section, Tag tag, std::size_t byteCount, bool isUnderstood,
               std::string_view reason = {});
};

} // namespace host::file::binary
