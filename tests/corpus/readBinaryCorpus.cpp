// Reads every .mb file below a folder and tells how much of each was understood.
//
//   read_binary_corpus [FOLDER]     without a folder: the one that ORV_CORPUS names
//
// One line per file: leaf chunks and bytes that were read to their ends, of all there are; then one
// per kind of chunk that was not. Exit status 1 when a file could not be read, or a chunk of a node
// was not understood whose kind is not among those that are known to mean nothing here. Without a
// folder nothing is read, which is told and succeeds.
#include "host/file/binary/Chunk.h"
#include "host/file/binary/Coverage.h"
#include "host/file/binary/readBinary.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"
#include "tests/corpus/scenesBelow.h"
#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using host::file::binary::Coverage;
using host::file::binary::Tag;

/// Kinds of chunks of nodes that are left unread: none.
constexpr std::array<Tag, 0> kKnownGaps{};

struct Gap {
    std::uint64_t chunks = 0;
    std::uint64_t bytes = 0;
    std::string reason; ///< of the first one
};

struct Totals {
    std::size_t files = 0;
    std::size_t unreadable = 0;
    std::size_t commands = 0;
    std::size_t unknownPlugs = 0;
    std::size_t damages = 0;
    std::size_t uncounted = 0;     ///< files of which the reader passed over chunks in silence
    std::uint64_t gapsOfNodes = 0; ///< chunks
    Coverage::Share all;
    std::map<std::pair<std::string, Tag>, Gap> gaps;
};

double percent(std::uint64_t part, std::uint64_t whole)
{
    return whole == 0 ? 100 : 100 * static_cast<double>(part) / static_cast<double>(whole);
}

void tellShare(const char* what, const Coverage::Share& share)
{
    std::printf("%s: %llu of %llu chunks (%.2f %%), %llu of %llu bytes (%.2f %%)\n", what,
                static_cast<unsigned long long>(share.understoodChunks),
                static_cast<unsigned long long>(share.chunks),
                percent(share.understoodChunks, share.chunks),
                static_cast<unsigned long long>(share.understoodBytes),
                static_cast<unsigned long long>(share.bytes),
                percent(share.understoodBytes, share.bytes));
}

bool isKnownGap(Tag tag)
{
    return std::find(kKnownGaps.begin(), kKnownGaps.end(), tag) != kKnownGaps.end();
}

void addGaps(const Coverage& coverage, Totals& totals)
{
    for (const auto& [kind, share] : coverage.byTag) {
        const std::uint64_t missed = share.chunks - share.understoodChunks;
        if (missed == 0) {
            continue;
        }
        Gap& gap = totals.gaps[kind];
        const auto reason = coverage.firstReason.find(kind);
        if (gap.chunks == 0 && reason != coverage.firstReason.end()) {
            gap.reason = reason->second;
        }
        gap.chunks += missed;
        gap.bytes += share.bytes - share.understoodBytes;
        totals.gapsOfNodes += kind.first == "node" && !isKnownGap(kind.second) ? missed : 0;
    }
}

void add(const Coverage::Share& share, Coverage::Share& sum)
{
    sum.chunks += share.chunks;
    sum.bytes += share.bytes;
    sum.understoodChunks += share.understoodChunks;
    sum.understoodBytes += share.understoodBytes;
}

/// Leaves of the whole file, counted without the reader.
std::uint64_t countLeaves(std::span<const char> file)
{
    using namespace host::file::binary;
    const Width width = file.size() > 3 && file[3] == '8' ? Width::Bits64 : Width::Bits32;
    std::uint64_t count = 0;
    std::vector<ChunkWalk> around{{file, width, 0, file.size()}};
    while (!around.empty()) {
        const auto chunk = around.back().next();
        if (!chunk) {
            around.pop_back();
        } else if (chunk->isGroup) {
            around.emplace_back(file, width, *chunk);
        } else {
            ++count;
        }
    }
    return count;
}

void readScene(const std::string& path, Totals& totals)
{
    ++totals.files;
    std::string error;
    const auto file = platform::MappedFile::open(path, error);
    test::NodeTableSink sink;
    Coverage coverage;
    const auto result =
        file ? host::file::readBinary({file->data(), file->size()}, sink, {}, &coverage)
             : host::Expected<void>(host::Error{host::ErrorCode::Io, error, {}});
    if (!result) {
        ++totals.unreadable;
        std::printf("%s: %s\n", path.c_str(), result.error().message.c_str());
    }
    tellShare(path.c_str(), coverage.all);
    const std::uint64_t leaves = file ? countLeaves({file->data(), file->size()}) : 0;
    if (leaves != coverage.all.chunks) {
        std::printf("  the file has %llu chunks\n", static_cast<unsigned long long>(leaves));
        ++totals.uncounted;
    }
    for (const std::string& damage : sink.damages) {
        std::printf("  %s\n", damage.c_str());
    }
    add(coverage.all, totals.all);
    addGaps(coverage, totals);
    totals.damages += sink.damages.size();
    totals.commands += sink.commands;
    totals.unknownPlugs += sink.unknownPlugs;
}

} // namespace

int programMain(int argc, char** argv)
{
    const char* const folder = argc > 1 ? argv[1] : std::getenv("ORV_CORPUS");
    const std::vector<std::string> paths = test::scenesBelow(folder, ".mb");
    if (paths.empty()) {
        std::printf("skipped: 0 scenes found (ORV_CORPUS names no folder with .mb files)\n");
        return 0;
    }
    Totals totals;
    for (const std::string& path : paths) {
        readScene(path, totals);
    }
    for (const auto& [kind, gap] : totals.gaps) {
        std::printf("not understood: %s %s: %llu chunks, %llu bytes; first: %s\n",
                    kind.first.c_str(), kind.second.text().c_str(),
                    static_cast<unsigned long long>(gap.chunks),
                    static_cast<unsigned long long>(gap.bytes), gap.reason.c_str());
    }
    tellShare("all files", totals.all);
    std::printf("%zu files, %zu commands, %zu unreadable, %zu damaged chunks, %llu chunks of nodes "
                "not understood, %zu settings of unknown attributes\n",
                totals.files, totals.commands, totals.unreadable, totals.damages,
                static_cast<unsigned long long>(totals.gapsOfNodes), totals.unknownPlugs);
    return totals.unreadable > 0 || totals.uncounted > 0 || totals.gapsOfNodes > 0 ? 1 : 0;
}
