// Chunks of numbers: kinds, times, ranges, lengths. Numbers were chosen to be exact in every kind;
// ticks by hand: one of 6000 a second is 141120000 / 6000 = 23520 of ours.
#include "host/file/runningStep.h"
#include "tests/unit/host_file/readValueChunk.h"

#include <gtest/gtest.h>

#include <limits>

using test::BinaryBytes;
using test::BinaryManner;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2015;
using test::kMaya2019;
using test::readChunks;
using test::readValueChunk;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// As bits of a double it is denormal.
constexpr std::int64_t kSmallTicks = 1000;

std::string read(std::string_view tag, const std::string& plug, std::string_view payload,
                 std::string_view code = "XFRM")
{
    return readValueChunk(kMaya2019, tag, plug, payload, code);
}

std::string doubles(const std::vector<double>& numbers)
{
    return BinaryBytes().f64s(numbers).bytes();
}

/// Where the pieces of a long chunk go.
class PieceSink : public test::NodeTableSink {
public:
    struct Piece {
        std::int64_t first, last;
        std::size_t numbers, sparse;
        double firstNumber;
    };
    std::vector<Piece> pieces;

    void setAttribute(const host::file::SetAttribute& command) override
    {
        const host::PlugStep& step = command.plug.steps[host::file::runningStep(command.plug)];
        const auto& numbers = command.numbers;
        const double first = !numbers.floats.empty()     ? numbers.floats[0]
                             : !numbers.doubles.empty()  ? numbers.doubles[0]
                             : !numbers.integers.empty() ? numbers.integers[0]
                             : !command.sparse.empty()   ? command.sparse[0].number
                                                         : -1;
        pieces.push_back(
            {step.first, step.last, numbers.numberCount(), command.sparse.size(), first});
    }
};

std::vector<PieceSink::Piece> piecesOf(const std::string& value, std::string_view code)
{
    const BinaryScene mb(kMaya2019);
    const std::string file = mb.file(mb.header() + mb.node(code, {"node"}, value));
    PieceSink sink;
    EXPECT_TRUE(host::file::readBinary({file.data(), file.size()}, sink));
    EXPECT_EQ(sink.damages, std::vector<std::string>{});
    return sink.pieces;
}

} // namespace

TEST(BinaryNumbers, TheAttributeDecidesTheKind)
{
    EXPECT_EQ(read("DBLE", "v", doubles({1})), "setAttr .v int32 x 1: 1\n");
    EXPECT_EQ(read("DBLE", "tx", doubles({-2.5})), "setAttr .tx double x 1: -2.5\n");
    EXPECT_EQ(read("DBL3", "t", doubles({1, 2, 3})), "setAttr .t double x 3: 1 2 3\n");
    const std::string floats = BinaryBytes().f32(0.5f).f32(-1).f32(2).bytes();
    EXPECT_EQ(read("FLT3", "t", floats), "setAttr .t double x 3: 0.5 -1 2\n");
    EXPECT_EQ(read("FLT3", "pt[7]", floats, "DMSH"), "setAttr .pt[7] float x 3: 0.5 -1 2\n");
    EXPECT_EQ(read("DBL3", "pt[7]", doubles({1, 2, 0.25}), "DMSH"),
              "setAttr .pt[7] float x 3: 1 2 0.25\n");
    EXPECT_EQ(read("LNG3", "pt[7]", BinaryBytes().i32(-1).i32(2).i32(70000).bytes(), "DMSH"),
              "setAttr .pt[7] float x 3: -1 2 70000\n");
    EXPECT_EQ(read("SRT3", "t", BinaryBytes().u16(0xffff).u16(2).u16(0x8000).bytes()),
              "setAttr .t double x 3: -1 2 -32768\n");
}

TEST(BinaryNumbers, TheTagDecidesForUnknownAttributes)
{
    EXPECT_EQ(read("DBLE", "zz", doubles({0.5})), "setAttr .zz double x 1: 0.5\n");
    EXPECT_EQ(read("DBL2", "zz", doubles({1, 2})), "setAttr .zz double x 2: 1 2\n");
    EXPECT_EQ(read("DBL4", "zz", doubles({1, 2, 3, 4})), "setAttr .zz double x 4: 1 2 3 4\n");
    EXPECT_EQ(read("FLT2", "zz", BinaryBytes().f32(1).f32(0.5f).bytes()),
              "setAttr .zz float x 2: 1 0.5\n");
    EXPECT_EQ(read("SRT2", "zz", BinaryBytes().u16(3).u16(0xfffe).bytes()),
              "setAttr .zz int32 x 2: 3 -2\n");
    EXPECT_EQ(read("LNG2", "zz", BinaryBytes().i32(3).i32(-2).bytes()),
              "setAttr .zz int32 x 2: 3 -2\n");
    EXPECT_EQ(read("CMPD", "zz", doubles({1, 2, 3, 4, 5})), "setAttr .zz double x 5: 1 2 3 4 5\n");
}

TEST(BinaryNumbers, IntegersAreCutAndClamped)
{
    EXPECT_EQ(read("DBLE", "ro", doubles({2.9})), "setAttr .ro int32 x 1: 2\n");
    EXPECT_EQ(read("DBLE", "ro", doubles({-2.9})), "setAttr .ro int32 x 1: -2\n");
    EXPECT_EQ(read("DBLE", "ro", doubles({kNan})), "setAttr .ro int32 x 1: 0\n");
    EXPECT_EQ(read("DBLE", "ro", doubles({1e300})), "setAttr .ro int32 x 1: 2147483647\n");
    EXPECT_EQ(read("DBLE", "ro", doubles({-kInfinity})), "setAttr .ro int32 x 1: -2147483648\n");
    EXPECT_EQ(read("DBL3", "t", doubles({kNan, kInfinity, -0.0})),
              "setAttr .t double x 3: nan inf -0\n");
}

TEST(BinaryNumbers, RangesInEveryManner)
{
    for (const BinaryManner& manner : {test::kMaya85, kMaya2011, kMaya2015, kMaya2019}) {
        const std::string floats = BinaryBytes().f32(1).f32(2).f32(3).f32(4).f32(5).f32(6).bytes();
        EXPECT_EQ(readValueChunk(manner, "FLT3", "pt[4:5]", floats, "DMSH"),
                  "setAttr .pt[4:5] float x 3: 1 2 3 4 5 6\n");
        EXPECT_EQ(readValueChunk(manner, "DBLE", "zz[0:2]", doubles({1, 2, 3})),
                  "setAttr .zz[0:2] double x 1: 1 2 3\n");
    }
}

TEST(BinaryNumbers, RangesInTheMiddleOfAName)
{
    // targetWeight is no multi: one number for each target.
    EXPECT_EQ(read("DBLE", "tg[2:3].tw", doubles({0.25, 0.75}), "DPAR"),
              "setAttr .tg[2:3].tw double x 1: 0.25 0.75\n");
    EXPECT_EQ(read("DBL3", "tg[0:1].tot", doubles({1, 2, 3, 4, 5, 6}), "DPAR"),
              "setAttr .tg[0:1].tot double x 3: 1 2 3 4 5 6\n");
}

TEST(BinaryNumbers, TimesOfFourBytes)
{
    const std::string line = "setAttr .ktv[0:1] double x 2: 5880000 1.5 -23520 2\n";
    // 250 / 6000 s is a frame of film: 141120000 / 24.
    const std::string keys = BinaryBytes().i32(250).f64(1.5).i32(-1).f64(2).bytes();
    EXPECT_EQ(readValueChunk(kMaya2011, "CMPD", "ktv[0:1]", keys, "PCTU"), line);
    EXPECT_EQ(readValueChunk(kMaya2015, "CMPD", "ktv[0:1]", keys, "PCTU"), line);
    EXPECT_EQ(readValueChunk(kMaya2011, "DBLE", "o", BinaryBytes().i32(250).bytes(), "TIME"),
              "setAttr .o double x 1: 5880000\n");
    EXPECT_EQ(readValueChunk(kMaya2011, "DBLE", "zz", BinaryBytes().i32(-250).bytes()),
              "setAttr .zz double x 1: -5880000\n");
    EXPECT_EQ(readValueChunk(kMaya2011, "CMPD", "zz[3:4]", keys),
              "setAttr .zz[3:4] double x 2: 5880000 1.5 -23520 2\n");
}

TEST(BinaryNumbers, TimesOfEightBytes)
{
    const std::string keys = BinaryBytes().i64(5880000).f64(1.5).i64(-1000).f64(2).bytes();
    EXPECT_EQ(read("CMPD", "ktv[0:1]", keys, "PCTU"),
              "setAttr .ktv[0:1] double x 2: 5880000 1.5 -1000 2\n");
    EXPECT_EQ(read("CMPD", "ktv[5]", BinaryBytes().i64(0).f64(-1).bytes(), "PCTU"),
              "setAttr .ktv[5] double x 2: 0 -1\n");
    EXPECT_EQ(read("DBLE", "o", BinaryBytes().i64(5880000).bytes(), "TIME"),
              "setAttr .o double x 1: 5880000\n");
    // A year and more is no denormal number any more: 2^53 ticks.
    EXPECT_EQ(read("DBLE", "o", BinaryBytes().i64(std::int64_t{1} << 53).bytes(), "TIME"),
              "setAttr .o double x 1: 9007199254740992\n");
}

TEST(BinaryNumbers, BitsTellTheTimesOfUnknownAttributes)
{
    EXPECT_EQ(read("DBLE", "zz", BinaryBytes().i64(kSmallTicks).bytes()),
              "setAttr .zz double x 1: 1000\n");
    EXPECT_EQ(read("DBLE", "zz", BinaryBytes().i64(-kSmallTicks).bytes()),
              "setAttr .zz double x 1: -1000\n");
    EXPECT_EQ(read("CMPD", "zz[0:1]", BinaryBytes().i64(10).f64(1).i64(-20).f64(0).bytes()),
              "setAttr .zz[0:1] double x 2: 10 1 -20 0\n");
    EXPECT_EQ(read("DBLE", "zz", BinaryBytes().i64(0).bytes()), "setAttr .zz double x 1: 0\n");
    EXPECT_EQ(read("DBLE", "zz", doubles({-0.0})), "setAttr .zz double x 1: -0\n");
    EXPECT_EQ(read("DBLE", "zz", doubles({kNan})), "setAttr .zz double x 1: nan\n");
    // The smallest normal double, 2^-1022, is a number.
    EXPECT_EQ(read("DBLE", "zz", doubles({0x1p-1022})),
              "setAttr .zz double x 1: 2.2250738585072014e-308\n");
}

TEST(BinaryNumbers, KnownNumbersAreNeverTimes)
{
    // 2^-1074, the double whose bits are 1.
    EXPECT_EQ(read("DBLE", "tx", doubles({0x1p-1074})), "setAttr .tx double x 1: 5e-324\n");
    // The driver of a driven curve is a number.
    EXPECT_EQ(read("CMPD", "ktv[0]", doubles({0x1p-1074, 1}), "PCUU"),
              "setAttr .ktv[0] double x 2: 5e-324 1\n");
}

TEST(BinaryNumbers, LengthsThatDoNotFit)
{
    const auto damaged = [](const std::string& tag, const std::string& reason) {
        return "damaged \"" + tag + "\": " + reason + "\n";
    };
    EXPECT_EQ(read("DBLE", "tx", "1234567"), damaged("DBLE", "elements of 7 bytes"));
    EXPECT_EQ(read("DBLE", "zz[0:2]", doubles({1, 2})), damaged("DBLE", "16 bytes for 3 elements"));
    EXPECT_EQ(read("DBLE", "zz", doubles({1, 2})), damaged("DBLE", "elements of 16 bytes"));
    EXPECT_EQ(read("DBL3", "t", doubles({1, 2})), damaged("DBL3", "elements of 16 bytes"));
    EXPECT_EQ(read("FLT3", "pt[0:2147483646]", "123456789012", "DMSH"),
              damaged("FLT3", "12 bytes for 2147483647 elements"));
    EXPECT_EQ(read("CMPD", "ktv[0:2]", doubles({1, 2, 3, 4, 5}), "PCTU"),
              damaged("CMPD", "40 bytes for 3 elements"));
    EXPECT_EQ(read("CMPD", "ktv[0]", doubles({1}), "PCTU"), damaged("CMPD", "elements of 8 bytes"));
    EXPECT_EQ(read("CMPD", "zz", "123456"), damaged("CMPD", "elements of 6 bytes"));
    EXPECT_EQ(read("CMPD", "zz", std::string(8 * 32769, '\0')),
              damaged("CMPD", "elements of 262152 bytes"));
}

TEST(BinaryNumbers, WithoutNumbersOnlyTheSettingsAreTold)
{
    const BinaryScene mb(kMaya2019);
    for (const std::string_view tag : {"DBLE", "DBL3", "FLT3", "CMPD"}) {
        EXPECT_EQ(readChunks(mb, mb.value(tag, test::BinaryPlug("zz", 0x20u, 7u)), "XFRM"),
                  "setAttr .zz keyable off locked off channelBox off size 7\n");
    }
}

TEST(BinaryNumbers, CompoundsWithOtherMembers)
{
    EXPECT_EQ(read("CMPD", "iog[0].og[0]", doubles({1, 2}), "DMSH"),
              "damaged \"CMPD\": a compound whose members are not all numbers\n");
}

TEST(BinaryNumbers, LongListsComeInPieces)
{
    const BinaryScene mb(kMaya2019);
    constexpr std::size_t kElements = 30000;
    std::vector<float> floats(3 * kElements);
    std::vector<double> numbers(2 * 32768);
    for (std::size_t i = 0; i < floats.size(); ++i) {
        floats[i] = static_cast<float>(i);
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = static_cast<double>(i);
    }
    // 32768 / 3 = 10922 whole elements a piece.
    const auto threes = piecesOf(mb.floats("pt[5:30004]", floats), "DMSH");
    ASSERT_EQ(threes.size(), 3u);
    EXPECT_EQ(threes[0].first, 5);
    EXPECT_EQ(threes[0].last, 5 + 10921);
    EXPECT_EQ(threes[1].first, 5 + 10922);
    EXPECT_EQ(threes[1].firstNumber, 3 * 10922);
    EXPECT_EQ(threes[2].last, 30004);
    EXPECT_EQ(threes[2].numbers, 3 * (kElements - 2 * 10922));
    const auto ones = piecesOf(mb.doubles("zz[0:65535]", numbers, 1), "XFRM");
    ASSERT_EQ(ones.size(), 2u);
    EXPECT_EQ(ones[1].first, 32768);
    EXPECT_EQ(ones[1].last, 65535);
    EXPECT_EQ(ones[1].firstNumber, 32768);
    // 70000 keys of old times: four pieces of 16384 and 4464.
    std::string keys;
    for (int i = 0; i < 70000; ++i) {
        keys += BinaryBytes().i32(i).f64(i).bytes();
    }
    const auto old = piecesOf(BinaryScene(kMaya2019).value("CMPD", "ktv[0:69999]", keys), "PCTU");
    ASSERT_EQ(old.size(), 5u);
    EXPECT_EQ(old[4].first, 65536);
    EXPECT_EQ(old[4].numbers, 2u * 4464);
}

TEST(BinarySparse, Rows)
{
    const BinaryScene mb(kMaya2019);
    const std::string rows =
        BinaryBytes().u32(2).u32(0).f64(0.75).u32(5).f64(0.25).u32(0).u32(1).u32(3).f64(1).bytes();
    EXPECT_EQ(read("DBLE", "wl[4:6].w", rows, "FSCL"),
              "setAttr .wl[4:6].w sparse: 4 0 0.75 4 5 0.25 6 3 1\n");
    EXPECT_EQ(read("DBLE", "zz[4:6].w", rows),
              "setAttr .zz[4:6].w sparse: 4 0 0.75 4 5 0.25 6 3 1\n");
    EXPECT_EQ(read("DBLE", "wl[4].w", rows.substr(0, 28), "FSCL"),
              "setAttr .wl[4].w sparse: 4 0 0.75 4 5 0.25\n");
    EXPECT_EQ(read("DBLE", "wl[0:1].w", std::string(8, '\0'), "FSCL"),
              "setAttr .wl[0:1].w sparse: \n");
}

TEST(BinarySparse, IndexedInnerElementsArePlainNumbers)
{
    EXPECT_EQ(read("DBLE", "wl[4].w[0:2]", doubles({0.5, 0.25, 0.25}), "FSCL"),
              "setAttr .wl[4].w[0:2] double x 1: 0.5 0.25 0.25\n");
    EXPECT_EQ(read("DBLE", "wl[4].w[3]", doubles({1}), "FSCL"),
              "setAttr .wl[4].w[3] double x 1: 1\n");
}

TEST(BinarySparse, UnknownAttributesTakeRowsOnlyWhereTheyFit)
{
    // As rows: one of 0x3fe00000 pairs.
    EXPECT_EQ(read("DBLE", "zz[0:1].b", doubles({0.5, 0.25})),
              "setAttr .zz[0:1].b double x 1: 0.5 0.25\n");
    EXPECT_EQ(read("DBLE", "zz[0:1].b", doubles({0, 0})), "setAttr .zz[0:1].b double x 1: 0 0\n");
    EXPECT_EQ(read("DBLE", "zz[0:1].b", doubles({0, 0, 1})),
              "damaged \"DBLE\": elements of 12 bytes\n");
}

TEST(BinarySparse, RowsThatDoNotFit)
{
    const std::string cut = BinaryBytes().u32(1).u32(0).f64(1).u32(2).u32(0).f64(1).bytes();
    EXPECT_EQ(read("DBLE", "wl[0:1].w", cut, "FSCL"),
              "setAttr .wl[0:1].w sparse: 0 0 1\n"
              "damaged \"DBLE\": a count of 2 exceeds the chunk\n");
    EXPECT_EQ(read("DBLE", "wl[0:1].w", BinaryBytes().u32(0).u32(0).u32(0).bytes(), "FSCL"),
              "setAttr .wl[0:1].w sparse: \ndamaged \"DBLE\": 4 bytes are left over\n");
    EXPECT_EQ(read("DBLE", "wl[0:2147483646].w", BinaryBytes().u32(0).bytes(), "FSCL"),
              "setAttr .wl[0:2147483646].w sparse: \n"
              "damaged \"DBLE\": the chunk is too short\n");
    EXPECT_EQ(read("DBLE", "wl[0:1].w", BinaryBytes().u32(1).u32(2147483647).f64(1).u32(0).bytes(),
                   "FSCL"),
              "setAttr .wl[0:1].w sparse: \n"
              "damaged \"DBLE\": an index of 2147483647\n");
}

TEST(BinarySparse, LongRowsComeInPieces)
{
    const BinaryScene mb(kMaya2019);
    std::vector<std::vector<std::pair<std::uint32_t, double>>> rows(2);
    for (std::uint32_t i = 0; i < 20000; ++i) {
        rows[0].push_back({i, i});
        rows[1].push_back({i, 20000.0 + i});
    }
    const auto pieces = piecesOf(mb.sparse("wl[0:1].w", rows), "FSCL");
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces[0].sparse, 32768u);
    EXPECT_EQ(pieces[1].sparse, 40000u - 32768u);
    EXPECT_EQ(pieces[1].firstNumber, 32768);
}
