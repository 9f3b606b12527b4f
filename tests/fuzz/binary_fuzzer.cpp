// Any bytes as a binary scene: the reader must end, within its bytes, and send only commands that
// hold together.
#include "host/file/CommandPrinter.h"
#include "host/file/binary/Coverage.h"
#include "host/file/binary/readBinary.h"
#include "tests/support/CheckingSink.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    test::CheckingSink sink;
    host::file::CommandPrinter printer([](std::string_view) {}, &sink);
    host::file::binary::Coverage coverage;
    const auto result =
        host::file::readBinary({reinterpret_cast<const char*>(data), size}, printer, {}, &coverage);
    if (!sink.faults.empty() || sink.hasEnded != bool(result)) {
        std::fprintf(stderr, "commands that do not hold together:\n%s", sink.faults.c_str());
        std::abort();
    }
    return 0;
}
