// Reads a short binary scene and prints the commands that came of it.
#pragma once

#include "host/file/CommandPrinter.h"
#include "host/file/binary/readBinary.h"
#include "tests/support/BinaryScene.h"
#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

namespace test {

/// The lines of the commands of a file; after "error: " the message of a reader that failed. The
/// bytes are read from a block of just their size, so that a checker of memory sees what is read
/// behind the end.
inline std::string readBinaryFile(std::string_view file,
                                  host::file::binary::Coverage* coverage = nullptr)
{
    NodeTableSink sink;
    std::string lines;
    host::file::CommandPrinter printer([&](std::string_view line) { lines += line; }, &sink);
    const auto copy = std::make_unique<char[]>(file.size());
    std::copy(file.begin(), file.end(), copy.get());
    const auto result = host::file::readBinary({copy.get(), file.size()}, printer, {}, coverage);
    return result ? lines : lines + "error: " + result.error().message + "\n";
}

/// `lines` behind the line that begins with `opening`, without the end of the scene.
inline std::string linesBehind(const std::string& lines, std::string_view opening)
{
    const std::size_t begin = lines.find(opening);
    const std::size_t end = lines.rfind("end\n");
    if (begin == std::string::npos || end == std::string::npos) {
        return lines;
    }
    const std::size_t first = lines.find('\n', begin) + 1;
    return lines.substr(first, end - first);
}

/// The commands of value chunks and definitions on a new node of a type's code; the lines of
/// header, node and end are left out.
inline std::string readChunks(const BinaryScene& mb, std::string_view chunks,
                              std::string_view code = "DMSH")
{
    const std::string lines =
        readBinaryFile(mb.file(mb.header() + mb.node(code, {"node"}, chunks)));
    return linesBehind(lines, mb.manner.hasIds ? "uuid " : "createNode ");
}

/// What every value without flags is told with: flags are absolute, so all of them are given.
inline std::string plainFlags(std::string_view plug)
{
    return "setAttr " + std::string(plug) + " keyable off locked off channelBox off\n";
}

} // namespace test
