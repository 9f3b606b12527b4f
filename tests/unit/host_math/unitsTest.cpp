#include "host/math/units.h"
#include "host/math/camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host {
namespace {

TEST(Units, LinearUnitsAreFoundByBothNames)
{
    struct Row {
        const char* shortName;
        const char* longName;
        double centimetres;
    };
    // The inch is 2.54 cm by definition; foot, yard and mile are 12, 36 and 63360 of them.
    const Row rows[] = {{"mm", "millimeter", 0.1}, {"cm", "centimeter", 1}, {"m", "meter", 100},
                        {"km", "kilometer", 1e5},  {"in", "inch", 2.54},    {"ft", "foot", 30.48},
                        {"yd", "yard", 91.44},     {"mi", "mile", 160934.4}};
    for (const Row& row : rows) {
        for (const char* name : {row.shortName, row.longName}) {
            const auto unit = findLinearUnit(name);
            ASSERT_TRUE(unit) << name;
            EXPECT_EQ(unit->shortName, row.shortName);
            EXPECT_EQ(unit->longName, row.longName);
            EXPECT_DOUBLE_EQ(unit->centimetres, row.centimetres);
        }
    }
    EXPECT_FALSE(findLinearUnit("parsec"));
    EXPECT_FALSE(findLinearUnit(""));
}

TEST(Units, AnglesAreRadians)
{
    EXPECT_DOUBLE_EQ(findAngularUnit("deg").value() * 180, std::numbers::pi);
    EXPECT_DOUBLE_EQ(findAngularUnit("degree").value() * 180, std::numbers::pi);
    EXPECT_EQ(findAngularUnit("rad").value(), 1);
    EXPECT_EQ(findAngularUnit("radian").value(), 1);
    EXPECT_DOUBLE_EQ(findAngularUnit("min").value() * 60, findAngularUnit("deg").value());
    EXPECT_DOUBLE_EQ(findAngularUnit("sec").value() * 3600, findAngularUnit("deg").value());
    EXPECT_FALSE(findAngularUnit("turn"));
}

TEST(Units, NamedRatesAreWholeTicks)
{
    struct Row {
        const char* name;
        double ticks;
    };
    const Row rows[] = {
        {"game", 9408000},    {"film", 5880000},        {"pal", 5644800},
        {"ntsc", 4704000},    {"show", 2940000},        {"palf", 2822400},
        {"ntscf", 2352000},   {"23.976fps", 5885880},   {"29.97fps", 4708704},
        {"29.97df", 4708704}, {"47.952fps", 2942940},   {"59.94fps", 2354352},
        {"44100fps", 3200},   {"48000fps", 2940},       {"sec", 141120000},
        {"millisec", 141120}, {"min", 60 * 141120000.}, {"hour", 3600 * 141120000.}};
    for (const Row& row : rows) {
        const auto ticks = findTimeUnit(row.name);
        ASSERT_TRUE(ticks) << row.name;
        EXPECT_EQ(*ticks, row.ticks) << row.name;
    }
}

TEST(Units, AnyNumberBeforeFpsIsARate)
{
    for (const int rate : {2,   3,   4,   5,   6,    8,    10,   12,   16,   20,   40,   75,
                           80,  90,  100, 120, 125,  150,  200,  240,  250,  300,  375,  400,
                           500, 600, 625, 750, 1000, 1200, 1250, 1500, 1750, 2000, 3000, 6000}) {
        const auto ticks = findTimeUnit(std::to_string(rate) + "fps");
        ASSERT_TRUE(ticks) << rate;
        EXPECT_DOUBLE_EQ(*ticks * rate, 141120000.0);
    }
    EXPECT_DOUBLE_EQ(findTimeUnit("12.5fps").value(), 11289600);
}

TEST(Units, UnknownWordsAndRatesOutOfRangeAreNoUnit)
{
    for (const char* name : {"", "fps", "films", "0fps", "-24fps", "1000001fps", "24 fps", "x24fps",
                             "24xfps", "nanfps", "inffps", "1e999fps", "24"}) {
        EXPECT_FALSE(findTimeUnit(name)) << name;
    }
    EXPECT_TRUE(findTimeUnit("1000000fps"));
}

TEST(Camera, DefaultFilmBackSees54Point432223Degrees)
{
    const double degrees = horizontalFieldOfView(1.41732283464567, 35) * 180 / std::numbers::pi;
    EXPECT_NEAR(degrees, 54.432223, 5e-7); // 36 mm film behind 35 mm
}

TEST(Camera, FilmAsWideAsTwiceTheFocalLengthSeesARightAngle)
{
    EXPECT_DOUBLE_EQ(horizontalFieldOfView(2, 25.4), std::numbers::pi / 2);
}

TEST(Camera, FocalLengthOfZeroDoesNotFail)
{
    EXPECT_DOUBLE_EQ(horizontalFieldOfView(1, 0), std::numbers::pi);
    EXPECT_TRUE(std::isfinite(horizontalFieldOfView(0, 0)));
}

} // namespace
} // namespace host
