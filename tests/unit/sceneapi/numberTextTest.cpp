// Number text against the C library's printf.
#include "sceneapi/numberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace {

std::string general(double value)
{
    char text[orv::kMaxGeneralText];
    return {text, orv::writeGeneral(text, value)};
}

std::string printed(const char* format, double value)
{
    char text[400];
    return {text, text + std::snprintf(text, sizeof text, format, value)};
}

std::string fixed16(double value)
{
    char text[orv::kMaxFixedText];
    return {text, orv::writeFixed16(text, value)};
}

void compareGeneral(double value)
{
    ASSERT_EQ(general(value), printed("%g", value)) << printed("%a", value);
    ASSERT_EQ(general(-value), printed("%g", -value)) << printed("%a", -value);
}

TEST(GeneralText, EqualsPrintfAtZeroAndTheEndsOfTheRange)
{
    for (const double value :
         {0.0, std::numeric_limits<double>::min(), std::numeric_limits<double>::max(),
          std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::epsilon(),
          static_cast<double>(std::numeric_limits<float>::max()),
          static_cast<double>(std::numeric_limits<float>::denorm_min())}) {
        compareGeneral(value);
    }
}

TEST(GeneralText, SpellsWhatIsNotFinite)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(general(kInfinity), "inf");
    EXPECT_EQ(general(-kInfinity), "-inf");
    EXPECT_EQ(general(std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0)), "nan");
    EXPECT_EQ(general(std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0)), "-nan");
}

TEST(GeneralText, EqualsPrintfAroundPowersOfTen)
{
    for (int exponent = -330; exponent <= 308; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        double below = power;
        double above = power;
        for (int i = 0; i < 20; ++i) {
            compareGeneral(below);
            compareGeneral(above);
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, std::numeric_limits<double>::infinity());
        }
        for (const double factor :
             {0.9999994, 0.9999995, 0.9999996, 0.99999949999, 0.99999950001, 9.99999, 9.999995}) {
            if (std::isfinite(power * factor)) {
                compareGeneral(power * factor);
            }
        }
    }
}

TEST(GeneralText, EqualsPrintfAtHalvesOfTheLastDigit)
{
    // d.ddddd5 and its neighbours, exact halves among them (binary fractions).
    for (int digits = 100000; digits < 1000000; digits += 137) {
        for (const double scale :
             {1e-9, 1e-7, 1e-5, 1e-3, 0.1, 1.0, 0.5, 0.25, 0.125, 0.0625, 0.03125}) {
            const double half = (digits + 0.5) * scale;
            compareGeneral(half);
            compareGeneral(std::nextafter(half, 0.0));
            compareGeneral(std::nextafter(half, 1e300));
        }
    }
}

TEST(GeneralText, EqualsPrintfForFloatsOfAllExponents)
{
    std::mt19937 random(12345);
    for (int i = 0; i < 2000000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isfinite(value)) {
            ASSERT_EQ(general(value), printed("%g", value));
        }
    }
}

TEST(GeneralText, EqualsPrintfForFloatsOfSceneSize)
{
    std::mt19937 random(99);
    std::uniform_real_distribution<float> exponent(-6.0f, 8.0f);
    for (int i = 0; i < 1000000; ++i) {
        const float value = std::pow(10.0f, exponent(random)) * (random() % 2 == 0 ? 1.0f : -1.0f);
        ASSERT_EQ(general(value), printed("%g", value));
    }
}

TEST(GeneralText, EqualsPrintfForDoublesOfAllExponents)
{
    std::mt19937_64 random(54321);
    for (int i = 0; i < 1000000; ++i) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (std::isfinite(value)) {
            ASSERT_EQ(general(value), printed("%g", value));
        }
    }
}

TEST(GeneralText, EqualsPrintfForShortDecimals)
{
    for (int n = 0; n < 1000000; n += 7) {
        compareGeneral(n);
        compareGeneral(n / 10.0);
        compareGeneral(n / 1000.0);
        compareGeneral(n / 1000000.0);
    }
}

TEST(FixedText, EqualsPrintf)
{
    std::mt19937_64 random(777);
    for (int i = 0; i < 200000; ++i) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (std::isfinite(value)) {
            ASSERT_EQ(fixed16(value), printed("%16.16f", value));
        }
    }
    for (int n = -1000; n < 1000; ++n) {
        ASSERT_EQ(fixed16(n / 64.0), printed("%16.16f", n / 64.0));
        ASSERT_EQ(fixed16(n * 1e-17), printed("%16.16f", n * 1e-17));
        ASSERT_EQ(fixed16(n / 7.0), printed("%16.16f", n / 7.0));
    }
    ASSERT_EQ(fixed16(-0.0), "-0.0000000000000000");
    ASSERT_EQ(fixed16(std::numeric_limits<double>::max()),
              printed("%16.16f", std::numeric_limits<double>::max()));
    ASSERT_EQ(fixed16(std::numeric_limits<double>::lowest()),
              printed("%16.16f", std::numeric_limits<double>::lowest()));
}

TEST(FixedText, PadsWhatIsNotFinite)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(fixed16(kInfinity), "             inf");
    EXPECT_EQ(fixed16(-kInfinity), "            -inf");
    EXPECT_EQ(fixed16(std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0)),
              "             nan");
}

TEST(FixedText, WithThreeDecimalsEqualsPrintf)
{
    for (int n = -4000; n <= 4000; ++n) {
        const double value = static_cast<float>(n / 1600.0);
        char text[orv::kMaxFixedText];
        ASSERT_EQ(std::string(text, orv::writeFixed(text, value, 3)), printed("%.3f", value));
    }
}

TEST(IntegerText, CoversItsRange)
{
    const auto text = [](std::int32_t value) {
        char bytes[orv::kMaxIntegerText];
        return std::string(bytes, orv::writeInteger(bytes, value));
    };
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(text(std::numeric_limits<std::int32_t>::max()), "2147483647");
    char bytes[orv::kMaxIntegerText];
    EXPECT_EQ(std::string(bytes, orv::writeUnsigned(bytes, 4294967295u)), "4294967295");
}

} // namespace
