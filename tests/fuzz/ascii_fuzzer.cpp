// Any bytes as a text scene: the reader must end, within its bytes, and say nothing.
#include "host/file/CommandPrinter.h"
#include "host/file/ascii/readAscii.h"
#include "tests/support/NodeTableSink.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    test::NodeTableSink sink;
    host::file::CommandPrinter printer([](std::string_view) {}, &sink);
    const auto result = host::file::readAscii({reinterpret_cast<const char*>(data), size}, printer);
    return result || !sink.hasEnded ? 0 : -1;
}
