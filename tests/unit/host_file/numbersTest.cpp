#include "host/file/ascii/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using namespace host::file::ascii;
using host::file::toInt32;

namespace {

/// The number of a text that stands in front of `behind`, or nothing when it is not read whole.
std::optional<double> doubleOf(const std::string& text, const std::string& behind)
{
    const std::string bytes = text + behind;
    double number = 0;
    const char* const end = readDouble(bytes.data(), bytes.data() + bytes.size(), number);
    return end == bytes.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Behind a number: enough for the fast way, and nothing, for the careful one.
const std::string kRoom(80, ' ');
const std::string kNothing;

void expectAsStandard(const std::string& text)
{
    const double standard = std::strtod(text.c_str(), nullptr);
    for (const std::string& behind : {kRoom, kNothing}) {
        const auto number = doubleOf(text, behind);
        ASSERT_TRUE(number.has_value()) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(*number), std::bit_cast<std::uint64_t>(standard))
            << text;
    }
}

std::string printed(const char* format, double number)
{
    char text[400];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

} // namespace

TEST(Numbers, FormsOfTheFormatAreReadAsTheStandardLibraryReadsThem)
{
    for (const char* text : {"0",
                             "-0",
                             "-5",
                             "0.5",
                             "-.5",
                             ".25",
                             "5.",
                             "1e-05",
                             "1e-005",
                             "1E+5",
                             "1e+20",
                             "1e20",
                             "6.9388939039072284e-18",
                             "0.80000001",
                             "123456789012345678901234567890",
                             "0.33333333333333331",
                             "2.2250738585072011e-308",
                             "4.9406564584124654e-324",
                             "1.7976931348623157e+308",
                             "9007199254740992",
                             "9007199254740993",
                             "9007199254740993.0",
                             "0.00000000000000000000000000000123",
                             "1234567.12345678",
                             "12345678.5",
                             "1.2345678901234567",
                             "1e0022",
                             "1e-22",
                             "1e23",
                             "1e-23",
                             "99999999.99999999",
                             "0.1234567890123456",
                             "0.12345678901234567",
                             "7.0000000000000000000000000001e-3"}) {
        expectAsStandard(text);
    }
}

TEST(Numbers, WhatExceedsTheRangeIsInfiniteOrZero)
{
    EXPECT_EQ(doubleOf("1e400", kRoom), std::numeric_limits<double>::infinity());
    EXPECT_EQ(doubleOf("-1e400", kRoom), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(doubleOf("1e-400", kRoom), 0.0);
}

TEST(Numbers, TwoMillionRandomTextsAreRoundedCorrectly)
{
    std::mt19937_64 random(20181121);
    std::uniform_real_distribution<double> small(-1, 1);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 500000; ++i) {
        const double number = small(random) * std::pow(10, exponent(random));
        expectAsStandard(printed("%.9g", number));
        expectAsStandard(printed("%.17g", number));
        expectAsStandard(printed("%.12f", small(random) * 1000));
        // Any bits of a double; nan and infinity have no decimal text.
        const double any = std::bit_cast<double>(random());
        if (std::isfinite(any)) {
            expectAsStandard(printed("%.16e", any));
        }
    }
}

TEST(Numbers, RandomRunsOfDigitsAreRoundedCorrectly)
{
    std::mt19937 random(7);
    for (int i = 0; i < 300000; ++i) {
        std::string text = random() % 2 == 0 ? "-" : "";
        const auto whole = random() % 12;
        const auto places = random() % 22;
        for (auto k = 0 * whole; k < whole; ++k) {
            text += static_cast<char>('0' + random() % 10);
        }
        text += whole == 0 || random() % 4 != 0 ? "." : "";
        for (auto k = 0 * places; k < places + (whole == 0 ? 1 : 0); ++k) {
            text += static_cast<char>('0' + random() % 10);
        }
        if (random() % 3 == 0) {
            text += "e" + std::to_string(static_cast<int>(random() % 80) - 40);
        }
        expectAsStandard(text);
    }
}

TEST(Numbers, WhatIsNoNumberIsNotRead)
{
    for (const char* text : {"-", ".", "e5", "-e5", "abc", "nan", "-inf", "--1", "+1"}) {
        EXPECT_FALSE(doubleOf(text, kRoom).has_value()) << text;
        EXPECT_FALSE(doubleOf(text, kNothing).has_value()) << text;
    }
}

TEST(Numbers, AnExponentWithoutDigitsEndsTheNumberBeforeIt)
{
    const std::string bytes = "1.5e" + kRoom;
    double number = 0;
    const char* const end = readDouble(bytes.data(), bytes.data() + bytes.size(), number);
    EXPECT_EQ(number, 1.5);
    EXPECT_EQ(end - bytes.data(), 3);
}

TEST(Numbers, IntegersAreReadWithTheirSign)
{
    for (const std::int64_t value : {0, 1, -1, 42, -9999999, 12345678, 123456789, -2147483647}) {
        for (const std::string& behind : {kRoom, kNothing}) {
            const std::string text = std::to_string(value);
            const std::string bytes = text + behind;
            std::int64_t number = 99;
            const char* const end = readInteger(bytes.data(), bytes.data() + bytes.size(), number);
            ASSERT_EQ(end, bytes.data() + text.size());
            EXPECT_EQ(number, value);
        }
    }
}

TEST(Numbers, IntegersOfMoreThanFifteenDigitsAreLeftToTheSlowWay)
{
    std::int64_t number = 0;
    const std::string text = "1234567890123456 ";
    EXPECT_EQ(readInteger(text.data(), text.data() + text.size(), number), nullptr);
}

TEST(Numbers, WordsOfNonFiniteNumbers)
{
    for (const char* word : {"nan", "-nan", "NaN", "nan(ind)", "-nan(ind)", "1.#QNAN", "-1.#QNAN",
                             "1.#QNAN00", "1.#SNAN", "-1.#IND", "-1.#IND000", "1.#IND"}) {
        const auto number = numberOfWord(word);
        ASSERT_TRUE(number.has_value()) << word;
        EXPECT_TRUE(std::isnan(*number)) << word;
    }
    for (const char* word : {"inf", "INF", "1.#INF", "1.#INF00", "infinity", "+inf"}) {
        EXPECT_EQ(numberOfWord(word), std::numeric_limits<double>::infinity()) << word;
    }
    EXPECT_EQ(numberOfWord("-inf"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(numberOfWord("-1.#INF"), -std::numeric_limits<double>::infinity());
}

TEST(Numbers, BooleanWordsHexadecimalAndPlusSignsAreNumbers)
{
    EXPECT_EQ(numberOfWord("yes"), 1.0);
    EXPECT_EQ(numberOfWord("no"), 0.0);
    EXPECT_EQ(numberOfWord("on"), 1.0);
    EXPECT_EQ(numberOfWord("off"), 0.0);
    EXPECT_EQ(numberOfWord("true"), 1.0);
    EXPECT_EQ(numberOfWord("false"), 0.0);
    EXPECT_EQ(numberOfWord("0x1F"), 31.0);
    EXPECT_EQ(numberOfWord("-0x10"), -16.0);
    EXPECT_EQ(numberOfWord("+2.5"), 2.5);
    for (const char* word : {"", "-", "+", "+-1", "maybe", "1.2.3", "0x", "0xG", "1,2", "5abc"}) {
        EXPECT_FALSE(numberOfWord(word).has_value()) << word;
    }
}

TEST(Numbers, IntegersOfDoublesClampAndCutTheFraction)
{
    EXPECT_EQ(toInt32(1.9), 1);
    EXPECT_EQ(toInt32(-1.9), -1);
    EXPECT_EQ(toInt32(1e20), 2147483647);
    EXPECT_EQ(toInt32(-1e20), -2147483647 - 1);
    EXPECT_EQ(toInt32(std::numeric_limits<double>::quiet_NaN()), 0);
}
