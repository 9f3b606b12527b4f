// Node groups: creation, selection, types by their codes, and the flags of attributes.
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::BinaryPlug;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2015;
using test::kMaya2016;
using test::kMaya2019;
using test::kMaya85;
using test::linesBehind;
using test::readBinaryFile;
using test::readChunks;

namespace {

constexpr const char* kNoId = "uuid \"00000000-0000-0000-0000-000000000000\"\n";

/// The commands of groups, without the end.
std::string groups(const BinaryScene& mb, std::string_view text)
{
    const std::string lines = readBinaryFile(mb.file(text));
    return lines.substr(0, lines.rfind("end\n"));
}

/// The commands of a group whose CREA has these bytes.
std::string created(const BinaryScene& mb, std::string_view bytes, std::string_view code = "XFRM")
{
    return groups(mb, mb.group(code, mb.leaf("CREA", bytes)));
}

} // namespace

TEST(BinaryNodes, NamesAndParents)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.node("XFRM", {"a"}) + mb.node("XFRM", {"ns:b", "a"}) +
                             mb.node("DMSH", {"shape", "|a|ns:b"}) + mb.node("XFRM", {""})),
              "createNode transform name \"a\"\n"
              "createNode transform name \"ns:b\" parent \"a\"\n"
              "createNode mesh name \"shape\" parent \"|a|ns:b\"\ncreateNode transform\n");
}

TEST(BinaryNodes, FlagsOfTheCreation)
{
    const BinaryScene mb(kMaya2011);
    // Shared; what else is known says nothing that the type does not.
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x01).text("a")),
              "createNode transform name \"a\" shared\n");
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x0d).text("a")),
              "createNode transform name \"a\" shared\n");
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x6e).text("a").text("p")),
              "createNode transform name \"a\" parent \"p\"\n");
}

TEST(BinaryNodes, FilesWithIdsSayWhereNoParentFollows)
{
    // Flag 0x80: the sixteen bytes begin right behind the name, though they look like a text.
    const BinaryScene mb(kMaya2019);
    const std::string id = std::string("parent\0a", 8) + "12345678";
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x84).text("a").raw(id)),
              "createNode transform name \"a\"\nuuid \"65726170-6100-746E-3433-323138373635\"\n");
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x04).text("a").text("p").raw(id)),
              "createNode transform name \"a\" parent \"p\"\n"
              "uuid \"65726170-6100-746E-3433-323138373635\"\n");
    EXPECT_EQ(groups(mb, mb.node("XFRM", {"a"}) + mb.node("XFRM", {"b", "a"})),
              std::string("createNode transform name \"a\"\n") + kNoId +
                  "createNode transform name \"b\" parent \"a\"\n" + kNoId);
}

TEST(BinaryNodes, IdsAreFourNumbersWithTheirLowestByteFirst)
{
    // Bytes 00 11 22 33 | 44 55 66 77 | 88 99 aa bb | cc dd ee ff as little-endian numbers are
    // 33221100, 77665544, bbaa9988, ffeeddcc; the middle ones are written in halves.
    const BinaryScene mb(kMaya2016);
    test::BinaryNode node{"a"};
    for (unsigned i = 0; i < 16; ++i) {
        node.id[i] = static_cast<std::uint8_t>(0x11 * i);
    }
    EXPECT_EQ(groups(mb, mb.node("XFRM", node)),
              "createNode transform name \"a\"\nuuid \"33221100-7766-5544-BBAA-9988FFEEDDCC\"\n");
}

TEST(BinaryNodes, OldFilesHaveNoIds)
{
    const BinaryScene mb(kMaya2015);
    EXPECT_EQ(groups(mb, mb.node("XFRM", {"a"}) + mb.node("XFRM", {"b", "a"})),
              "createNode transform name \"a\"\ncreateNode transform name \"b\" parent \"a\"\n");
}

TEST(BinaryNodes, BytesThatAreNoIdAreReportedAndTheNodeIsThere)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x84).text("a").raw("123456789012345")),
              "createNode transform name \"a\"\ndamaged \"CREA\": 15 bytes are left over\n");
    EXPECT_EQ(created(mb, BinaryBytes().u8(0x84).text("a").raw("12345678901234567")),
              "createNode transform name \"a\"\ndamaged \"CREA\": 17 bytes are left over\n");
}

TEST(BinaryNodes, ACreationThatCannotBeReadCostsItsGroupOnly)
{
    const BinaryScene mb(kMaya2011);
    const std::string next = mb.node("TIME", {"next"});
    for (const std::string& bytes : {std::string(), std::string("\4"), std::string("\4name"),
                                     std::string("\4name\0parent", 12)}) {
        const std::string lines =
            groups(mb, mb.group("XFRM", mb.leaf("CREA", bytes) + mb.number("tx", 1)) + next);
        EXPECT_TRUE(lines.starts_with("damaged \"CREA\": ")) << lines;
        EXPECT_TRUE(lines.ends_with("unknown \"XFRM\"\ncreateNode time name \"next\"\n")) << lines;
        EXPECT_EQ(lines.find("setAttr"), std::string::npos);
    }
    EXPECT_EQ(groups(mb, mb.group("XFRM", mb.number("tx", 1)) + next),
              "unknown \"XFRM\"\ncreateNode time name \"next\"\n");
    EXPECT_EQ(groups(mb, mb.group("XFRM", "") + next), "createNode time name \"next\"\n");
}

TEST(BinaryNodes, TypesByTheirCodes)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.node("JOIN", {"a"}) + mb.node("RLAM", {"b"}) + mb.node("PCTL", {"c"}) +
                             mb.node("UNKN", {"d"})),
              "createNode joint name \"a\"\ncreateNode lambert name \"b\"\n"
              "createNode animCurveTL name \"c\"\ncreateNode unknown name \"d\"\n");
}

TEST(BinaryNodes, CodesThatNobodyKnowsAreTheTypesNamesAndTheNodesStay)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.node("Q7?x", {"a"}, mb.flags("v")) +
                             mb.node(std::string_view("\xfe\xdc\xba\x98", 4), {"b", "a"})),
              "createNode Q7?x name \"a\"\n" + test::plainFlags(".v") +
                  "createNode 0xfedcba98 name \"b\" parent \"a\"\n");
}

TEST(BinaryNodes, PluginsDeclareTheirCodes)
{
    const BinaryScene mb(kMaya2015);
    const std::string_view code("\x7f\xff\x01\x02", 4);
    EXPECT_EQ(
        groups(mb, mb.node(code, {"early"}) +
                       mb.group("HEAD", mb.plugin("p", "1",
                                                  {{"first", 0x7fff0102}, {"second", 0x7fff0103}}) +
                                            mb.plugin("q", "1", {{"third", 0x7fff0102}})) +
                       mb.node(code, {"late"})),
        "createNode 0x7fff0102 name \"early\"\n"
        "requires \"p\" \"1\" nodeType \"first\" nodeType \"second\"\n"
        "requires \"q\" \"1\" nodeType \"third\"\n"
        "createNode first name \"late\"\n");
}

TEST(BinaryNodes, AFilesOwnDeclarationComesBeforeTheTable)
{
    const BinaryScene mb(kMaya2015);
    const std::string head =
        mb.group("HEAD", mb.plugin("p", "1", {{"myType", 0x5846524d}})); // XFRM
    EXPECT_EQ(groups(mb, head + mb.node("XFRM", {"a"})),
              "requires \"p\" \"1\" nodeType \"myType\"\ncreateNode myType name \"a\"\n");
}

TEST(BinaryNodes, SelectionsTakeTheWholeChunkAsName)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(groups(mb, mb.selected(":time1", mb.number("unw", 1)) + mb.selected(":a") +
                             mb.group("SLCT", mb.leaf("SLCT", std::string_view(":b\0", 3)))),
              "select \":time1\"\n" + test::plainFlags(".unw") +
                  "setAttr .unw double x 1: 1\nselect \":a\"\nselect \":b\"\n");
}

TEST(BinaryNodes, FlagsOfAttributesAreAbsolute)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(readChunks(mb, mb.flags(BinaryPlug("v", 0x24)) + mb.flags(BinaryPlug("t", 0x00)) +
                                 mb.flags(BinaryPlug("r", 0x21)) + mb.flags(BinaryPlug("s", 0x30)) +
                                 mb.flags(BinaryPlug("sh", 0x37))),
              "setAttr .v keyable on locked off channelBox off\n"
              "setAttr .t keyable off locked off channelBox off\n"
              "setAttr .r keyable off locked on channelBox off\n"
              "setAttr .s keyable off locked off channelBox on\n"
              "setAttr .sh keyable on locked on channelBox on\n");
}

TEST(BinaryNodes, ArraySizesAreHints)
{
    const BinaryScene mb(kMaya85);
    EXPECT_EQ(readChunks(mb, mb.flags(BinaryPlug("iog[0].og", 0x24, 5)) +
                                 mb.flags(BinaryPlug("pt", 0x20, 4294967295u))),
              "setAttr .iog[0].og keyable on locked off channelBox off size 5\n"
              "setAttr .pt keyable off locked off channelBox off size 4294967295\n");
}

TEST(BinaryNodes, AnyValueMayComeWithoutPayload)
{
    const BinaryScene mb(kMaya2019);
    std::string chunks;
    std::string expected;
    for (const char* tag : {"CMPD", "DBLE", "MESH", "STR ", "CMP#", "NRBC", "\1\2\3\4", "odd!"}) {
        chunks += mb.value(tag, BinaryPlug("p", 0x20, 2));
        expected += "setAttr .p keyable off locked off channelBox off size 2\n";
    }
    // letters that are no known tag are told all the same; a plug-in's number is one of its own
    EXPECT_EQ(readChunks(mb, chunks), expected + "unknown \"odd!\"\n");
}

TEST(BinaryNodes, UnknownTagsNeedNoHeading)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(readChunks(mb, mb.leaf("ODD!", "hello") + mb.leaf("ODD!", "") + mb.flags("v")),
              "unknown \"ODD!\"\nunknown \"ODD!\"\n" + test::plainFlags(".v"));
}

TEST(BinaryNodes, UnknownValuesAreSkippedAndTold)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(readChunks(mb, mb.value("ODD!", "a", "12345") +
                                 mb.value(std::string_view("\0\x11\x5c\0", 4), "b", "x") +
                                 mb.flags("v")),
              "unknown \"ODD!\"\nunknown \"0x00115c00\"\n" + test::plainFlags(".v"));
}

TEST(BinaryNodes, HeadingsThatCannotBeReadAreReported)
{
    const BinaryScene mb(kMaya2011);
    const auto damage = [&mb](std::string_view payload) {
        return readChunks(mb, mb.leaf("FLGS", payload));
    };
    EXPECT_EQ(damage(""), "damaged \"FLGS\": a text has no end\n");
    EXPECT_EQ(damage("tx"), "damaged \"FLGS\": a text has no end\n");
    EXPECT_EQ(damage(BinaryBytes().text("tx")), "damaged \"FLGS\": the chunk is too short\n");
    EXPECT_EQ(damage(BinaryBytes().text("tx").u8(0x28).u16(0)),
              "damaged \"FLGS\": the chunk is too short\n");
    EXPECT_EQ(damage(BinaryBytes().text("tx").u8(0x60)),
              test::plainFlags(".tx") + "damaged \"FLGS\": unknown flags of an attribute\n");
    for (const char* name : {"", "a[", "a[5:2]", "a..b", "a[0:9999999999]"}) {
        const std::string lines = damage(BinaryBytes().text(name).u8(0x20));
        EXPECT_TRUE(lines.starts_with("damaged \"FLGS\": plug '")) << lines;
    }
}

TEST(BinaryNodes, PlugsOfAllForms)
{
    const BinaryScene mb(kMaya2019);
    EXPECT_EQ(readChunks(mb, mb.flags("uvst[0].uvsn") + mb.flags("pt[0:7]") +
                                 mb.flags("wl[12].w[3]") + mb.flags("clst[3].clsp[0:1]")),
              test::plainFlags(".uvst[0].uvsn") + test::plainFlags(".pt[0:7]") +
                  test::plainFlags(".wl[12].w[3]") + test::plainFlags(".clst[3].clsp[0:1]"));
}
