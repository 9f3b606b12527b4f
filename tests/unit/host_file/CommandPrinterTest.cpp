#include "host/file/CommandPrinter.h"

#include "host/geometry/curve/CurveData.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace host;
using namespace host::file;

namespace {

class Printed : public ::testing::Test {
protected:
    std::string lines;
    CommandPrinter printer{[this](std::string_view line) { lines += line; }};

    void setNumbers(std::int64_t first, const std::vector<double>& numbers, std::size_t width)
    {
        SetAttribute command;
        command.plug = *parsePlugPath(".a[0].b");
        command.plug.steps[1].first = first;
        command.plug.steps[1].last = first + static_cast<std::int64_t>(numbers.size() / width) - 1;
        command.payload = SetAttribute::Payload::Numbers;
        command.numbers.width = width;
        command.numbers.doubles = numbers;
        printer.setAttribute(command);
    }
};

std::vector<double> counted(int count)
{
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i) {
        numbers.push_back(i);
    }
    return numbers;
}

} // namespace

TEST_F(Printed, PiecesThatFollowEachOtherAreOneLine)
{
    setNumbers(3, {1, 2}, 1);
    setNumbers(5, {0.1, -0.0}, 1);
    setNumbers(8, {9}, 1);
    printer.endOfScene();
    EXPECT_EQ(lines, "setAttr .a[0].b[3:6] double x 1: 1 2 0.1 -0\n"
                     "setAttr .a[0].b[8] double x 1: 9\nend\n");
}

TEST_F(Printed, OtherWidthsBeginAnotherLine)
{
    setNumbers(0, {1, 2}, 1);
    setNumbers(2, {3, 4}, 2);
    printer.endOfScene();
    EXPECT_EQ(lines, "setAttr .a[0].b[0:1] double x 1: 1 2\n"
                     "setAttr .a[0].b[2] double x 2: 3 4\nend\n");
}

TEST_F(Printed, LongPayloadsAreADigestThatIsTheSameHoweverTheyAreCut)
{
    const std::vector<double> numbers = counted(100);
    setNumbers(0, numbers, 1);
    printer.endOfScene();
    const std::string whole = lines;
    lines.clear();
    for (int i = 0; i < 100; ++i) {
        setNumbers(i, {numbers[static_cast<std::size_t>(i)]}, 1);
    }
    printer.endOfScene();
    EXPECT_EQ(lines, whole);
    EXPECT_TRUE(whole.starts_with("setAttr .a[0].b[0:99] double x 1: 0 1 2 3 4 5 ... 100 in all, "
                                  "digest "))
        << whole;
}

TEST_F(Printed, DigestsDifferWhereOneNumberDiffers)
{
    std::vector<double> numbers = counted(100);
    setNumbers(0, numbers, 1);
    printer.endOfScene();
    const std::string before = lines;
    lines.clear();
    numbers[99] = 99.5;
    setNumbers(0, numbers, 1);
    printer.endOfScene();
    EXPECT_NE(lines, before);
}

TEST_F(Printed, TheDigestIsFnv1aOfTheBitsOfDoubles)
{
    // 65 zeros: 520 zero bytes; each step multiplies the offset basis by the prime.
    std::uint64_t expected = 14695981039346656037u;
    for (int i = 0; i < 520; ++i) {
        expected *= 1099511628211u;
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(expected));
    setNumbers(0, std::vector<double>(65, 0.0), 1);
    printer.endOfScene();
    EXPECT_EQ(lines, "setAttr .a[0].b[0:64] double x 1: 0 0 0 0 0 0 ... 65 in all, digest " +
                         std::string(digits) + "\nend\n");
}

TEST_F(Printed, FlagsAndSizesAreALineOfTheirOwnOnceForAllPieces)
{
    SetAttribute command;
    command.plug = *parsePlugPath(".k[0:1]");
    command.flags.isLocked = 1;
    command.sizeHint = 4;
    command.payload = SetAttribute::Payload::Numbers;
    const std::vector<double> numbers{1, 2};
    command.numbers.doubles = numbers;
    printer.setAttribute(command);
    command.plug = *parsePlugPath(".k[2:3]");
    printer.setAttribute(command);
    printer.endOfScene();
    EXPECT_EQ(lines, "setAttr .k locked on size 4\nsetAttr .k[0:3] double x 1: 1 2 1 2\nend\n");
}

TEST_F(Printed, ValuesAreALineEach)
{
    SetAttribute command;
    command.plug = *parsePlugPath(".s[7:9]");
    command.payload = SetAttribute::Payload::Value;
    std::vector<Value> values{Value::of(std::string("a\"\n\x01")), Value(), Value(2.5)};
    command.values = values;
    printer.setAttribute(command);
    EXPECT_EQ(lines, "setAttr .s[7] string \"a\\\"\\n\\x01\"\nsetAttr .s[8] nothing\n"
                     "setAttr .s[9] 2.5\n");
}

TEST_F(Printed, FacesCutInPiecesAreTheSameLine)
{
    PolyFaces both;
    both.corners = {0, 1, 2, 3, 4, 5};
    both.loopSizes = {3, 3};
    both.faceLoopCounts = {1, 1};
    both.uvSets = {{0, {-1, -1, -1, 7, 8, 9}}};
    SetAttribute command;
    command.plug = *parsePlugPath(".fc[0:1]");
    command.payload = SetAttribute::Payload::Faces;
    command.faces = &both;
    printer.setAttribute(command);
    printer.endOfScene();
    const std::string whole = lines;
    EXPECT_EQ(whole, "setAttr .fc[0:1] faces: f 0 1 2 f 3 4 5 mu0 7 8 9\nend\n");
    lines.clear();
    PolyFaces first{{0, 1, 2}, {3}, {1}, {}};
    PolyFaces second{{3, 4, 5}, {3}, {1}, {{0, {7, 8, 9}}}};
    command.plug = *parsePlugPath(".fc[0]");
    command.faces = &first;
    printer.setAttribute(command);
    command.plug = *parsePlugPath(".fc[1]");
    command.faces = &second;
    printer.setAttribute(command);
    printer.endOfScene();
    EXPECT_EQ(lines, whole);
}

TEST(PayloadTexts, NumbersHaveTheFewestDigits)
{
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::quiet_NaN()), "nan");
    PayloadText text;
    text.add(0.1f);
    text.add(1e20f);
    EXPECT_EQ(text.text(), "0.1 1e+20");
}

TEST(PayloadTexts, ValuesOfEveryKindSayWhatTheyAre)
{
    EXPECT_EQ(valueText(Value::of(Matrix4())), "matrix 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1");
    EXPECT_EQ(valueText(Value::of(ComponentList{{"f[0]"}})), "components \"f[0]\"");
    EXPECT_EQ(valueText(Value::of(geometry::CurveData{
                  1, 1, geometry::SplineForm::Periodic, false, 2, {0, 1}, {0, 0, 1, 2}})),
              "curve 1 1 2 0 2 knots 2 0 1 poles 4 0 0 1 2");
    EXPECT_EQ(valueText(Value::of(OpaqueText{"t", "x"})), "opaque \"t\" \"x\"");
}
