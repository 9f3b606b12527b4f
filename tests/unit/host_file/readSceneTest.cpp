// Scenes of either format, told apart by their content.
#include "host/file/readScene.h"
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using host::file::recogniseFormat;
using host::file::SceneFormat;
using test::BinaryScene;

namespace {

std::string readAny(const std::string& bytes)
{
    test::NodeTableSink sink;
    std::string lines;
    host::file::CommandPrinter printer([&](std::string_view line) { lines += line; }, &sink);
    const auto result = host::file::readScene(bytes, printer);
    EXPECT_EQ(sink.hasEnded, bool(result));
    return result ? lines : lines + "error: " + result.error().message + "\n";
}

constexpr const char* kNeither =
    "error: the file begins neither with //Maya nor with FOR4 or FOR8: it is no Maya scene\n";

} // namespace

TEST(ReadScene, FormatsByTheirFirstBytes)
{
    EXPECT_EQ(recogniseFormat("//Maya ASCII 2018 scene"), SceneFormat::Ascii);
    EXPECT_EQ(recogniseFormat("//Maya"), SceneFormat::Ascii);
    EXPECT_EQ(recogniseFormat("\xef\xbb\xbf//Maya"), SceneFormat::Ascii);
    EXPECT_EQ(recogniseFormat("FOR4"), SceneFormat::Binary);
    EXPECT_EQ(recogniseFormat("FOR8\xff\xff"), SceneFormat::Binary);
    for (const char* bytes :
         {"", "F", "FOR", "FOR5", "FORM", "for4", "//May", "// Maya", " //Maya", "\xef\xbb\xbf",
          "\xef\xbb\xbf"
          "FOR4",
          "RIFF", "PK\3\4"}) {
        EXPECT_EQ(recogniseFormat(bytes), SceneFormat::Unknown) << bytes;
    }
}

TEST(ReadScene, EachFormatGoesToItsReader)
{
    const BinaryScene narrow(test::kMaya2011);
    const BinaryScene wide(test::kMaya2015);
    const std::string expected = "createNode time name \"t\"\nend\n";
    EXPECT_EQ(readAny("//Maya ASCII 2018 scene\ncreateNode time -n \"t\";\n"), expected);
    EXPECT_EQ(readAny("\xef\xbb\xbf//Maya ASCII 2018 scene\ncreateNode time -n \"t\";\n"),
              expected);
    EXPECT_EQ(readAny(narrow.file(narrow.node("TIME", {"t"}))), expected);
    EXPECT_EQ(readAny(wide.file(wide.node("TIME", {"t"}))), expected);
}

TEST(ReadScene, BytesOfNeitherFormatAreAnError)
{
    EXPECT_EQ(readAny(""), kNeither);
    EXPECT_EQ(readAny("createNode transform;"), kNeither);
    EXPECT_EQ(readAny(std::string(100, '\0')), kNeither);
    // An image of the same family of formats.
    EXPECT_EQ(readAny(std::string("FOR4\0\0\0\x0c"
                                  "CIMGTBHD\0\0\0\0",
                                  20)),
              "error: the file's first group is not of the kind Maya\n");
}
