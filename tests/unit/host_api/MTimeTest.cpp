#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

constexpr double kTicks = 141120000; // a second

struct UnitCase {
    MTime::Unit unit;
    int number;
    double ticks;
};

// Every unit: its number, and a second's ticks over its rate.
constexpr UnitCase kUnits[] = {
    {MTime::kHours, 1, kTicks * 3600},    {MTime::kMinutes, 2, kTicks * 60},
    {MTime::kSeconds, 3, kTicks},         {MTime::kMilliseconds, 4, 141120},
    {MTime::kGames, 5, 9408000},          {MTime::kFilm, 6, 5880000},
    {MTime::kPALFrame, 7, 5644800},       {MTime::kNTSCFrame, 8, 4704000},
    {MTime::kShowScan, 9, 2940000},       {MTime::kPALField, 10, 2822400},
    {MTime::kNTSCField, 11, 2352000},     {MTime::k2FPS, 12, kTicks / 2},
    {MTime::k3FPS, 13, kTicks / 3},       {MTime::k4FPS, 14, kTicks / 4},
    {MTime::k5FPS, 15, kTicks / 5},       {MTime::k6FPS, 16, kTicks / 6},
    {MTime::k8FPS, 17, kTicks / 8},       {MTime::k10FPS, 18, kTicks / 10},
    {MTime::k12FPS, 19, kTicks / 12},     {MTime::k16FPS, 20, kTicks / 16},
    {MTime::k20FPS, 21, kTicks / 20},     {MTime::k40FPS, 22, kTicks / 40},
    {MTime::k75FPS, 23, kTicks / 75},     {MTime::k80FPS, 24, kTicks / 80},
    {MTime::k100FPS, 25, kTicks / 100},   {MTime::k120FPS, 26, kTicks / 120},
    {MTime::k125FPS, 27, kTicks / 125},   {MTime::k150FPS, 28, kTicks / 150},
    {MTime::k200FPS, 29, kTicks / 200},   {MTime::k240FPS, 30, kTicks / 240},
    {MTime::k250FPS, 31, kTicks / 250},   {MTime::k300FPS, 32, kTicks / 300},
    {MTime::k375FPS, 33, kTicks / 375},   {MTime::k400FPS, 34, kTicks / 400},
    {MTime::k500FPS, 35, kTicks / 500},   {MTime::k600FPS, 36, kTicks / 600},
    {MTime::k750FPS, 37, kTicks / 750},   {MTime::k1200FPS, 38, kTicks / 1200},
    {MTime::k1500FPS, 39, kTicks / 1500}, {MTime::k2000FPS, 40, kTicks / 2000},
    {MTime::k3000FPS, 41, kTicks / 3000}, {MTime::k6000FPS, 42, kTicks / 6000},
    {MTime::k23_976FPS, 43, 5885880},                                       // 1001 / 24000 s
    {MTime::k29_97FPS, 44, 4708704},                                        // 1001 / 30000 s
    {MTime::k29_97DF, 45, 4708704},       {MTime::k47_952FPS, 46, 2942940}, // 1001 / 48000 s
    {MTime::k59_94FPS, 47, 2354352},                                        // 1001 / 60000 s
    {MTime::k44100FPS, 48, 3200},         {MTime::k48000FPS, 49, 2940},
};

TEST(MTime, MeasuresEveryUnitInWholeTicks)
{
    EXPECT_EQ(MTime::ticksPerSecond(), 141120000);
    int number = 0;
    for (const UnitCase& row : kUnits) {
        EXPECT_EQ(row.unit, ++number);
        EXPECT_EQ(row.unit, row.number);
        EXPECT_EQ(row.ticks, std::floor(row.ticks)) << row.number;
        const MTime one(1, row.unit);
        EXPECT_EQ(one.as(MTime::kSeconds), row.ticks / kTicks) << row.number;
        EXPECT_EQ(one.value(), 1) << row.number;
        EXPECT_EQ(MTime(row.ticks / 3200, MTime::k44100FPS).as(row.unit), 1) << row.number;
    }
    EXPECT_EQ(number, 49);
}

TEST(MTime, NamesRatesTwice)
{
    EXPECT_EQ(MTime::k15FPS, MTime::kGames);
    EXPECT_EQ(MTime::k24FPS, MTime::kFilm);
    EXPECT_EQ(MTime::k25FPS, MTime::kPALFrame);
    EXPECT_EQ(MTime::k30FPS, MTime::kNTSCFrame);
    EXPECT_EQ(MTime::k48FPS, MTime::kShowScan);
    EXPECT_EQ(MTime::k50FPS, MTime::kPALField);
    EXPECT_EQ(MTime::k60FPS, MTime::kNTSCField);
    EXPECT_EQ(MTime::kUserDef, 50);
    EXPECT_EQ(MTime::kLast, 51);
}

TEST(MTime, GivesThreeFramesOfFilmAs125Milliseconds)
{
    EXPECT_EQ(MTime(3, MTime::kFilm).as(MTime::kMilliseconds), 125.0);
}

TEST(MTime, TruncatesFramesOfFilmTo0_41_83_125)
{
    constexpr int kExpected[] = {0, 41, 83, 125, 166, 208, 250};
    MTime time(0, MTime::kFilm);
    for (const int expected : kExpected) {
        EXPECT_EQ(static_cast<int>(time.as(MTime::kMilliseconds)), expected);
        ++time;
    }
}

TEST(MTime, IsFilmByDefaultAndBeforeAScene)
{
    EXPECT_EQ(MTime().unit(), MTime::kFilm);
    EXPECT_EQ(MTime().value(), 0);
    EXPECT_EQ(MTime(5).unit(), MTime::kFilm);
    EXPECT_EQ(MTime::uiUnit(), MTime::kFilm);
}

TEST(MTime, RoundsToTheNearestTick)
{
    // A third of a tick and two thirds, in units of 1/48000 s of 2940 ticks.
    EXPECT_EQ(MTime(1 / (3 * 2940.0), MTime::k48000FPS), MTime());
    EXPECT_EQ(MTime(2 / (3 * 2940.0), MTime::k48000FPS), MTime(1 / 2940.0, MTime::k48000FPS));
}

TEST(MTime, KeepsTheNumberWhenTheUnitChanges)
{
    MTime time(12, MTime::kFilm);
    EXPECT_TRUE(time.setUnit(MTime::kSeconds));
    EXPECT_EQ(time.value(), 12);
    EXPECT_EQ(time.as(MTime::kMinutes), 0.2);
    EXPECT_FALSE(time.setUnit(MTime::kInvalid));
    EXPECT_EQ(time.unit(), MTime::kSeconds);
    EXPECT_TRUE(time.setValue(2));
    EXPECT_EQ(time.as(MTime::kFilm), 48);
}

TEST(MTime, KeepsTheLeftUnitInArithmetic)
{
    const MTime seconds(1, MTime::kSeconds);
    const MTime frames(24, MTime::kFilm);
    EXPECT_EQ((seconds + frames).unit(), MTime::kSeconds);
    EXPECT_EQ((seconds + frames).value(), 2);
    EXPECT_EQ((frames - seconds).unit(), MTime::kFilm);
    EXPECT_EQ((frames - seconds).value(), 0);
}

TEST(MTime, CountsNumbersInItsOwnUnit)
{
    MTime time(1, MTime::kSeconds);
    EXPECT_EQ((time + 2.0).as(MTime::kSeconds), 3);
    EXPECT_EQ((time - 0.5).as(MTime::kFilm), 12);
    time += 1.0;
    time -= 0.25;
    EXPECT_EQ(time.value(), 1.75);
    EXPECT_EQ((time * 2).value(), 3.5);
    EXPECT_EQ((time / 7).value(), 0.25);
}

TEST(MTime, StepsByOneUnit)
{
    MTime time(1, MTime::kPALFrame);
    EXPECT_EQ((time++).value(), 1);
    EXPECT_EQ(time.value(), 2);
    EXPECT_EQ((++time).value(), 3);
    EXPECT_EQ((time--).value(), 3);
    EXPECT_EQ((--time).value(), 1);
    EXPECT_EQ(time.as(MTime::kMilliseconds), 40);
}

TEST(MTime, ComparesByMoment)
{
    EXPECT_TRUE(MTime(1, MTime::kSeconds) == MTime(24, MTime::kFilm));
    EXPECT_TRUE(MTime(1, MTime::kSeconds) != MTime(1, MTime::kFilm));
    EXPECT_TRUE(MTime(1, MTime::kSeconds) > MTime(23, MTime::kFilm));
    EXPECT_TRUE(MTime(23, MTime::kFilm) < MTime(1, MTime::kSeconds));
    EXPECT_TRUE(MTime(24, MTime::kFilm) <= MTime(1, MTime::kSeconds));
    EXPECT_TRUE(MTime(24, MTime::kFilm) >= MTime(1, MTime::kSeconds));
}

TEST(MTime, StaysInRangeWithWildNumbers)
{
    const MTime far(1e300, MTime::kHours);
    EXPECT_GT(far, MTime());
    EXPECT_EQ(far + far, far + far + far);
    EXPECT_LT(MTime(-1e300, MTime::kHours) - far, MTime());
    EXPECT_EQ(MTime(std::numeric_limits<double>::quiet_NaN(), MTime::kFilm), MTime());
    EXPECT_EQ(MTime(5, MTime::kInvalid), MTime());
    EXPECT_EQ(MTime(5, MTime::kFilm).as(MTime::kInvalid), 0);
}

TEST(MTime, StreamsItsNumber)
{
    std::ostringstream stream;
    stream << MTime(2.5, MTime::kSeconds);
    EXPECT_EQ(stream.str(), "2.5");
}

} // namespace
