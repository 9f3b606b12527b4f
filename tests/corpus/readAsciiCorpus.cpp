// Reads every .ma file below a folder and counts what was odd.
//
//   read_ascii_corpus [FOLDER]     without a folder: the one that ORV_CORPUS names
//
// Exit status 1 when a file could not be read or a statement of one was damaged, but for the files
// that are known to be damaged. Without a folder nothing is read, which is told and succeeds.
#include "host/file/ascii/readAscii.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"
#include "tests/corpus/scenesBelow.h"
#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct KnownDamage {
    std::string_view fileName;
    std::size_t statements;
};

constexpr KnownDamage kKnownDamages[] = {
    {"base_scene_template.ma", 1}, // a template: a placeholder stands where numbers should
};

std::size_t knownDamages(std::string_view path)
{
    for (const KnownDamage& known : kKnownDamages) {
        if (path.ends_with(known.fileName)) {
            return known.statements;
        }
    }
    return 0;
}

struct Totals {
    std::size_t files = 0;
    std::size_t unreadable = 0;
    std::size_t commands = 0;
    std::size_t unknownPlugs = 0;
    std::size_t damages = 0;
    std::size_t knownDamages = 0;
    std::map<std::string, std::size_t> unknownWords;
};

void readScene(const std::string& path, Totals& totals)
{
    ++totals.files;
    std::string error;
    const auto file = platform::MappedFile::open(path, error);
    test::NodeTableSink sink;
    const auto result = file ? host::file::readAscii({file->data(), file->size()}, sink)
                             : host::Expected<void>(host::Error{host::ErrorCode::Io, error, {}});
    if (!result) {
        ++totals.unreadable;
        std::printf("%s: %s\n", path.c_str(), result.error().message.c_str());
    }
    for (const std::string& damage : sink.damages) {
        std::printf("%s: %s\n", path.c_str(), damage.c_str());
    }
    for (const auto& [word, count] : sink.unknownWords) {
        totals.unknownWords[word] += count;
    }
    totals.damages += sink.damages.size();
    totals.knownDamages += std::min(sink.damages.size(), knownDamages(path));
    totals.commands += sink.commands;
    totals.unknownPlugs += sink.unknownPlugs;
}

} // namespace

int programMain(int argc, char** argv)
{
    const char* const folder = argc > 1 ? argv[1] : std::getenv("ORV_CORPUS");
    const std::vector<std::string> paths = test::scenesBelow(folder, ".ma");
    if (paths.empty()) {
        std::printf("skipped: 0 scenes found (ORV_CORPUS names no folder with .ma files)\n");
        return 0;
    }
    Totals totals;
    for (const std::string& path : paths) {
        readScene(path, totals);
    }
    for (const auto& [word, count] : totals.unknownWords) {
        std::printf("unknown word '%s': %zu\n", word.c_str(), count);
    }
    std::printf(
        "%zu files, %zu commands, %zu unreadable, %zu damaged statements (%zu known), %zu unknown "
        "words, %zu settings of unknown attributes\n",
        totals.files, totals.commands, totals.unreadable, totals.damages, totals.knownDamages,
        totals.unknownWords.size(), totals.unknownPlugs);
    return totals.unreadable > 0 || totals.damages > totals.knownDamages ? 1 : 0;
}
