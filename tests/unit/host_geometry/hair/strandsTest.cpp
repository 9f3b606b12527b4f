#include "host/geometry/hair/strands.h"

#include "host/geometry/hair/HairSpine.h"
#include "host/geometry/hair/hairRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace host::geometry {
namespace {

using Points = std::vector<Vec3d>;

/// A bent guide on a ground that looks along y.
HairGuide bentGuide()
{
    HairGuide guide;
    guide.points = {{1, 0, 0}, {1, 1, 0}, {2, 2, 0}, {4, 2, 1}};
    guide.normal = {0, 1, 0};
    guide.tangent = {1, 0, 0};
    return guide;
}

/// A straight guide along y, 4 long.
HairGuide straightGuide()
{
    HairGuide guide;
    guide.points = {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}, {0, 3, 0}, {0, 4, 0}};
    guide.normal = {0, 1, 0};
    guide.tangent = {1, 0, 0};
    return guide;
}

/// One hair, nothing random.
HairStyle plainStyle()
{
    HairStyle style;
    style.hairsPerClump = 1;
    style.clumpWidth = 0;
    return style;
}

Ramp<double> falling(double root, double tip)
{
    return Ramp<double>({{0, root, RampBlend::Linear}, {1, tip, RampBlend::Linear}});
}

Strands strandsOf(const HairStyle& style, const HairGuide& guide)
{
    return makeStrands(style, std::span<const HairGuide>(&guide, 1));
}

void expectNear(const Vec3d& value, const Vec3d& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(value.x, expected.x, tolerance);
    EXPECT_NEAR(value.y, expected.y, tolerance);
    EXPECT_NEAR(value.z, expected.z, tolerance);
}

TEST(Strands, OneHairWithoutWidthIsExactlyTheGuide)
{
    const Strands strands = strandsOf(plainStyle(), bentGuide());
    ASSERT_EQ(strands.lines.main.size(), 1U);
    EXPECT_EQ(strands.lines.main[0].points, bentGuide().points);
    EXPECT_TRUE(strands.lines.leaves.empty());
    EXPECT_TRUE(strands.lines.flowers.empty());
    EXPECT_FALSE(strands.isRandom);
    EXPECT_FALSE(strands.isLimited);
}

// Five points: a ramp from 1 to 0.2 is 1 0.8 0.6 0.4 0.2 at them.
TEST(Strands, ScaleWidthsFromRootToTip)
{
    HairStyle style = plainStyle();
    style.hairWidth = 0.5;
    style.hairWidthScale = falling(1, 0.2);
    const Strands strands = strandsOf(style, straightGuide());
    ASSERT_EQ(strands.lines.main.size(), 1U);
    const std::array<double, 5> expected{0.5, 0.4, 0.3, 0.2, 0.1};
    ASSERT_EQ(strands.lines.main[0].widths.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(strands.lines.main[0].widths[i], expected[i], 1e-15);
    }
}

// The system's (0.8 0.4 0.2) and a quarter of the follicle's (0 0 1) are (0.6 0.3 0.4); the ramp
// runs from (0.5 1 1) to (1 0 1).
TEST(Strands, ScaleColorsFromRootToTip)
{
    HairStyle style = plainStyle();
    style.color = {0.8, 0.4, 0.2};
    style.colorScale =
        Ramp<Vec3d>({{0, {0.5, 1, 1}, RampBlend::Linear}, {1, {1, 0, 1}, RampBlend::Linear}});
    HairGuide guide = straightGuide();
    guide.colorBlend = 0.25;
    guide.color = {0, 0, 1};
    const Strands strands = strandsOf(style, guide);
    ASSERT_EQ(strands.lines.main.size(), 1U);
    const std::vector<Vec3d>& colors = strands.lines.main[0].colors;
    ASSERT_EQ(colors.size(), 5U);
    expectNear(colors[0], {0.3, 0.3, 0.4});
    expectNear(colors[2], {0.45, 0.15, 0.4});
    expectNear(colors[4], {0.6, 0, 0.4});
}

// A straight clump along y of radius 2 at the root and 0.5 at the tip. Every hair keeps its share
// and its direction, so that its tip is a quarter as far out as its root; on the average of many
// the share's square is a half.
TEST(Strands, SpreadAcrossTheClump)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 4000;
    style.clumpWidth = 2;
    style.clumpWidthScale = falling(1, 0.25);
    const Strands strands = strandsOf(style, straightGuide());
    ASSERT_EQ(strands.lines.main.size(), 4000U);
    EXPECT_TRUE(strands.isRandom);
    double squares = 0;
    Vec3d middle;
    for (const RenderLine& line : strands.lines.main) {
        ASSERT_EQ(line.points.size(), 5U);
        for (std::size_t i = 0; i < 5; ++i) {
            const double radius = 2 - 1.5 * static_cast<double>(i) / 4;
            EXPECT_NEAR(line.points[i].y, static_cast<double>(i), 1e-12);
            EXPECT_LE(std::hypot(line.points[i].x, line.points[i].z), radius * (1 + 1e-12));
        }
        expectNear({line.points[4].x, 0, line.points[4].z},
                   {line.points[0].x / 4, 0, line.points[0].z / 4});
        squares += dot(line.points[0], line.points[0]) / 4;
        middle = middle + line.points[0];
    }
    EXPECT_NEAR(squares / 4000, 0.5, 0.02);
    EXPECT_LT(length(middle) / 4000, 0.1);
}

TEST(Strands, StayWithinTheClumpOfABentGuide)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 500;
    style.clumpWidth = 0.4;
    style.clumpWidthScale = falling(1, 0.5);
    style.clumpTwist = 0.3;
    for (const double bendFollow : {0.0, 0.4, 1.0}) {
        style.bendFollow = bendFollow;
        const Strands strands = strandsOf(style, bentGuide());
        ASSERT_EQ(strands.lines.main.size(), 500U);
        for (const RenderLine& line : strands.lines.main) {
            for (std::size_t i = 0; i < 4; ++i) {
                const double radius = 0.4 * (1 - 0.5 * static_cast<double>(i) / 3);
                EXPECT_LE(length(line.points[i] - bentGuide().points[i]), radius * (1 + 1e-12));
            }
        }
    }
}

// With bendFollow 0 the sections stay at right angles to the normal, here y; with 1 to the hair.
TEST(Strands, FollowTheBendAsFarAsTheyShould)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 20;
    style.clumpWidth = 1;
    style.bendFollow = 0;
    for (const RenderLine& line : strandsOf(style, bentGuide()).lines.main) {
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(line.points[i].y, bentGuide().points[i].y, 1e-12);
        }
    }
    style.bendFollow = 1;
    const Vec3d lastSegment{2, 0, 1};
    for (const RenderLine& line : strandsOf(style, bentGuide()).lines.main) {
        EXPECT_NEAR(dot(line.points[3] - bentGuide().points[3], lastSegment), 0, 1e-12);
    }
}

// A quarter of a turn about y takes (x z) to (-z x) or back: the same hairs, turned.
TEST(Strands, TwistAboutTheCentre)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 10;
    style.clumpWidth = 1;
    const Strands straight = strandsOf(style, straightGuide());
    style.clumpTwist = 0.25;
    const Strands twisted = strandsOf(style, straightGuide());
    style.clumpTwist = 0;
    HairGuide offset = straightGuide();
    offset.clumpTwistOffset = 0.25;
    const Strands twistedByFollicle = strandsOf(style, offset);
    for (std::size_t hair = 0; hair < 10; ++hair) {
        const Vec3d& before = straight.lines.main[hair].points[2];
        const Vec3d& after = twisted.lines.main[hair].points[2];
        // Along x and across -z at the root (across = normal x tangent).
        expectNear(after, {before.z, before.y, -before.x});
        EXPECT_EQ(twistedByFollicle.lines.main[hair].points, twisted.lines.main[hair].points);
    }
}

// The clump's curl at 1 turns at two turns per length: a quarter of the way is half a turn.
TEST(Strands, CurlTheClump)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 5;
    style.clumpWidth = 1;
    const Strands straight = strandsOf(style, straightGuide());
    style.clumpCurl = Ramp<double>({{0, 1, RampBlend::Linear}});
    const Strands curled = strandsOf(style, straightGuide());
    style.clumpCurl = Ramp<double>({{0, 0.5, RampBlend::Linear}});
    const Strands level = strandsOf(style, straightGuide());
    for (std::size_t hair = 0; hair < 5; ++hair) {
        const Vec3d& before = straight.lines.main[hair].points[2];
        const Vec3d& after = curled.lines.main[hair].points[2];
        expectNear(after, {-before.x, before.y, -before.z});
        EXPECT_EQ(curled.lines.main[hair].points[0], straight.lines.main[hair].points[0]);
        EXPECT_EQ(level.lines.main[hair].points, straight.lines.main[hair].points);
    }
}

TEST(Strands, FlattenTheClump)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 50;
    style.clumpWidth = 1;
    style.clumpFlatness = Ramp<double>({{0, 1, RampBlend::Linear}});
    double widest = 0;
    for (const RenderLine& line : strandsOf(style, straightGuide()).lines.main) {
        EXPECT_NEAR(line.points[1].z, 0, 1e-12); // flat along the tangent, x
        widest = std::max(widest, std::fabs(line.points[1].x));
    }
    EXPECT_GT(widest, 0.5);
}

TEST(Strands, ObeyTheFollicle)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 10;
    style.clumpWidth = 1;
    HairGuide guide = straightGuide();
    guide.densityFactor = 0.25; // 2.5 hairs
    EXPECT_EQ(strandsOf(style, guide).lines.main.size(), 3U);
    style.baldness = 0.4; // 1 hair
    EXPECT_EQ(strandsOf(style, guide).lines.main.size(), 1U);
    guide.densityFactor = 0;
    EXPECT_TRUE(strandsOf(style, guide).lines.main.empty());

    style.baldness = 1;
    guide.densityFactor = 1;
    guide.clumpWidthFactor = 0;
    EXPECT_EQ(strandsOf(style, guide).lines.main[7].points, guide.points);
    guide.clumpWidthFactor = 1;
    const Strands before = strandsOf(style, guide);
    guide.clumpWidth = 3;
    guide.clumpWidthScale = falling(2, 0);
    const Strands after = strandsOf(style, guide);
    const RenderLine& was = before.lines.main[4];
    const RenderLine& is = after.lines.main[4];
    expectNear(is.points[0], was.points[0] * 6);
    expectNear(is.points[4], guide.points[4]);
}

// Hermite curves through points of a straight line at even distances are that line; with a root
// that leaves along x at the segment's length, a third of the way is
// (0 1 0) * (3/9 - 2/27) + (1 0 0) * (1/3 * 4/9) - (0 1 0) * (1/9 * 2/3).
TEST(Strands, PutSegmentsInBetween)
{
    HairStyle style = plainStyle();
    style.subSegments = 2;
    HairGuide guide;
    guide.points = {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}};
    Strands strands = strandsOf(style, guide);
    ASSERT_EQ(strands.lines.main.size(), 1U);
    ASSERT_EQ(strands.lines.main[0].points.size(), 7U);
    for (std::size_t i = 0; i < 7; ++i) {
        expectNear(strands.lines.main[0].points[i], {0, static_cast<double>(i) / 3, 0});
    }
    guide.normal = {2, 0, 0};
    guide.isAlongNormal = true;
    strands = strandsOf(style, guide);
    expectNear(strands.lines.main[0].points[1], {4.0 / 27, 9.0 / 27 - 2.0 / 27 - 2.0 / 27, 0});
    expectNear(strands.lines.main[0].points[3], {0, 1, 0});
}

// Of many hairs about the wanted share is shorter; those follow the guide as far as they go and
// have the ramp of widths over their own length.
TEST(Strands, ThinOut)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 2000;
    style.thinning = 0.3;
    style.hairWidthScale = falling(1, 0);
    const Strands strands = strandsOf(style, straightGuide());
    EXPECT_TRUE(strands.isRandom);
    std::size_t shorter = 0;
    for (const RenderLine& line : strands.lines.main) {
        shorter += line.points[4].y < 4 ? 1 : 0;
        expectNear(line.points[2], {0, line.points[4].y / 2, 0});
        EXPECT_EQ(line.widths[4], 0);
    }
    EXPECT_NEAR(static_cast<double>(shorter) / 2000, 0.3, 0.04);
}

// Curl is a circle about the hair of curl * curlMult * hairWidth * displacementScale.
TEST(Strands, CurlAndMakeNoise)
{
    HairStyle style = plainStyle();
    style.hairWidth = 0.5;
    style.curl = 3;
    style.curlFrequency = 1;
    style.displacementScale = falling(1, 0);
    HairGuide guide = straightGuide();
    guide.curlFactor = 2;
    RenderLine line = strandsOf(style, guide).lines.main.at(0);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(std::hypot(line.points[i].x, line.points[i].z),
                    3 * (1 - static_cast<double>(i) / 4), 1e-12);
    }
    expectNear(line.points[2] - guide.points[2], (line.points[0] - guide.points[0]) * -0.5);

    style.curl = 0;
    style.noise = 2;
    style.displacementScale = {};
    line = strandsOf(style, guide).lines.main.at(0);
    bool isMoved = false;
    for (std::size_t i = 0; i < 5; ++i) {
        const Vec3d offset = line.points[i] - guide.points[i];
        EXPECT_LE(std::fabs(offset.x), 1);
        EXPECT_LE(std::fabs(offset.z), 1);
        isMoved = isMoved || std::hypot(offset.x, offset.z) > 0.01;
    }
    EXPECT_TRUE(isMoved);
}

// diffuseRandom darkens by up to itself; brightness moves by up to half of its setting; hue and
// saturation keep the greatest part of a colour.
TEST(Strands, RandomizeColors)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 300;
    style.color = {0.5, 0.25, 0.125};
    style.diffuseRandom = 0.4;
    double darkest = 1;
    for (const RenderLine& line : strandsOf(style, straightGuide()).lines.main) {
        const double factor = line.colors[0].x / 0.5;
        expectNear(line.colors[0], style.color * factor);
        EXPECT_EQ(line.colors[4], line.colors[0]);
        EXPECT_GT(factor, 0.6 - 1e-12);
        EXPECT_LE(factor, 1);
        darkest = std::min(darkest, factor);
    }
    EXPECT_LT(darkest, 0.63);

    style.diffuseRandom = 0;
    style.brightnessRandom = 0.2;
    for (const RenderLine& line : strandsOf(style, straightGuide()).lines.main) {
        EXPECT_NEAR(line.colors[0].x, 0.5, 0.1 + 1e-12);
        EXPECT_NEAR(line.colors[0].y, line.colors[0].x / 2, 1e-12);
    }
    style.brightnessRandom = 0;
    style.hueRandom = 1;
    double bluest = 0;
    for (const RenderLine& line : strandsOf(style, straightGuide()).lines.main) {
        const Vec3d& color = line.colors[0];
        EXPECT_NEAR(std::max({color.x, color.y, color.z}), 0.5, 1e-12);
        EXPECT_NEAR(std::min({color.x, color.y, color.z}), 0.125, 1e-12);
        bluest = std::max(bluest, color.z);
    }
    EXPECT_NEAR(bluest, 0.5, 1e-12);
}

TEST(Strands, AreTheSameForTheSameNumbers)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 3;
    style.clumpWidth = 1;
    HairGuide guide = straightGuide();
    guide.number = 7;
    std::vector<HairGuide> both{straightGuide(), guide};
    const Strands together = makeStrands(style, both);
    const Strands alone = strandsOf(style, guide);
    ASSERT_EQ(together.lines.main.size(), 6U);
    for (std::size_t hair = 0; hair < 3; ++hair) {
        EXPECT_EQ(together.lines.main[3 + hair].points, alone.lines.main[hair].points);
        EXPECT_NE(together.lines.main[hair].points, alone.lines.main[hair].points);
    }
    style.seed = 1;
    EXPECT_NE(strandsOf(style, guide).lines.main[0].points, alone.lines.main[0].points);
}

// The first number of SplitMix64 with the state 0 is published as e220a8397b1dcdaf.
TEST(HairRandom, IsSplitMix)
{
    EXPECT_EQ(scrambled(0), 0xe220a8397b1dcdafU);
    double sum = 0;
    for (std::uint32_t hair = 0; hair < 1000; ++hair) {
        const double number = hairRandom({0, 1, hair}, HairPurpose::Length);
        EXPECT_GE(number, 0);
        EXPECT_LT(number, 1);
        sum += number;
    }
    EXPECT_NEAR(sum / 1000, 0.5, 0.05);
}

TEST(Strands, AreLimited)
{
    HairStyle style = plainStyle();
    style.hairsPerClump = 1e9;
    const HairGuide guide = straightGuide();
    Strands strands = strandsOf(style, guide);
    EXPECT_TRUE(strands.isLimited);      // 4000000 / 5 points for 800000 hairs,
    EXPECT_TRUE(strands.isClumpLimited); // and no clump has so many
    EXPECT_FALSE(strands.isHairLimited);
    EXPECT_EQ(strands.lines.main.size(), kMaxHairsPerClump);

    // 300 hairs of 5 points for each of 10 clumps; there is room for a fifth of them.
    style.hairsPerClump = 300;
    const std::vector<HairGuide> many(10, guide);
    strands = makeStrands(style, many, 3000);
    EXPECT_TRUE(strands.isLimited);
    EXPECT_EQ(strands.lines.main.size(), 600U);
    EXPECT_EQ(makeStrands(style, many, 20).lines.main.size(), 4U); // room for four hairs
    EXPECT_FALSE(makeStrands(style, many, 15000).isLimited);
    EXPECT_FALSE(makeStrands(style, many, 15000).isClumpLimited);
    style.hairsPerClump = kMaxHairsPerClump + 1; // 500005 points
    EXPECT_FALSE(strandsOf(style, guide).isLimited);
    EXPECT_TRUE(strandsOf(style, guide).isClumpLimited);
    style.hairsPerClump = 1;
    style.subSegments = 100;
    EXPECT_FALSE(strandsOf(style, guide).isHairLimited);
    style.subSegments = 101;
    EXPECT_TRUE(strandsOf(style, guide).isHairLimited);
    style.subSegments = 0;
    HairGuide fine = guide;
    fine.points.clear();
    for (int i = 0; i < 4096; ++i) { // as many as are made of a curve
        fine.points.push_back({0, static_cast<double>(i), 0});
    }
    EXPECT_TRUE(strandsOf(style, fine).isHairLimited);
    fine.points.pop_back();
    EXPECT_FALSE(strandsOf(style, fine).isHairLimited);

    style.hairsPerClump = 1;
    style.subSegments = 1e9;
    strands = strandsOf(style, guide);
    EXPECT_EQ(strands.lines.main.at(0).points.size(),
              4 * (static_cast<std::size_t>(kMaxSubSegments) + 1) + 1);
}

TEST(Strands, LeaveOutWhatIsNoNumber)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    HairGuide broken = straightGuide();
    broken.points[2].x = nan;
    HairGuide single = straightGuide();
    single.points.resize(1);
    HairGuide still = straightGuide();
    still.points = Points(3, Vec3d{1, 2, 3});
    still.normal = still.tangent = {};
    const std::vector<HairGuide> guides{broken, single, straightGuide(), still};
    const Strands strands = makeStrands(plainStyle(), guides);
    ASSERT_EQ(strands.lines.main.size(), 2U);
    EXPECT_EQ(strands.lines.main[0].points, straightGuide().points);
    EXPECT_EQ(strands.lines.main[1].points, still.points);

    HairStyle style = plainStyle();
    style.clumpWidth = infinity;
    style.bendFollow = style.clumpTwist = style.subSegments = style.diffuseRandom = nan;
    style.hairWidthScale = falling(nan, 1);
    EXPECT_TRUE(strandsOf(style, straightGuide()).lines.main.empty());
    style.hairWidthScale = {};
    EXPECT_EQ(strandsOf(style, straightGuide()).lines.main.size(), 1U);
    style.hairsPerClump = -5;
    EXPECT_TRUE(strandsOf(style, straightGuide()).lines.main.empty());
}

} // namespace
} // namespace host::geometry
