// Reads a short text scene and prints the commands that came of it.
#pragma once

#include "host/file/CommandPrinter.h"
#include "host/file/ascii/readAscii.h"
#include "tests/support/NodeTableSink.h"

#include <string>
#include <string_view>

namespace test {

/// What readers are asked before every test scene: a header line and a node, so that plugs such as
/// ".t" have one.
inline constexpr std::string_view kHeader = "//Maya ASCII 2018 scene\n";

/// The lines of the commands of `text`, which follows the header; after "error: " the message of a
/// reader that failed.
inline std::string readFile(std::string_view file)
{
    NodeTableSink sink;
    std::string lines;
    host::file::CommandPrinter printer([&](std::string_view line) { lines += line; }, &sink);
    const auto result = host::file::readAscii({file.data(), file.size()}, printer);
    return result ? lines : lines + "error: " + result.error().message + "\n";
}

/// The commands of statements on a new node of a type; the lines of the node itself and the end are
/// left out.
inline std::string readStatements(std::string_view statements, std::string_view nodeType = "mesh",
                                  std::string_view before = {})
{
    const std::string node = "createNode " + std::string(nodeType) + " -n \"node\";\n";
    const std::string lines =
        readFile(std::string(kHeader) + std::string(before) + node + std::string(statements));
    const std::string opening = "createNode " + std::string(nodeType) + " name \"node\"\n";
    const std::size_t begin = lines.find(opening);
    const std::size_t end = lines.rfind("end\n");
    if (begin == std::string::npos || end == std::string::npos) {
        return lines;
    }
    const std::size_t first = begin + opening.size();
    return lines.substr(first, end - first);
}

} // namespace test
