// The tree of chunks: headings, padding, sizes that lie.
#include "host/file/binary/Chunk.h"
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using host::file::binary::Chunk;
using host::file::binary::ChunkWalk;
using host::file::binary::Tag;
using host::file::binary::Width;
using test::BinaryBytes;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2019;
using test::readBinaryFile;
using test::withFiller;

namespace {

/// The chunks between two offsets of a file: one line each, of tag, kind, offset and payload, and
/// what is left over.
std::string walked(const std::string& file, Width width, std::size_t begin, std::size_t end)
{
    std::string text;
    ChunkWalk walk(file, width, begin, end);
    while (const auto chunk = walk.next()) {
        text += chunk->tag.text() + (chunk->isGroup ? "(" + chunk->kind.text() + ")" : "");
        text += " at " + std::to_string(chunk->offset) + ": ";
        text += std::to_string(chunk->begin) + " + " + std::to_string(chunk->payload.size());
        text += chunk->isCut ? " cut\n" : "\n";
    }
    return text + "left " + std::to_string(walk.strayBytes()) + "\n";
}

std::string walked(const std::string& file, Width width)
{
    return walked(file, width, 0, file.size());
}

std::string header32(std::string_view tag, std::uint32_t size)
{
    return BinaryBytes().raw(tag).u32(size);
}

std::string header64(std::string_view tag, std::uint64_t size, std::string_view garbage = "\xff*-?")
{
    return BinaryBytes().raw(tag).raw(garbage).u64(size);
}

} // namespace

TEST(BinaryChunk, HeadingsOf32BitFilesHaveEightBytesAndLeavesPadToFour)
{
    // 8 + 5 + 3, 8 + 0, 8 + 4, 8 + 1 with its padding missing at the end.
    const std::string file = header32("AAAA", 5) + "12345xyz" + header32("BBBB", 0) +
                             header32("CCCC", 4) + "1234" + header32("DDDD", 1) + "1";
    EXPECT_EQ(walked(file, Width::Bits32),
              "AAAA at 0: 8 + 5\nBBBB at 16: 24 + 0\nCCCC at 24: 32 + 4\nDDDD at 36: 44 + 1\n"
              "left 0\n");
}

TEST(BinaryChunk, HeadingsOf64BitFilesHaveSixteenBytesOfWhichFourMeanNothing)
{
    const std::string file = header64("AAAA", 9) + "123456789padding" + header64("BBBB", 8) +
                             "12345678" + header64("CCCC", 0);
    EXPECT_EQ(walked(file, Width::Bits64),
              "AAAA at 0: 16 + 9\nBBBB at 32: 48 + 8\nCCCC at 56: 72 + 0\nleft 0\n");
}

TEST(BinaryChunk, PaddingCountsFromTheLeafsDataAndGroupsHaveNone)
{
    // The group's data: 4 bytes of kind, then a leaf of 16 + 1 + 7: 28 bytes, so that what follows
    // stands at 16 + 28 = 44, which no alignment from the file's start would give.
    const std::string file =
        header64("FOR8", 28) + "KIND" + header64("LEAF", 1) + "1~~~~~~~" + header64("NEXT", 0);
    EXPECT_EQ(walked(file, Width::Bits64),
              "FOR8(KIND) at 0: 20 + 24\nNEXT at 44: 60 + 0\nleft 0\n");
    EXPECT_EQ(walked(file, Width::Bits64, 20, 44), "LEAF at 20: 36 + 1\nleft 0\n");
    // A group that is 5 bytes long: the next chunk stands right behind it, too.
    EXPECT_EQ(walked(header32("LIS4", 5) + "KIND!" + header32("NEXT", 0), Width::Bits32),
              "LIS4(KIND) at 0: 12 + 1\nNEXT at 13: 21 + 0\nleft 0\n");
}

TEST(BinaryChunk, EightTagsAreGroups)
{
    for (const char* tag : {"FOR4", "LIS4", "CAT4", "PRO4", "FOR8", "LIS8", "CAT8", "PRO8"}) {
        EXPECT_EQ(walked(header32(tag, 4) + "KIND", Width::Bits32),
                  std::string(tag) + "(KIND) at 0: 12 + 0\nleft 0\n");
    }
    EXPECT_EQ(walked(header32("FORM", 4) + "KIND", Width::Bits32), "FORM at 0: 8 + 4\nleft 0\n");
}

TEST(BinaryChunk, AGroupTooShortForItsKindIsNone)
{
    EXPECT_EQ(walked(header32("FOR4", 3) + "ABC", Width::Bits32), "FOR4 at 0: 8 + 3\nleft 0\n");
    EXPECT_EQ(walked(header32("FOR4", 99) + "ABC", Width::Bits32),
              "FOR4 at 0: 8 + 3 cut\nleft 0\n");
}

TEST(BinaryChunk, SizesThatPassTheEndAreClippedToIt)
{
    const std::string file = header32("AAAA", 13) + "0123456789ab" + "behind the end";
    EXPECT_EQ(walked(file, Width::Bits32, 0, 20), "AAAA at 0: 8 + 12 cut\nleft 0\n");
    EXPECT_EQ(walked(header32("AAAA", 0xffffffffu) + "12", Width::Bits32),
              "AAAA at 0: 8 + 2 cut\nleft 0\n");
    constexpr std::uint64_t kHalf = std::uint64_t{1} << 63;
    for (const std::uint64_t size : {kHalf, kHalf - 1, kHalf + 1, ~std::uint64_t{0},
                                     ~std::uint64_t{0} - 15, std::uint64_t{1} << 32}) {
        EXPECT_EQ(walked(header64("AAAA", size) + "123", Width::Bits64),
                  "AAAA at 0: 16 + 3 cut\nleft 0\n");
        EXPECT_EQ(walked(header64("FOR8", size) + "KIND5", Width::Bits64),
                  "FOR8(KIND) at 0: 20 + 1 cut\nleft 0\n");
    }
}

TEST(BinaryChunk, FewerBytesThanAHeadingAreNoChunk)
{
    EXPECT_EQ(walked("", Width::Bits32), "left 0\n");
    EXPECT_EQ(walked("AAAA\0\0\0", Width::Bits32), "left 4\n");
    const std::string file = header64("AAAA", 0) + "BBBB-...-size--";
    EXPECT_EQ(walked(file, Width::Bits64), "AAAA at 0: 16 + 0\nleft 15\n");
}

TEST(BinaryChunk, OffsetsOutsideOfTheFileGiveNothing)
{
    const std::string file = header32("AAAA", 0);
    EXPECT_EQ(walked(file, Width::Bits32, 8, 1000), "left 0\n");
    EXPECT_EQ(walked(file, Width::Bits32, 1000, 2000), "left 0\n");
    EXPECT_EQ(walked(file, Width::Bits32, 8, 4), "left 0\n");
    EXPECT_EQ(walked(file, Width::Bits32, 0, ~std::size_t{0}), "AAAA at 0: 8 + 0\nleft 0\n");
}

TEST(BinaryChunk, TagsThatAreNoLettersAreShownAsNumbers)
{
    EXPECT_EQ(Tag("STR ").text(), "STR ");
    EXPECT_EQ(Tag(0x00115c00).text(), "0x00115c00");
    EXPECT_EQ(Tag(0xffffffff).text(), "0xffffffff");
    EXPECT_EQ(Tag("MESH").code, 0x4d455348u);
    EXPECT_FALSE(Tag(0x4d455307).isPrintable());
}

TEST(BinaryFile, TheFirstGroupMustBeOfTheKindMaya)
{
    EXPECT_EQ(readBinaryFile(""), "error: the file does not begin with FOR4 or FOR8\n");
    EXPECT_EQ(readBinaryFile("FOR"), "error: the file does not begin with FOR4 or FOR8\n");
    EXPECT_EQ(readBinaryFile("FORM1234Maya"), "error: the file does not begin with FOR4 or FOR8\n");
    EXPECT_EQ(readBinaryFile(header32("FOR4", 4) + "CIMG"),
              "error: the file's first group is not of the kind Maya\n");
    EXPECT_EQ(readBinaryFile(header64("FOR8", 4) + "maya"),
              "error: the file's first group is not of the kind Maya\n");
    EXPECT_EQ(readBinaryFile("FOR4"), "error: the file's first group is not of the kind Maya\n");
}

TEST(BinaryFile, WholeWithoutAnyNodeIsAScene)
{
    EXPECT_EQ(readBinaryFile(BinaryScene(kMaya2019).file("")), "end\n");
    EXPECT_EQ(readBinaryFile(BinaryScene(kMaya2011).file("")), "end\n");
}

TEST(BinaryFile, GarbageInPaddingAndBetweenTagAndSizeChangesNothing)
{
    for (const test::BinaryManner& manner : {kMaya2011, kMaya2019}) {
        std::string lines;
        for (const char filler : {'\0', '\xff', 'A'}) {
            const BinaryScene mb(withFiller(manner, filler));
            const std::string found =
                readBinaryFile(mb.file(mb.header(mb.fileInfo("a", "b")) +
                                       mb.node("XFRM", {"t"},
                                               mb.doubles("t", {1, 2, 3}) + mb.string("nts", "no") +
                                                   mb.definition({"aDBL", "weight", "w"})) +
                                       mb.node("DMSH", {"s", "t"}, mb.flags("v")) +
                                       mb.connections(mb.connection("a.b", "c.d")) + mb.trailer()));
            EXPECT_NE(found.find("addAttr \"weight\" short \"w\" double\n"), std::string::npos);
            EXPECT_NE(found.find("createNode mesh name \"s\" parent \"t\"\n"), std::string::npos);
            lines = lines.empty() ? found : lines;
            EXPECT_EQ(found, lines);
        }
    }
}

TEST(BinaryFile, WhatFollowsTheSceneIsReportedAndAnotherSceneIsRead)
{
    const BinaryScene mb(kMaya2011);
    EXPECT_EQ(readBinaryFile(mb.file(mb.node("TIME", {"a"})) + mb.leaf("ODD ", "x") +
                             mb.file(mb.node("TIME", {"b"}))),
              "createNode time name \"a\"\nunknown \"ODD \"\ncreateNode time name \"b\"\nend\n");
}

TEST(BinaryFile, UnknownLeavesAndGroupsAreSkippedWithoutLosingTheRest)
{
    const BinaryScene mb(kMaya2019);
    const std::string deep = mb.group("DEEP", mb.leaf("LEAF", "1") + mb.group("MORE", ""));
    EXPECT_EQ(
        readBinaryFile(mb.file(mb.leaf("ODD1", "12345") + mb.header(mb.leaf("ODD2", "") + deep) +
                               mb.group("LKCU", mb.leaf("LKCU", "\1")) + deep +
                               mb.connections(mb.leaf("ODD3", "1") + deep) +
                               mb.selected(":a", mb.flags("v") + deep))),
        "unknown \"ODD1\"\nrequires \"maya\" \"2019\"\nunknown \"ODD2\"\nunknown \"DEEP\"\n"
        "currentUnit linear \"cm\" angular \"deg\" time \"film\"\n"
        "unknown \"DEEP\"\nunknown \"ODD3\"\nunknown \"DEEP\"\nselect \":a\"\n" +
            test::plainFlags(".v") + "unknown \"DEEP\"\nend\n");
}

TEST(BinaryFile, GroupsInGroupsWithoutEndTakeNoStack)
{
    // 100,000 groups, each in the one before it.
    constexpr std::uint32_t kDepth = 100000;
    std::string nest;
    for (std::uint32_t i = kDepth; i > 0; --i) {
        nest += header32("FOR4", 12 * i - 8) + "NEST";
    }
    const BinaryScene mb(kMaya2011);
    for (const std::string& file :
         {mb.file(mb.node("TIME", {"a"}) + nest), mb.file(mb.node("TIME", {"a"}, nest)),
          mb.file(mb.node("TIME", {"a"}) + mb.connections(nest)),
          mb.file(mb.node("TIME", {"a"}) + mb.group("CONS", nest, "LIS"))}) {
        EXPECT_EQ(readBinaryFile(file), "createNode time name \"a\"\nunknown \"NEST\"\nend\n");
    }
    // Groups that are lists of connections themselves.
    std::string lists = header32("LIS4", 4) + "CONS";
    for (std::uint32_t i = 1; i <= 1000; ++i) {
        lists = header32("LIS4", 12 * i + 4) + "CONS" + lists;
    }
    EXPECT_EQ(readBinaryFile(mb.file(lists)), "unknown \"CONS\"\nend\n");
}

TEST(BinaryFile, AChunkThatPassesItsGroupCostsOnlyWhatIsBehindItThere)
{
    const BinaryScene mb(kMaya2011);
    // "tx" says it had 400 bytes: the node's group ends before; the next node is whole.
    const std::string values =
        mb.number("ty", 2) + header32("DBLE", 400) + std::string("tx\0 12345678", 12);
    EXPECT_EQ(readBinaryFile(mb.file(mb.node("XFRM", {"a"}, values) + mb.node("XFRM", {"b"}))),
              "createNode transform name \"a\"\n" + test::plainFlags(".ty") +
                  "setAttr .ty double x 1: 2\n"
                  "damaged \"DBLE\": the chunk passes the end of its node\n"
                  "createNode transform name \"b\"\nend\n");
}

TEST(BinaryFile, PlacesAreOffsetsOfTheChunks)
{
    class Places : public test::NodeTableSink {
    public:
        void at(const host::file::Place& place) override { text += place.text() + "\n"; }
        std::string text;
    } sink;
    // Maya's group ends its heading at 12; the node's at 24; CREA holds 1 + 2 of 4 bytes.
    const BinaryScene mb(kMaya2011);
    const std::string file = mb.file(mb.node("TIME", {"a"}, mb.leaf("ODD ", "")));
    ASSERT_TRUE(host::file::readBinary(file, sink));
    EXPECT_EQ(sink.text, "offset 0x18\noffset 0x24\n");
}
