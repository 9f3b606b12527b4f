// Writes a text scene as a binary one, for tests.
//
//   write_binary SCENE.ma RESULT.mb [VERSION]     8.5, 2011, 2012, 2015, 2016 or 2019: the manner;
//                                                 the scene's own version without it
//
// What has no place in the result is told, one a line; exit status 3 then.
#include "host/file/ascii/readAscii.h"
#include "host/session/Session.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"
#include "tests/support/BinaryWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

namespace {

/// The manner of the newest version up to a scene's own.
const test::BinaryManner& mannerOf(std::string_view text)
{
    const std::size_t at = std::min(text.find("requires maya \""), text.size());
    const std::string_view version = text.substr(at, at < text.size() ? 19 : 0);
    const int year = version.size() == 19 ? std::atoi(std::string(version.substr(15)).c_str()) : 0;
    return year < 2008   ? test::kMaya85
           : year < 2012 ? test::kMaya2011
           : year < 2014 ? test::kMaya2012
           : year < 2016 ? test::kMaya2015
           : year < 2018 ? test::kMaya2016
                         : test::kMaya2019;
}

const test::BinaryManner* findManner(std::string_view version)
{
    static constexpr std::array<const test::BinaryManner*, 6> kManners{
        &test::kMaya85,   &test::kMaya2011, &test::kMaya2012,
        &test::kMaya2015, &test::kMaya2016, &test::kMaya2019};
    for (const test::BinaryManner* manner : kManners) {
        if (manner->version == version) {
            return manner;
        }
    }
    return nullptr;
}

/// Of the table of codes as text.
test::TypeCodes readCodes()
{
    test::TypeCodes codes;
    std::ifstream table(ORV_SOURCE_DIR "/host/file/binary/tables/type_codes.txt");
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        std::uint32_t code = 0;
        std::string name;
        if (words >> std::hex >> code >> name) {
            codes[name] = code;
        }
    }
    return codes;
}

std::map<std::string, std::string> defaultNodes()
{
    const host::session::Session empty;
    std::map<std::string, std::string> nodes;
    for (host::session::NodeId id = 0; id < empty.graph().nodeCount(); ++id) {
        nodes[empty.graph().node(id).name] = empty.graph().node(id).type.name();
    }
    return nodes;
}

} // namespace

int programMain(int argc, char** argv)
{
    const test::BinaryManner* const wanted = argc > 3 ? findManner(argv[3]) : nullptr;
    if (argc < 3 || (argc > 3 && wanted == nullptr)) {
        std::fprintf(stderr, "write_binary SCENE.ma RESULT.mb [VERSION]\n");
        return 2;
    }
    std::string error;
    const auto file = platform::MappedFile::open(argv[1], error);
    if (!file) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    const test::BinaryManner& manner =
        wanted != nullptr ? *wanted : mannerOf({file->data(), file->size()});
    test::BinaryWriter writer(manner, readCodes(), defaultNodes());
    const auto read = host::file::readAscii({file->data(), file->size()}, writer);
    if (!read) {
        std::fprintf(stderr, "%s\n", read.error().message.c_str());
        return 1;
    }
    const std::string bytes = writer.bytes();
    std::ofstream result(std::filesystem::path(argv[2]), std::ios::binary);
    result.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    for (const std::string& omission : writer.omissions()) {
        std::printf("left out: %s\n", omission.c_str());
    }
    return !result ? 1 : writer.omissions().empty() ? 0 : 3;
}
