// setAttr: flags, plugs, ranges, units, numbers of every storage.
#include "tests/unit/host_file/readText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using test::kHeader;
using test::readStatements;

namespace {

constexpr const char* kMetres = "currentUnit -l meter -a radian -t pal;\n";

} // namespace

TEST(SetAttr, FlagsWithoutValues)
{
    EXPECT_EQ(readStatements("setAttr -k on \".nds\"; setAttr -l off -cb on \".v\";"
                             "setAttr -keyable 0 -lock yes -channelBox no \".tmp\";"),
              "setAttr .nds keyable on\nsetAttr .v locked off channelBox on\n"
              "setAttr .tmp keyable off locked on channelBox off\n");
}

TEST(SetAttr, SizeOnlyStatementsGiveTheHint)
{
    EXPECT_EQ(readStatements("setAttr -s 192 \".ed\"; setAttr -size 7 \".vt\";"),
              "setAttr .ed size 192\nsetAttr .vt size 7\n");
}

TEST(SetAttr, FlagsThatSayNothingHereAreAccepted)
{
    EXPECT_EQ(readStatements("setAttr -av -k off -cb on \".v\" no; setAttr -ca on -c \".v\" yes;"
                             "setAttr -alteredValue -caching off -clamp \".v\" 0;",
                             "transform"),
              "setAttr .v keyable off channelBox on\nsetAttr .v int32 x 1: 0\n"
              "setAttr .v int32 x 1: 1\nsetAttr .v int32 x 1: 0\n");
}

TEST(SetAttr, FlagsMayStandInAnyOrderAroundThePlug)
{
    EXPECT_EQ(readStatements("setAttr -type \"double3\" \".t\" 1 2 3; setAttr \".t\" -k off -type "
                             "\"double3\" 4 5 6; setAttr \".tx\" -typ double 7;",
                             "transform"),
              "setAttr .t double x 3: 1 2 3\nsetAttr .t keyable off\nsetAttr .t double x 3: 4 5 6\n"
              "setAttr .tx double x 1: 7\n");
}

TEST(SetAttr, BooleanWordsAreNumbers)
{
    EXPECT_EQ(readStatements("setAttr \".v\" yes; setAttr \".v\" off; setAttr \".v\" true;"
                             "setAttr \".v\" 0;",
                             "transform"),
              "setAttr .v int32 x 1: 1\nsetAttr .v int32 x 1: 0\nsetAttr .v int32 x 1: 1\n"
              "setAttr .v int32 x 1: 0\n");
}

TEST(SetAttr, FullPlugsAndLongNames)
{
    EXPECT_EQ(readStatements("setAttr \"node.translate.translateX\" 5; setAttr \":node.tx\" 6;"
                             "setAttr \"|a|node.t.tx\" 7; setAttr .tx 8;",
                             "transform"),
              "setAttr node.translate.translateX double x 1: 5\nsetAttr :node.tx double x 1: 6\n"
              "setAttr |a|node.t.tx double x 1: 7\nsetAttr .tx double x 1: 8\n");
}

TEST(SetAttr, NumbersAreConvertedByTheirAttributesUnits)
{
    // 2 m = 200 cm; radians stay; a scale has no unit.
    EXPECT_EQ(readStatements("setAttr \".t\" -type \"double3\" 2 0.5 -1; setAttr \".rx\" 1.5;"
                             "setAttr \".s\" -type \"double3\" 2 3 4;",
                             "transform", kMetres),
              "setAttr .t double x 3: 200 50 -100\nsetAttr .rx double x 1: 1.5\n"
              "setAttr .s double x 3: 2 3 4\n");
    // 180 degrees are pi; 10 centimetres stay.
    EXPECT_EQ(readStatements("setAttr \".ry\" 180; setAttr \".tx\" 10;", "transform"),
              "setAttr .ry double x 1: 3.141592653589793\nsetAttr .tx double x 1: 10\n");
}

TEST(SetAttr, UnitsThatChangeBetweenStatementsHoldFromThere)
{
    EXPECT_EQ(
        readStatements("setAttr \".tx\" 1; currentUnit -l m; setAttr \".tx\" 1;", "transform"),
        "setAttr .tx double x 1: 1\ncurrentUnit linear \"m\" angular \"deg\" time \"film\"\n"
        "setAttr .tx double x 1: 100\n");
}

TEST(SetAttr, ChildrenOfDifferentUnitsAreConvertedEach)
{
    // Frames of 25 a second are 5,644,800 ticks; metres are 100 cm.
    EXPECT_EQ(readStatements("setAttr -s 2 \".ktv[0:1]\"  1 2 10 3;", "animCurveTL", kMetres),
              "setAttr .ktv size 2\nsetAttr .ktv[0:1] double x 2: 5644800 200 56448000 300\n");
}

TEST(SetAttr, VerticesInMetresAreSinglePrecisionCentimetres)
{
    // 0.1 m: 10 cm exactly, since the product is formed in double precision.
    EXPECT_EQ(readStatements("setAttr \".vt[0]\" 0.1 0.2 -0.3;", "mesh", kMetres),
              "setAttr .vt[0] float x 3: 10 20 -30\n");
}

TEST(SetAttr, RangesAndTheirContinuationsAreOneList)
{
    EXPECT_EQ(readStatements("setAttr -s 4 \".pt[0:1]\" -type \"float3\" 1 2 3 4 5 6;\n"
                             "setAttr \".pt[2:3]\" 7 8 9 10 11 12;\n"
                             "setAttr \".pt[9]\" 1 1 1;"),
              "setAttr .pt size 4\nsetAttr .pt[0:3] float x 3: 1 2 3 4 5 6 7 8 9 10 11 12\n"
              "setAttr .pt[9] float x 3: 1 1 1\n");
}

TEST(SetAttr, EdgesAreWholeNumbers)
{
    EXPECT_EQ(readStatements("setAttr -s 2 \".ed[0:1]\" 0 1 0 1 2147483648 -9;"),
              "setAttr .ed size 2\nsetAttr .ed[0:1] int32 x 3: 0 1 0 1 2147483647 -9\n");
}

TEST(SetAttr, WholeNumbersMayBeWrittenWithFractionAndExponent)
{
    EXPECT_EQ(readStatements("setAttr \".ed[0]\" 1.0 2e0 3.9;"),
              "setAttr .ed[0] int32 x 3: 1 2 3\n");
}

TEST(SetAttr, NonFiniteNumbersAreNumbersAndNoFlags)
{
    EXPECT_EQ(readStatements("setAttr \".n[0:2]\" -type \"float3\" -nan nan 1e+20 -inf inf 1.#INF "
                             "-1.#IND 1.#QNAN -1.#QNAN;"),
              "setAttr .n[0:2] float x 3: nan nan 1e+20 -inf inf inf nan nan nan\n");
}

TEST(SetAttr, HugeLengthsOfNumbersAndNestedRanges)
{
    EXPECT_EQ(readStatements("setAttr \".uvst[3].uvsp[0:1]\" -type \"float2\" 0 1 "
                             "0.25000000000000000000000000000000000000000000000000000000000000 1;"),
              "setAttr .uvst[3].uvsp[0:1] float x 2: 0 1 0.25 1\n");
}

TEST(SetAttr, TheFirstChildrenOfACompoundAreANarrowerElement)
{
    EXPECT_EQ(readStatements("setAttr \".t\" 1 2;", "transform"), "setAttr .t double x 2: 1 2\n");
}

TEST(SetAttr, ChildrenOfDifferentKindsAreDoubles)
{
    EXPECT_EQ(
        readStatements("addAttr -ln \"c\" -at compound -nc 3;"
                       "addAttr -ln \"i\" -at long -p \"c\"; addAttr -ln \"d\" -at double -p "
                       "\"c\"; addAttr -ln \"b\" -at bool -p \"c\"; setAttr \".c\" 1 2.5 yes;"),
        "addAttr \"c\" compound children 3\naddAttr \"i\" parent \"c\" long\n"
        "addAttr \"d\" parent \"c\" double\naddAttr \"b\" parent \"c\" bool\n"
        "setAttr .c double x 3: 1 2.5 1\n");
}

TEST(SetAttr, MoreNumbersThanThePlugTakesAreReported)
{
    EXPECT_EQ(readStatements("setAttr \".tx\" 1 2;", "transform"),
              "setAttr .tx double x 1: 1\n"
              "damaged \"setAttr\": more numbers than the plug takes\n");
    EXPECT_EQ(readStatements("setAttr \".pt[0:1]\" 1 2 3 4 5 6 7 8 9;"),
              "setAttr .pt[0:1] float x 3: 1 2 3 4 5 6\n"
              "damaged \"setAttr\": more numbers than the plug takes\n");
}

TEST(SetAttr, FewerNumbersThanTheRangeTakesAreReported)
{
    EXPECT_EQ(readStatements("setAttr \".pt[0:2]\" 1 2 3;"),
              "setAttr .pt[0] float x 3: 1 2 3\n"
              "damaged \"setAttr\": fewer numbers than the range of the plug takes\n");
}

TEST(SetAttr, AWordAmongNumbersEndsThem)
{
    EXPECT_EQ(readStatements("setAttr \".pt[0:1]\" 1 2 3 4 what 6; setAttr \".pt[5]\" 1 2 3;"),
              "setAttr .pt[0] float x 3: 1 2 3\ndamaged \"setAttr\": a number was expected\n"
              "setAttr .pt[5] float x 3: 1 2 3\n");
}

TEST(SetAttr, CommentsMayStandAmongNumbers)
{
    EXPECT_EQ(readStatements("setAttr \".pt[0]\" 1 // one\n 2 /* two */ 3;"),
              "setAttr .pt[0] float x 3: 1 2 3\n");
}

TEST(SetAttr, NumbersCutByTheEndOfTheFileAreLeftOut)
{
    // The last number may lack digits.
    EXPECT_EQ(readStatements("setAttr \".pt[0:1]\" 1 2 3 4 5 6"),
              "setAttr .pt[0] float x 3: 1 2 3\n"
              "damaged \"setAttr\": the file ends inside the statement\n");
}

TEST(SetAttr, LongListsArriveInPiecesWhoseFirstIndexAdvances)
{
    class Pieces : public test::NodeTableSink {
    public:
        std::vector<std::pair<std::int64_t, std::size_t>> pieces;
        std::vector<float> numbers;
        void setAttribute(const host::file::SetAttribute& command) override
        {
            EXPECT_EQ(command.plug.last().last - command.plug.last().first + 1,
                      static_cast<std::int64_t>(command.numbers.count()));
            pieces.emplace_back(command.plug.last().first, command.numbers.count());
            numbers.insert(numbers.end(), command.numbers.floats.begin(),
                           command.numbers.floats.end());
        }
    };
    std::string file = std::string(kHeader) + "createNode mesh -n \"m\"; setAttr \".vt[5:50004]\"";
    for (int i = 0; i < 150000; ++i) {
        file += ' ';
        file += std::to_string(i);
    }
    file += ";";
    Pieces sink;
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    EXPECT_TRUE(sink.damages.empty());
    ASSERT_GT(sink.pieces.size(), 1u);
    std::int64_t next = 5;
    for (const auto& [first, count] : sink.pieces) {
        EXPECT_EQ(first, next);
        next += static_cast<std::int64_t>(count);
    }
    EXPECT_EQ(next, 50005);
    ASSERT_EQ(sink.numbers.size(), 150000u);
    for (int i = 0; i < 150000; ++i) {
        ASSERT_EQ(sink.numbers[static_cast<std::size_t>(i)], static_cast<float>(i));
    }
}

TEST(SetAttr, SizeHintsAreNeverTrusted)
{
    EXPECT_EQ(readStatements("setAttr -s 2147483647 -ch 2147483647 \".vt[0]\" 1 2 3;"
                             "setAttr \".vt[0:2147483646]\" 1 2 3;"),
              "setAttr .vt size 2147483647\nsetAttr .vt[0] float x 3: 1 2 3\n"
              "setAttr .vt[0] float x 3: 1 2 3\n"
              "damaged \"setAttr\": fewer numbers than the range of the plug takes\n");
}

TEST(SetAttr, SparseMultisInMultis)
{
    EXPECT_EQ(readStatements("setAttr -s 2 \".wl[0:1].w\"\n 2 0 0.857 1 0.143\n 1 4 1;"
                             "setAttr \".weightList[7].weights\" 1 3 0.5;",
                             "skinCluster"),
              "setAttr .wl.w size 2\n"
              "setAttr .wl[0:1].w sparse: 0 0 0.857 0 1 0.143 1 4 1\n"
              "setAttr .weightList[7].weights sparse: 7 3 0.5\n");
}

TEST(SetAttr, DenseMultisInMultis)
{
    EXPECT_EQ(readStatements("setAttr -s 3 \".wl[0].w[0:2]\" 0.6 0.3 0.1;", "skinCluster"),
              "setAttr .wl[0].w size 3\nsetAttr .wl[0].w[0:2] double x 1: 0.6 0.3 0.1\n");
}

TEST(SetAttr, SparseCountsBeyondTheFileAreReported)
{
    EXPECT_EQ(readStatements("setAttr \".wl[0].w\" 2000000000 0 1;", "skinCluster"),
              "setAttr .wl[0].w sparse: \n"
              "damaged \"setAttr\": 2000000000 entries announced, 5 bytes left\n");
    EXPECT_EQ(readStatements("setAttr \".wl[0].w\" 1 -1 1;", "skinCluster"),
              "setAttr .wl[0].w sparse: \n"
              "damaged \"setAttr\": a whole number from 0 to 2147483646 was expected\n");
}

TEST(SetAttr, UnknownAttributesFollowTheStatementsType)
{
    EXPECT_EQ(readStatements("setAttr \".zz[0:1]\" -type \"float2\" 1 2 3 4;\n"
                             "setAttr \".zz[2:3]\" 5 6 7 8;\n"
                             "setAttr \".yy\" -type \"string\" \"text\";\n"
                             "setAttr \".xx\" -type \"long3\" 1 2 3;"),
              "setAttr .zz[0:3] float x 2: 1 2 3 4 5 6 7 8\n"
              "setAttr .yy string \"text\"\nsetAttr .xx int32 x 3: 1 2 3\n");
}

TEST(SetAttr, UnknownAttributesWithoutTypeAreReadByTheirFirstToken)
{
    EXPECT_EQ(
        readStatements("setAttr \".zz\" 1.5; setAttr \".zz\" 1 2 3; setAttr \".zz[0:1]\" 1 2 3 "
                       "4; setAttr \".zz\" \"text\"; setAttr \".zz\" on;"
                       "setAttr \".zz\" what 3 \"x;y\"; setAttr \".zz\" 1 what;"),
        "setAttr .zz double x 1: 1.5\nsetAttr .zz double x 3: 1 2 3\n"
        "setAttr .zz[0:1] double x 2: 1 2 3 4\nsetAttr .zz string \"text\"\n"
        "setAttr .zz double x 1: 1\nsetAttr .zz opaque \"\" \"what 3 \\\"x;y\\\"\"\n"
        "setAttr .zz opaque \"\" \"1 what\"\n");
}

TEST(SetAttr, BadPlugsAndFlagsAreReported)
{
    EXPECT_EQ(readStatements("setAttr \"nothing\" 1;"),
              "damaged \"setAttr\": plug 'nothing': no attribute is named\n");
    EXPECT_EQ(
        readStatements("setAttr \".a[3:1]\" 1;"),
        "damaged \"setAttr\": plug '.a[3:1]': an index must be a whole number or an ascending "
        "range\n");
    EXPECT_EQ(readStatements("setAttr -e \".a\" 1; setAttr \".tx\" 2;", "transform"),
              "damaged \"setAttr\": unknown flag -e\nsetAttr .tx double x 1: 2\n");
    EXPECT_EQ(readStatements("setAttr; setAttr \".tx\" 2;", "transform"),
              "damaged \"setAttr\": plug '': no attribute is named\nsetAttr .tx double x 1: 2\n");
}

TEST(SetAttr, ASizeWithValuesIsThatOfTheWholeList)
{
    EXPECT_EQ(readStatements("addAttr -ln \"kit\" -m -at \"long\";"
                             "setAttr -s 6 \".kit[3:5]\"  1 18 18;"),
              "addAttr \"kit\" long multi\nsetAttr .kit size 6\n"
              "setAttr .kit[3:5] int32 x 1: 1 18 18\n");
}
