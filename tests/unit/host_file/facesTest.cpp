// polyFaces.
#include "tests/unit/host_file/readText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using test::kHeader;
using test::readStatements;

TEST(Faces, OuterLoopsHolesAndTextureCoordinates)
{
    EXPECT_EQ(readStatements("setAttr -s 2 -ch 7 \".fc[0:1]\" -type \"polyFaces\"\n"
                             "f 4 0 1 -3 2 h 3 4 5 6 mu 0 7 0 1 2 3 4 5 6 mu 3 7 9 9 9 9 8 8 8\n"
                             "f 3 -1 -2 -3;"),
              "setAttr .fc size 2\nsetAttr .fc[0:1] faces: f 0 1 -3 2 h 4 5 6 "
              "mu0 0 1 2 3 4 5 6 mu3 9 9 9 9 8 8 8 f -1 -2 -3\n");
}

TEST(Faces, StatementsWithoutTypeGoOn)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;"
                             "setAttr \".fc[1:2]\" f 3 3 4 5 f 3 6 7 8;"),
              "setAttr .fc[0:2] faces: f 0 1 2 f 3 4 5 f 6 7 8\n");
}

TEST(Faces, ColoursAreLeftOut)
{
    EXPECT_EQ(
        readStatements("setAttr \".fc[0:1]\" -type \"polyFaces\" f 3 0 1 2 mc 0 3 -1 0 1 fc 1 "
                       "5 f 3 3 4 5 mc 1 0;"),
        "setAttr .fc[0:1] faces: f 0 1 2 f 3 4 5\n");
}

TEST(Faces, OldTextureRecordsFillTheFirstSet)
{
    EXPECT_EQ(
        readStatements("setAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 h 3 3 4 5 mf 3 7 8 9 "
                       "mh 3 4 5 6;"),
        "setAttr .fc[0] faces: f 0 1 2 h 3 4 5 mu0 7 8 9 4 5 6\n");
}

TEST(Faces, TagsMayBeQuotedAndCommentsMayStandBetween)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" -type \"polyFaces\" \"f\" 3 0 /* x */ 1 // y\n 2 "
                             "\"mu\" 0 3 1 2 3;"),
              "setAttr .fc[0] faces: f 0 1 2 mu0 1 2 3\n");
}

TEST(Faces, AFaceMayLackTextureCoordinates)
{
    EXPECT_EQ(
        readStatements("setAttr \".fc[0:2]\" -type \"polyFaces\" f 3 0 1 2 f 3 3 4 5 mu 0 3 1 "
                       "2 3 f 3 6 7 8 mu 0 0;"),
        "setAttr .fc[0:2] faces: f 0 1 2 f 3 4 5 mu0 1 2 3 f 6 7 8\n");
}

TEST(Faces, IdsAreInStepWithCorners)
{
    class Keeper : public test::NodeTableSink {
    public:
        host::PolyFaces faces;
        void setAttribute(const host::file::SetAttribute& command) override
        {
            faces = std::move(*command.faces);
        }
    };
    const std::string file = std::string(kHeader) +
                             "createNode mesh -n \"m\"; setAttr \".fc[0:2]\" -type \"polyFaces\" "
                             "f 3 0 1 2 f 4 3 4 5 6 mu 5 4 9 8 7 6 f 3 0 0 0;";
    Keeper sink;
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    EXPECT_EQ(sink.faces.corners.size(), 10u);
    EXPECT_EQ(sink.faces.loopSizes, (std::vector<std::uint32_t>{3, 4, 3}));
    EXPECT_EQ(sink.faces.faceLoopCounts, (std::vector<std::uint32_t>{1, 1, 1}));
    ASSERT_EQ(sink.faces.uvSets.size(), 1u);
    EXPECT_EQ(sink.faces.uvSets[0].set, 5);
    EXPECT_EQ(sink.faces.uvSets[0].ids,
              (std::vector<std::int32_t>{-1, -1, -1, 9, 8, 7, 6, -1, -1, -1}));
}

TEST(Faces, OtherNumbersOfTextureCoordinatesThanOfCornersAreReported)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 mu 0 4 1 2 3 4;"),
              "setAttr .fc[0] faces: f 0 1 2 mu0 1 2 3\n"
              "damaged \"setAttr\": a face has another number of texture coordinates than of "
              "corners\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 mu 0 2 1 2;"),
              "setAttr .fc[0] faces: f 0 1 2 mu0 1 2 -1\n"
              "damaged \"setAttr\": a face has another number of texture coordinates than of "
              "corners\n");
}

TEST(Faces, MoreThanSixtyFourSetsAreLeftOut)
{
    std::string file = std::string(kHeader) +
                       "createNode mesh -n \"m\"; setAttr \".fc[0]\" -type \"polyFaces\" f 1 0";
    for (int i = 0; i < 65; ++i) {
        file += " mu " + std::to_string(i) + " 1 5";
    }
    file += ";";
    class Keeper : public test::NodeTableSink {
    public:
        host::PolyFaces faces;
        void setAttribute(const host::file::SetAttribute& command) override
        {
            faces = *command.faces;
        }
    };
    Keeper sink;
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    ASSERT_EQ(sink.faces.uvSets.size(), 64u);
    EXPECT_EQ(sink.faces.uvSets.front().set, 0);
    EXPECT_EQ(sink.faces.uvSets.back().set, 63);
    ASSERT_EQ(sink.damages.size(), 1u);
    EXPECT_TRUE(sink.damages[0].ends_with("more sets of texture coordinates than can be kept"));
}

TEST(Faces, NegativeSetsAreLeftOut)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" f 1 0 mu -1 1 5;"),
              "setAttr .fc[0] faces: f 0\n"
              "damaged \"setAttr\": more sets of texture coordinates than can be kept\n");
}

TEST(Faces, CountsAreCheckedAgainstTheRange)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0]\" f 1 0 f 1 1;"),
              "setAttr .fc[0] faces: f 0\n"
              "damaged \"setAttr\": more faces than the range of the plug takes\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:2]\" f 1 0 f 1 1;"),
              "setAttr .fc[0:1] faces: f 0 f 1\n"
              "damaged \"setAttr\": fewer faces than the range of the plug takes\n");
}

TEST(Faces, DamagedRecordsEndTheListAfterTheLastWholeFace)
{
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 3 0 1 2 f 2000000000 1 2;"),
              "setAttr .fc[0] faces: f 0 1 2\n"
              "damaged \"setAttr\": a count in a face exceeds the statement\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 3 0 1 2 f -1 1 2;"),
              "setAttr .fc[0] faces: f 0 1 2\n"
              "damaged \"setAttr\": a count in a face exceeds the statement\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 3 0 1 2 f 3 1 x 2;"),
              "setAttr .fc[0] faces: f 0 1 2\n"
              "damaged \"setAttr\": a number was expected in a face\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 3 0 1 2 zz 3 1 2;"),
              "setAttr .fc[0] faces: f 0 1 2\n"
              "damaged \"setAttr\": an unknown record stands in a face\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 3 0 1 2 f 3 1 2"),
              "setAttr .fc[0] faces: f 0 1 2\n"
              "damaged \"setAttr\": the file ends inside the statement\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" f 2 0 4294967296;"),
              "damaged \"setAttr\": a number in a face exceeds 32 bits\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" h 2 0 1;"),
              "damaged \"setAttr\": a hole stands before its face\n");
    EXPECT_EQ(readStatements("setAttr \".fc[0:1]\" mu 0 1 1;"),
              "damaged \"setAttr\": fewer faces than the range of the plug takes\n");
}

TEST(Faces, LongListsArriveInPiecesThatPrintAsOne)
{
    std::string file = std::string(kHeader) +
                       "createNode mesh -n \"m\"; setAttr \".fc[0:99999]\" -type \"polyFaces\"";
    for (int i = 0; i < 100000; ++i) {
        file += " f 4 1 2 3 4 mu 0 4 5 6 7 8";
    }
    file += ";";
    class Counter : public test::NodeTableSink {
    public:
        std::vector<std::size_t> pieces;
        std::int64_t next = 0;
        void setAttribute(const host::file::SetAttribute& command) override
        {
            EXPECT_EQ(command.plug.last().first, next);
            pieces.push_back(command.faces->faceLoopCounts.size());
            next += static_cast<std::int64_t>(pieces.back());
            EXPECT_EQ(command.faces->uvSets[0].ids.size(), command.faces->corners.size());
        }
    };
    Counter sink;
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    EXPECT_GT(sink.pieces.size(), 1u);
    EXPECT_EQ(sink.next, 100000);
    EXPECT_NE(test::readFile(file).find("setAttr .fc[0:99999] faces:"), std::string::npos);
}
