// HEAD: version, units, file info, plug-ins.
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2019;
using test::kMaya85;
using test::readBinaryFile;

namespace {

constexpr const char* kCentimetres = "currentUnit linear \"cm\" angular \"deg\" time \"film\"\n";

/// The commands of a header of these chunks.
std::string header(const BinaryScene& mb, std::string_view chunks)
{
    const std::string lines = readBinaryFile(mb.file(mb.group("HEAD", chunks)));
    return lines.substr(0, lines.rfind("end\n"));
}

} // namespace

TEST(BinaryHeader, TheVersionIsARequirement)
{
    const BinaryScene wide(kMaya2019);
    EXPECT_EQ(header(wide, wide.leaf("VERS", "2018ff09")), "requires \"maya\" \"2018ff09\"\n");
    const BinaryScene narrow(kMaya85);
    EXPECT_EQ(header(narrow, narrow.leaf("VERS", "2010ff03 (Beta 1)")),
              "requires \"maya\" \"2010ff03 (Beta 1)\"\n");
    EXPECT_EQ(header(narrow, narrow.leaf("VERS", "")), "requires \"maya\" \"\"\n");
    // A zero byte ends the text.
    for (const std::string_view version :
         {std::string_view("8.5\0\0", 5), std::string_view("8.5\0x", 5)}) {
        EXPECT_EQ(header(narrow, narrow.leaf("VERS", version)), "requires \"maya\" \"8.5\"\n");
    }
}

TEST(BinaryHeader, AllOfTheUsualChunksGiveVersionAndUnits)
{
    EXPECT_EQ(readBinaryFile(BinaryScene(kMaya2019).file(BinaryScene(kMaya2019).header())),
              std::string("requires \"maya\" \"2019\"\n") + kCentimetres + "end\n");
    EXPECT_EQ(readBinaryFile(BinaryScene(kMaya85).file(BinaryScene(kMaya85).header())),
              std::string("requires \"maya\" \"8.5\"\n") + kCentimetres + "end\n");
}

TEST(BinaryHeader, UnitsMayComeInAnyOrderAndInPart)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(header(mb, mb.leaf("TUNI", "ntscf") + mb.leaf("AUNI", "rad") + mb.leaf("LUNI", "ft")),
              "currentUnit linear \"ft\" angular \"rad\" time \"ntscf\"\n");
    EXPECT_EQ(header(mb, mb.leaf("LUNI", "m")),
              "currentUnit linear \"m\" angular \"deg\" time \"film\"\n");
}

TEST(BinaryHeader, UnknownUnitsAreReportedAndTheUsualOnesHold)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(header(mb, mb.leaf("LUNI", "parsec") + mb.leaf("AUNI", "") +
                             mb.leaf("TUNI", std::string(100, 'x'))),
              "damaged \"LUNI\": unknown unit 'parsec'\ndamaged \"AUNI\": unknown unit ''\n"
              "damaged \"TUNI\": unknown unit '" +
                  std::string(40, 'x') + "'\n" + kCentimetres);
}

TEST(BinaryHeader, NumbersAreNotScaledByTheUnits)
{
    // Internal units in metres as in centimetres, in radians as in degrees.
    for (const char* unit : {"cm", "m", "in"}) {
        const BinaryScene mb(kMaya2019);
        const std::string lines = readBinaryFile(mb.file(
            mb.header("", unit, "pal") + mb.node("XFRM", {"t"}, mb.doubles("t", {1, 2, 3}))));
        EXPECT_NE(lines.find("setAttr .t double x 3: 1 2 3\n"), std::string::npos) << lines;
    }
}

TEST(BinaryHeader, FileInfo)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(header(mb, mb.fileInfo("application", "maya") + mb.fileInfo("", "")),
              "fileInfo \"application\" \"maya\"\nfileInfo \"\" \"\"\n");
    EXPECT_EQ(header(mb, mb.leaf("FINF", std::string_view("key\0value", 9)) +
                             mb.leaf("FINF", std::string_view("key\0value\0more", 14))),
              "damaged \"FINF\": a text has no end\nfileInfo \"key\" \"value\"\n"
              "damaged \"FINF\": 4 bytes are left over\n");
}

TEST(BinaryHeader, TextsAreUtf8ElseWesternEuropean)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(header(mb, mb.fileInfo("a", "caf\xc3\xa9") + mb.fileInfo("b", "caf\xe9")),
              "fileInfo \"a\" \"caf\xc3\xa9\"\nfileInfo \"b\" \"caf\xc3\xa9\"\n");
}

TEST(BinaryHeader, PluginsTellTheirTypesSince2014)
{
    const BinaryScene wide(kMaya2019);
    EXPECT_EQ(header(wide, wide.plugin("alembic", "1.0", {{"AlembicNode", 0x00082697}}) +
                               wide.plugin("two words", "", {{"a", 1}, {"b", 2}}) +
                               wide.plugin("none", "3")),
              "requires \"alembic\" \"1.0\" nodeType \"AlembicNode\"\n"
              "requires \"two words\" \"\" nodeType \"a\" nodeType \"b\"\n"
              "requires \"none\" \"3\"\n");
    const BinaryScene narrow(kMaya2011);
    EXPECT_EQ(header(narrow, narrow.plugin("old", "2.1")), "requires \"old\" \"2.1\"\n");
}

TEST(BinaryHeader, APluginThatIsCutShortIsDamaged)
{
    const BinaryScene mb(kMaya2019);
    const std::string whole = BinaryBytes().text("p").text("1").text("").text("type").u32(7);
    // 11 bytes of texts, then a code of 4: what ends inside of either is damaged.
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{3}, std::size_t{6}, std::size_t{12}}) {
        const std::string lines = header(mb, mb.leaf("PLUG", whole.substr(0, size)));
        EXPECT_TRUE(lines.starts_with("damaged \"PLUG\": ")) << size << lines;
        EXPECT_EQ(lines.find("requires"), std::string::npos) << size << lines;
    }
}

TEST(BinaryHeader, ChunksThatSayNothingHereAreSkippedQuietlyAndOthersTold)
{
    const BinaryScene mb(kMaya2019);
    std::string quiet;
    for (const char* tag :
         {"UVER", "MADE", "CHNG", "ICON", "INFO", "OBJN", "INCL", "BCSZ", "DATS", "SMTD"}) {
        quiet += mb.leaf(tag, "abc");
    }
    EXPECT_EQ(header(mb, quiet + mb.leaf("WHAT", "abc") + quiet), "unknown \"WHAT\"\n");
    EXPECT_EQ(readBinaryFile(mb.file(mb.trailer(3))), "end\n");
}

TEST(BinaryHeader, TicksOfASecondAreTold)
{
    // A time of four bytes counts 6000 in a second: 23520 of ours each.
    const BinaryScene old(kMaya2011);
    EXPECT_EQ(test::readChunks(old, old.definition({"aTIM",
                                                    "start",
                                                    "st",
                                                    0x4000,
                                                    0,
                                                    "",
                                                    "",
                                                    "",
                                                    {std::string(4, '\0')},
                                                    {},
                                                    {},
                                                    {},
                                                    {},
                                                    {},
                                                    BinaryBytes().raw("DBLE").i32(-250)})),
              "addAttr \"start\" short \"st\" time initial -5880000\n");
    // Files that count 1000: 141120 each.
    BinaryScene odd(kMaya2019);
    const std::string definition = odd.definition({"aTIM",
                                                   "start",
                                                   "st",
                                                   0x4000,
                                                   0,
                                                   "",
                                                   "",
                                                   "",
                                                   {std::string(4, '\0')},
                                                   {},
                                                   {},
                                                   {},
                                                   {},
                                                   {},
                                                   BinaryBytes().raw("DBLE").i64(3)});
    const std::string thousand = odd.group("HEAD", odd.leaf("TDUR", "1000"));
    const std::string node = odd.node("TIME", {"a"}, definition);
    EXPECT_EQ(test::linesBehind(readBinaryFile(odd.file(thousand + node)), "uuid "),
              "addAttr \"start\" short \"st\" time initial 423360\n");
    // The usual ones are ours.
    EXPECT_EQ(test::linesBehind(readBinaryFile(odd.file(odd.header() + node)), "uuid "),
              "addAttr \"start\" short \"st\" time initial 3\n");
}

TEST(BinaryHeader, TicksThatAreNoNumberAreReported)
{
    const BinaryScene mb(kMaya2019);
    for (const char* text : {"", "0", "-5", "many", "99999999999999999999"}) {
        EXPECT_EQ(header(mb, mb.leaf("TDUR", text)),
                  "damaged \"TDUR\": the number of ticks in a second is no positive number\n");
    }
}

TEST(BinaryHeader, AChunkThatPassesTheEndIsNotRead)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(
        header(mb, mb.leaf("VERS", "2011") + mb.heading("FINF", 1000) + "key"),
        "requires \"maya\" \"2011\"\ndamaged \"FINF\": the chunk passes the end of the header\n");
}
