// The text and the bytes of every value: scalars, lists, element streams.
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using Writer = orvScene_api_file;
using namespace orv;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// Text of a value alone: a parameter "n" in the quoted form without its name and comma.
std::string valueText(std::uint32_t type, const void* value, bool binary = false)
{
    const std::string text = written([&](Writer& w) { w.parameter("n", type, value); }, binary);
    const bool framed = text.starts_with("\"n\" ") && text.ends_with(",\n") && text.size() >= 6;
    return framed ? text.substr(4, text.size() - 6) : "<not framed> " + text;
}

template<typename T>
std::string listText(std::uint32_t type, const std::vector<T>& elements, std::size_t perElement = 1,
                     bool binary = false)
{
    const List list{.elements = elements.data(),
                    .count = static_cast<std::uint32_t>(elements.size() / perElement)};
    return valueText(type, &list, binary);
}

template<typename T>
std::string memory(const std::vector<T>& values)
{
    std::string bytes(values.size() * sizeof(T), '\0');
    if (!values.empty()) {
        std::memcpy(bytes.data(), values.data(), bytes.size());
    }
    return bytes;
}

std::string header(char letter, unsigned char count)
{
    return std::string("\x01\x02\x03") + letter + static_cast<char>(count) + std::string(3, '\0');
}

// Scalars

TEST(Scalar, Float3AndFloat4)
{
    const float values[] = {1.0f, -0.0f, 0.1f, 1234567.0f};
    EXPECT_EQ(valueText(1, values), "1 -0 0.1");
    EXPECT_EQ(valueText(2, values), "1 -0 0.1 1.23457e+06");
    EXPECT_EQ(valueText(15, values), "1 -0 0.1 1.23457e+06");
    EXPECT_EQ(valueText(14, values), "1 -0");
}

TEST(Scalar, Float)
{
    const auto text = [](float value) { return valueText(3, &value); };
    EXPECT_EQ(text(0.0f), "0");
    EXPECT_EQ(text(-0.0f), "-0");
    EXPECT_EQ(text(1.5f), "1.5");
    EXPECT_EQ(text(100000.0f), "100000");
    EXPECT_EQ(text(1000000.0f), "1e+06");
    EXPECT_EQ(text(0.0001f), "0.0001");
    EXPECT_EQ(text(0.00001f), "1e-05");
}

TEST(Scalar, FloatThatIsNotStrictlyInsideItsRangeIsMinusOne)
{
    const auto text = [](float value) { return valueText(3, &value); };
    EXPECT_EQ(text(kInfinity), "-1");
    EXPECT_EQ(text(-kInfinity), "-1");
    EXPECT_EQ(text(kNan), "-1");
    EXPECT_EQ(text(3.4028235e38f), "-1");
    EXPECT_EQ(text(-3.4028235e38f), "-1");
    EXPECT_EQ(text(std::nextafter(3.4028235e38f, 0.0f)), "3.40282e+38");
    EXPECT_EQ(text(1e-45f), "1.4013e-45");
}

TEST(Scalar, FloatsInTriplesAreNotReplaced)
{
    const float values[] = {kNan, kInfinity, -kInfinity};
    EXPECT_EQ(valueText(1, values), "nan inf -inf");
}

TEST(Scalar, DoubleHasSixteenDecimalsAndNeverAnExponent)
{
    const auto text = [](double value) { return valueText(4, &value); };
    EXPECT_EQ(text(0.5), "0.5000000000000000");
    EXPECT_EQ(text(-0.0), "-0.0000000000000000");
    EXPECT_EQ(text(0.1), "0.1000000000000000");
    EXPECT_EQ(text(1e22), "10000000000000000000000.0000000000000000");
    EXPECT_EQ(text(1e-20), "0.0000000000000000");
    EXPECT_EQ(text(3.4e38).find('.'), 39u);
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "             inf");
}

TEST(Scalar, Double3)
{
    const double values[] = {0.1, 1e300, -2.5e-300};
    EXPECT_EQ(valueText(5, values), "0.1 1e+300 -2.5e-300");
}

TEST(Scalar, Integers)
{
    const std::int32_t values[] = {std::numeric_limits<std::int32_t>::min(), 0, 2147483647, -1};
    EXPECT_EQ(valueText(6, values), "-2147483648");
    EXPECT_EQ(valueText(16, values), "-2147483648 0");
    EXPECT_EQ(valueText(17, values), "-2147483648 0 2147483647");
    EXPECT_EQ(valueText(18, values), "-2147483648 0 2147483647 -1");
}

TEST(Scalar, Boolean)
{
    const bool yes = true;
    const bool no = false;
    EXPECT_EQ(valueText(7, &yes), "on");
    EXPECT_EQ(valueText(7, &no), "off");
}

TEST(Scalar, MatrixIsOfFloats)
{
    const float values[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16.5f};
    EXPECT_EQ(valueText(9, values), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16.5");
}

TEST(Scalar, StringFollowsTheNameRule)
{
    EXPECT_EQ(valueText(10, "C:\\a b"), "\"C:\\a b\"");
    EXPECT_EQ(valueText(13, "\""), "xX22");
    EXPECT_EQ(valueText(10, ""), "\"\"");
    EXPECT_EQ(writtenIndented([](Writer& w) { w.parameter("n", 10, "s"); }), "  \"n\" \"s\",\n");
}

TEST(Scalar, BlobIsWrittenTwoBlanksDeep)
{
    const Blob text{.bytes = "a\nb", .length = 3, .binary = 0};
    EXPECT_EQ(valueText(65536, &text), "a\nb");
    const auto one = [&](Writer& w) {
        w.setFlags(1);
        w.frame(1);
        w.parameter("n", 65536, &text);
    };
    EXPECT_EQ(written(one), "frame 1 {\n \"n\"   a\n  b,\n");
}

TEST(Scalar, OfUnknownCodeOrWithoutDataIsNothing)
{
    const char bytes[64] = {};
    for (const std::uint32_t type :
         {0u, 8u, 11u, 12u, 19u, 22u, 24u, 0x8000u, 0x8008u, 0x8010u, 65537u}) {
        EXPECT_EQ(valueText(type, bytes), "") << type;
    }
    EXPECT_EQ(valueText(6, nullptr), "");
    EXPECT_EQ(valueText(0x8003, nullptr), "");
}

TEST(Scalar, OfType23IsWrittenTwice)
{
    const std::int32_t value = 42;
    EXPECT_EQ(written([&](Writer& w) { w.parameter("n", 23, &value); }), "\"n\" 42,\n\"n\" 42,\n");
    EXPECT_EQ(written([&](Writer& w) {
                  w.beginGroup("g", true);
                  w.parameter("n", 23, &value);
              }),
              "\ngroup \"g\" {\n\"n\" 42,\nn 42\n");
}

// Parameters

TEST(Parameter, IsQuotedWithCommaOrABareKeyword)
{
    const std::int32_t value = 7;
    EXPECT_EQ(writtenIndented([&](Writer& w) { w.parameter("n", 6, &value); }), "  \"n\" 7,\n");
    EXPECT_EQ(writtenIndented([&](Writer& w) {
                  w.beginGroup("g", true);
                  w.parameter("reflection map", 6, &value);
                  w.parameter("q\"", 6, &value);
              }),
              "\n  group \"g\" {\n   reflection map 7\n   q\" 7\n");
}

// Lists

TEST(List, OfTwentyFloatsHasLinesOfNineEightAndThree)
{
    std::vector<float> values;
    for (int i = 0; i < 20; ++i) {
        values.push_back(static_cast<float>(i));
    }
    EXPECT_EQ(listText(0x8003, values),
              "[ 0,1,2,3,4,5,6,7,8,\n9,10,11,12,13,14,15,16,\n17,18,19 ] ");
}

TEST(List, BreaksItsLineAfterALastElementToo)
{
    const std::vector<std::int32_t> values = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(listText(0x8006, values), "[ 0,1,2,3,4,5,6,7,8 \n] ");
}

TEST(List, IndentsItsFurtherLines)
{
    const std::vector<std::int32_t> values = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const List list{.elements = values.data(), .count = 10};
    EXPECT_EQ(writtenIndented([&](Writer& w) { w.parameter("n", 0x8006, &list); }),
              "  \"n\" [ 0,1,2,3,4,5,6,7,8,\n  9 ] ,\n");
}

TEST(List, OfEachTypeInText)
{
    EXPECT_EQ(listText<float>(0x8001, {1, 2, 3, -0.0f, 0.5f, 1e6f}, 3), "[ 1 2 3,-0 0.5 1e+06 ] ");
    EXPECT_EQ(listText<float>(0x8002, {1, 2, 3, 4, 5, 6, 7, 8}, 4), "[ 1 2 3 4,5 6 7 8 ] ");
    EXPECT_EQ(listText<float>(0x8003, {0.1f}), "[ 0.1 ] ");
    EXPECT_EQ(listText<double>(0x8004, {0.5, 2}), "[ 0.5000000000000000,2.0000000000000000 ] ");
    EXPECT_EQ(listText<double>(0x8005, {1, 2, 3}, 3), "[ 1 2 3 ] ");
    EXPECT_EQ(listText<std::int32_t>(0x8006, {-1, 2}), "[ -1,2 ] ");
    EXPECT_EQ(listText<std::int32_t>(0x8017, {-1, 2}), "[ -1,2 ] ");
    EXPECT_EQ(listText<unsigned char>(0x8007, {1, 0}), "[ 1,0 ] ");
    EXPECT_EQ(listText<const char*>(0x800A, {"a b", "c"}), "[ a b,c ] ");
    EXPECT_EQ(listText<const char*>(0x800D, {"a\"", nullptr}), "[ a\", ] ");
}

TEST(List, OfMatricesHasABlankAfterEveryValue)
{
    std::vector<double> values(32, 0.0);
    values[0] = 0.25;
    values[31] = 1;
    EXPECT_EQ(listText(0x8009, values, 16),
              "[ 0.25 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 ,0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1  ] ");
}

TEST(List, WithoutElementsIsTwoBrackets)
{
    EXPECT_EQ(listText<float>(0x8003, {}), "[ ] ");
    const List broken{.elements = nullptr, .count = 5};
    EXPECT_EQ(valueText(0x8003, &broken), "[ ] ");
}

TEST(List, WritesMinusOneForWhatIsNotFinite)
{
    EXPECT_EQ(listText<float>(0x8003, {kNan, kInfinity, -kInfinity, 3.4028235e38f}),
              "[ -1,-1,-1,3.40282e+38 ] ");
    EXPECT_EQ(listText<float>(0x8001, {1, kNan, 2}, 3), "[ 1 -1 2 ] ");
    EXPECT_EQ(listText<double>(0x8004, {std::numeric_limits<double>::infinity()}),
              "[ -1.0000000000000000 ] ");
}

TEST(List, LongerThanAPieceIsNotCut)
{
    const std::vector<std::int32_t> values(300000, 1234567);
    // 299,999 separators of one and a last one; breaks after 8, 16, ... 299,992.
    EXPECT_EQ(listText(0x8006, values).size(), 2u + 300000 * 8 + 299992 / 8 + 2);
}

TEST(BinaryList, HasHeaderAndRawData)
{
    const std::vector<float> floats = {1, 2, 3, kNan, 5, 6};
    const std::vector<std::int32_t> integers = {-1, 0x0a0d1a00};
    const std::vector<double> doubles = {0.1, -2};
    EXPECT_EQ(listText(0x8001, floats, 3, true), "[ " + header('c', 6) + memory(floats) + "] ");
    EXPECT_EQ(listText(0x8003, floats, 1, true), "[ " + header('f', 6) + memory(floats) + "] ");
    EXPECT_EQ(listText(0x8006, integers, 1, true), "[ " + header('i', 2) + memory(integers) + "] ");
    EXPECT_EQ(listText(0x8004, doubles, 1, true), "[ " + header('r', 2) + memory(doubles) + "] ");
}

TEST(BinaryList, CountIsLittleEndian)
{
    const std::vector<std::int32_t> values(0x010203, 9);
    const std::string text = listText(0x8006, values, 1, true);
    EXPECT_EQ(text.substr(0, 10), std::string("[ \x01\x02\x03i\x03\x02\x01\0", 10));
    EXPECT_EQ(text.size(), 2 + 8 + 4 * values.size() + 2);
}

TEST(BinaryList, WithoutElementsKeepsItsHeader)
{
    EXPECT_EQ(listText<float>(0x8001, {}, 3, true), "[ " + header('c', 0) + "] ");
    EXPECT_EQ(listText<double>(0x8004, {}, 1, true), "[ " + header('r', 0) + "] ");
    const List broken{.elements = nullptr, .count = 5};
    EXPECT_EQ(valueText(0x8006, &broken, true), "[ " + header('i', 0) + "] ");
}

TEST(BinaryList, OfOtherTypesStaysText)
{
    EXPECT_EQ(listText<unsigned char>(0x8007, {1, 0}, 1, true), "[ 1,0 ] ");
    EXPECT_EQ(listText<float>(0x8002, {1, 2, 3, 4}, 4, true), "[ 1 2 3 4 ] ");
    EXPECT_EQ(listText<double>(0x8005, {1, 2, 3}, 3, true), "[ 1 2 3 ] ");
    EXPECT_EQ(listText(0x8009, std::vector<double>(16, 1.0), 16, true),
              "[ 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1  ] ");
    EXPECT_EQ(listText<std::int32_t>(0x8017, {4}, 1, true), "[ 4 ] ");
    EXPECT_EQ(listText<const char*>(0x800A, {"s"}, 1, true), "[ s ] ");
}

TEST(BinaryList, FollowsTheConstructorUntilSetFlagsDecides)
{
    const std::vector<std::int32_t> values = {1};
    const List list{.elements = values.data(), .count = 1};
    const std::string bytes = written(
        [&](Writer& w) {
            EXPECT_EQ(w.formatFlags(), 0x400001u); // binary although the bit is clear
            w.parameter("a", 0x8006, &list);
            EXPECT_FALSE(w.setFlags(1));
            w.parameter("b", 0x8006, &list);
            EXPECT_TRUE(w.setFlags(0x400002));
            w.parameter("c", 0x8006, &list);
        },
        true);
    const std::string data = header('i', 1) + memory(values);
    EXPECT_EQ(bytes, "\"a\" [ " + data + "] ,\n\"b\" [ 1 ] ,\n\"c\" [ " + data + "] ,\n");
}

// Element streams

template<typename T>
void elements(Writer& w, std::uint32_t type, const std::vector<T>& values,
              std::size_t perElement = 1)
{
    w.beginArray("a");
    for (std::size_t i = 0; i < values.size(); i += perElement) {
        w.arrayElement(type, values.data() + i);
    }
    w.endArray();
}

TEST(ElementStream, OfTriplesHasTwoOnALine)
{
    const std::vector<float> values = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    const auto calls = [&](Writer& w) { elements(w, 1, values, 3); };
    EXPECT_EQ(written(calls), "\"a\" [\n1 2 3, 4 5 6,\n7 8 9, 10 11 12,\n13 14 15 ],\n");
    EXPECT_EQ(writtenIndented(calls),
              "  \"a\" [\n   1 2 3, 4 5 6,\n   7 8 9, 10 11 12,\n   13 14 15 ],\n");
}

TEST(ElementStream, OfOtherTypesHasSixOnALine)
{
    std::vector<std::int32_t> values;
    for (int i = 0; i < 13; ++i) {
        values.push_back(i);
    }
    const auto calls = [&](Writer& w) { elements(w, 6, values); };
    EXPECT_EQ(written(calls), "\"a\" [\n0, 1, 2, 3, 4, 5,\n6, 7, 8, 9, 10, 11,\n12 ],\n");
    EXPECT_EQ(writtenIndented(calls),
              "  \"a\" [\n   0, 1, 2, 3, 4, 5,\n   6, 7, 8, 9, 10, 11,\n   12 ],\n");
}

TEST(ElementStream, WritesEveryTypeAsTheScalar)
{
    const float number = kInfinity;
    const bool flag = true;
    const double real = 0.5;
    const Blob blob{.bytes = "blob", .length = 4, .binary = 0};
    const Blob* pointer = &blob;
    EXPECT_EQ(written([&](Writer& w) {
                  w.beginArray("a");
                  w.arrayElement(3, &number);
                  w.arrayElement(7, &flag);
                  w.arrayElement(13, "s");
                  w.arrayElement(65536, &pointer);
                  w.arrayElement(4, &real);
                  EXPECT_FALSE(w.arrayElement(6, nullptr));
                  w.endArray();
              }),
              "\"a\" [\n-1, on, \"s\", blob, 0.5000000000000000 ],\n");
}

TEST(ElementStream, CountsItsElementsAnewInEveryArray)
{
    const std::vector<std::int32_t> values = {1, 2};
    EXPECT_EQ(written([&](Writer& w) {
                  elements(w, 6, values);
                  elements(w, 6, values);
              }),
              "\"a\" [\n1, 2 ],\n\"a\" [\n1, 2 ],\n");
}

TEST(BinaryElementStream, IsOneBlockAtItsEnd)
{
    const std::vector<float> floats = {1, 2, 3, 4, 5, 6};
    const std::vector<std::int32_t> integers = {7, -8};
    EXPECT_EQ(written([&](Writer& w) { elements(w, 1, floats, 3); }, true),
              "\"a\" [\n" + header('c', 6) + memory(floats) + " ],\n");
    EXPECT_EQ(written([&](Writer& w) { elements(w, 3, floats); }, true),
              "\"a\" [\n" + header('f', 6) + memory(floats) + " ],\n");
    EXPECT_EQ(written([&](Writer& w) { elements(w, 6, integers); }, true),
              "\"a\" [\n" + header('i', 2) + memory(integers) + " ],\n");
    EXPECT_EQ(writtenIndented([&](Writer& w) { elements(w, 6, integers); }, true),
              "  \"a\" [\n   " + header('i', 2) + memory(integers) + " ],\n");
}

TEST(BinaryElementStream, WithoutElementsHasNoHeader)
{
    EXPECT_EQ(written([](Writer& w) { elements<float>(w, 3, {}); }, true), "\"a\" [\n ],\n");
}

TEST(BinaryElementStream, IsEmptiedBetweenArrays)
{
    const std::vector<std::int32_t> values = {7};
    const std::string block = "\"a\" [\n" + header('i', 1) + memory(values) + " ],\n";
    EXPECT_EQ(written(
                  [&](Writer& w) {
                      elements(w, 6, values);
                      elements(w, 6, values);
                      elements<float>(w, 3, {});
                  },
                  true),
              block + block + "\"a\" [\n ],\n");
}

TEST(BinaryElementStream, OfOtherTypesStaysText)
{
    const std::vector<double> values = {1, 2, 3};
    EXPECT_EQ(written([&](Writer& w) { elements(w, 5, values, 3); }, true), "\"a\" [\n1 2 3 ],\n");
}

TEST(BinaryElementStream, GrowsBeyondItsFirstRoom)
{
    std::vector<std::int32_t> values(200000);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<std::int32_t>(i);
    }
    const std::string text = written([&](Writer& w) { elements(w, 6, values); }, true);
    EXPECT_EQ(text.substr(14), memory(values) + " ],\n"); // 6 of the opening, 8 of the header
}

} // namespace
