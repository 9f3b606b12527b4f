// How fast the reader of binary scenes decodes a file into a listener that does nothing, against
// copying the same bytes from one place in memory to another.
//
//   bench_decode_rate SCENE.mb
//
// Prints the median rates of alternating runs in MB/s, and their ratio.
#include "bench/IdleSink.h"
#include "host/file/binary/readBinary.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

using host::PlugPath;
using host::PlugShape;
using namespace host::file;

constexpr int kRuns = 9;

/// Tells of a few attributes what they take, and drops everything.
class CountingSink : public IdleSink {
public:
    std::size_t corners = 0;
    std::size_t numbers = 0;

    PlugShape shapeOf(const PlugPath& plug) override
    {
        PlugShape shape;
        if (plug.last().name == "uvsp") {
            shape.isKnown = shape.isNumbers = shape.isMulti = true;
            shape.kind = host::AttributeKind::Compound;
            shape.storage = host::NumberStorage::Float;
            shape.width = 2;
        }
        return shape;
    }

    void setAttribute(const SetAttribute& command) override
    {
        numbers += command.numbers.numberCount();
        corners += command.faces != nullptr ? command.faces->corners.size() : 0;
    }
};

void read(std::string_view bytes)
{
    CountingSink sink;
    const auto result = readBinary({bytes.data(), bytes.size()}, sink);
    if (!result || sink.damages > 0 || sink.corners == 0 || sink.numbers == 0) {
        std::fprintf(stderr, "the scene was not read: %zu damaged chunks\n", sink.damages);
        std::exit(1);
    }
}

/// Time of the processor: other programs on the machine do not count.
double secondsSince(std::clock_t start)
{
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int programMain(int argc, char** argv)
{
    std::string error;
    const auto file = argc == 2 ? platform::MappedFile::open(argv[1], error) : std::nullopt;
    if (!file) {
        std::fprintf(stderr, "usage: bench_decode_rate SCENE.mb\n%s\n", error.c_str());
        return 1;
    }
    const std::string_view bytes = file->bytes();
    std::vector<char> target(bytes.size(), 1); // its pages are there before the first run
    std::vector<double> copying;
    std::vector<double> decoding;
    volatile char kept = 0;
    for (int run = 0; run < kRuns; ++run) {
        std::clock_t start = std::clock();
        std::memcpy(target.data(), bytes.data(), bytes.size());
        kept = static_cast<char>(kept + target[bytes.size() / 2]);
        copying.push_back(secondsSince(start));
        start = std::clock();
        read(bytes);
        decoding.push_back(secondsSince(start));
    }
    const double megabytes = static_cast<double>(bytes.size()) / 1e6;
    std::printf("scene %.1f MB\n", megabytes);
    std::printf("memcpy %.0f MB/s\n", megabytes / median(copying));
    std::printf("decoding %.0f MB/s\n", megabytes / median(decoding));
    std::printf("ratio %.3f\n", median(copying) / median(decoding));
    return 0;
}
