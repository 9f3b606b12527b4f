// Reads one value of a binary scene and prints the commands that came of it.
#pragma once

#include "tests/unit/host_file/readBinaryFile.h"

#include <string>
#include <string_view>

namespace test {

/// The commands of a value chunk on a new node, without the line that tells the flags.
inline std::string readValueChunk(const BinaryManner& manner, std::string_view tag,
                                  const std::string& plug, std::string_view payload,
                                  std::string_view code = "XFRM")
{
    const BinaryScene mb(manner);
    std::string lines = readChunks(mb, mb.value(tag, plug, payload), code);
    const std::string flags = " keyable off locked off channelBox off\n";
    const std::size_t at = lines.find(flags);
    if (at != std::string::npos) {
        const std::size_t begin = at == 0 ? 0 : lines.rfind('\n', at) + 1;
        lines.erase(begin, at + flags.size() - begin);
    }
    return lines;
}

} // namespace test
