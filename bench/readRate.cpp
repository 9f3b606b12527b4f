// How fast the text reader delivers a mesh scene, against a bare walk that skips blanks and calls
// fast_float::from_chars on every number of the same bytes.
//
//   bench_read_rate [SCENE.ma]     without a file, a mesh scene of about 100 MB is made in memory
//
// Prints the median rates of alternating runs in MB/s, and their ratio.
#include "bench/IdleSink.h"
#include "host/file/ascii/readAscii.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace {

using host::PlugPath;
using host::PlugShape;
using namespace host::file;

constexpr int kRuns = 9;

// --- the scene

constexpr int kQuads = 580; ///< in a row: some 100 MB
constexpr int kNumbersPerStatement = 166;
constexpr int kFacesPerStatement = 500;

template<class Element>
void appendRanges(std::string& text, const char* attribute, const char* type, int count,
                  int perStatement, Element element)
{
    std::vector<char> line(200);
    for (int first = 0; first < count; first += perStatement) {
        const int last = std::min(first + perStatement, count) - 1;
        std::snprintf(line.data(), line.size(), "\tsetAttr \"%s[%d:%d]\"%s", attribute, first, last,
                      type);
        text += line.data();
        for (int i = first; i <= last; ++i) {
            text += i % 2 == 0 ? "\n\t\t" : " ";
            element(i, line);
            text += line.data();
        }
        text += ";\n";
    }
}

/// Pseudo-random numbers, the same on every machine (Numerical Recipes' constants).
class Random {
public:
    double between(double low, double high)
    {
        m_state = m_state * 1664525u + 1013904223u;
        return low + (high - low) * (m_state / 4294967296.0);
    }

private:
    std::uint32_t m_state = 1;
};

std::string makeScene()
{
    const int n = kQuads;
    const int vertices = (n + 1) * (n + 1);
    const int across = n * (n + 1);
    std::string text = "//Maya ASCII 2018 scene\ncreateNode mesh -n \"gridShape\";\n";
    Random random;
    const auto append = [](std::vector<char>& line, const char* format, auto... numbers) {
        std::snprintf(line.data(), line.size(), format, numbers...);
    };
    appendRanges(text, ".uvst[0].uvsp", " -type \"float2\"", vertices, kNumbersPerStatement,
                 [&](int, auto& line) {
                     append(line, "%.8g %.8g", random.between(0, 1), random.between(0, 1));
                 });
    appendRanges(text, ".vt", "", vertices, kNumbersPerStatement, [&](int, auto& line) {
        append(line, "%.8g %.8g %.8g", random.between(-50, 50), random.between(-1, 1),
               random.between(-0.05, 0.05));
    });
    appendRanges(text, ".ed", "", 2 * across, kNumbersPerStatement, [&](int i, auto& line) {
        const int k = i < across ? i : i - across;
        const int start = i < across ? k / n * (n + 1) + k % n : k;
        append(line, "%d %d 1", start, i < across ? start + 1 : start + n + 1);
    });
    appendRanges(text, ".n", " -type \"float3\"", 4 * n * n, kNumbersPerStatement,
                 [&](int, auto& line) {
                     append(line, "%.8g %.8g %.8g", random.between(-1, 1), random.between(0, 1),
                            random.between(-1, 1));
                 });
    appendRanges(text, ".fc", " -type \"polyFaces\"", n * n, kFacesPerStatement,
                 [&](int i, auto& line) {
                     const int row = i / n;
                     const int corner = row * (n + 1) + i % n;
                     append(line, "f 4 %d %d %d %d\n\t\tmu 0 4 %d %d %d %d", i, across + corner + 1,
                            -(i + n + 1), -(across + corner + 1), corner, corner + 1,
                            corner + n + 2, corner + n + 1);
                 });
    return text;
}

// --- the listener

/// Stores everything that it is told, as a scene does.
class StoringSink : public IdleSink {
public:
    std::vector<float> floats;
    std::vector<std::int32_t> integers;
    std::vector<host::PolyFaces> faces;

    PlugShape shapeOf(const PlugPath& plug) override
    {
        PlugShape shape;
        shape.isKnown = true;
        const std::string_view name = plug.last().name;
        if (name == "fc") {
            shape.kind = host::AttributeKind::PolyFaces;
            return shape;
        }
        shape.isNumbers = name == "vt" || name == "ed" || name == "n" || name == "uvsp";
        shape.isKnown = shape.isNumbers;
        shape.isMulti = true;
        shape.kind = host::AttributeKind::Compound;
        shape.storage = name == "ed" ? host::NumberStorage::Int32 : host::NumberStorage::Float;
        shape.width = name == "uvsp" ? 2 : 3;
        if (name == "vt") {
            shape.units.fill(host::UnitKind::Linear);
        }
        return shape;
    }

    void setAttribute(const SetAttribute& command) override
    {
        const NumberBlock& block = command.numbers;
        floats.insert(floats.end(), block.floats.begin(), block.floats.end());
        integers.insert(integers.end(), block.integers.begin(), block.integers.end());
        if (command.faces != nullptr) {
            faces.push_back(std::move(*command.faces));
        }
    }
};

// --- the walks

/// Sum of all numbers, so that no walk is optimised away.
double walkBarely(std::string_view bytes)
{
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    double sum = 0;
    while (p < end) {
        if (static_cast<unsigned char>(*p) <= ' ') {
            ++p;
            continue;
        }
        double number = 0;
        const auto result = fast_float::from_chars(p, end, number);
        if (result.ec == std::errc()) {
            sum += number;
            p = result.ptr;
            continue;
        }
        while (p<end&& static_cast<unsigned char>(*p)> ' ') {
            ++p;
        }
    }
    return sum;
}

std::size_t read(std::string_view bytes)
{
    StoringSink sink;
    const auto result = readAscii({bytes.data(), bytes.size()}, sink);
    if (!result || sink.damages > 0) {
        std::fprintf(stderr, "the scene was not read: %zu damaged statements\n", sink.damages);
        std::exit(1);
    }
    return sink.floats.size() + sink.integers.size() + sink.faces.size();
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
    std::string made;
    std::optional<platform::MappedFile> file;
    if (argc > 1) {
        std::string error;
        file = platform::MappedFile::open(argv[1], error);
        if (!file) {
            std::fprintf(stderr, "%s\n", error.c_str());
            return 1;
        }
    } else {
        made = makeScene();
    }
    const std::string_view bytes = file ? file->bytes() : std::string_view(made);
    std::vector<double> bare;
    std::vector<double> reader;
    volatile double kept = 0;
    for (int run = 0; run < kRuns; ++run) {
        std::clock_t start = std::clock();
        kept = kept + walkBarely(bytes);
        bare.push_back(secondsSince(start));
        start = std::clock();
        kept = kept + static_cast<double>(read(bytes));
        reader.push_back(secondsSince(start));
    }
    const double megabytes = static_cast<double>(bytes.size()) / 1e6;
    const double bareRate = megabytes / median(bare);
    const double readerRate = megabytes / median(reader);
    std::printf("scene %.1f MB\n", megabytes);
    std::printf("bare %.0f MB/s\n", bareRate);
    std::printf("reader %.0f MB/s\n", readerRate);
    std::printf("ratio %.3f\n", readerRate / bareRate);
    return 0;
}
