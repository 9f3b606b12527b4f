// Curves of a few keys, with values worked out by hand from the polynomials between keys.
#include "host/geometry/animation/AnimationCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace host::geometry;

constexpr double kInfinite = std::numeric_limits<double>::infinity();
const double kNoNumber = std::nan("");

CurveKey key(double time, double value, TangentType in, TangentType out)
{
    CurveKey made;
    made.time = time;
    made.value = value;
    made.inType = in;
    made.outType = out;
    return made;
}

CurveKey key(double time, double value, TangentType both = TangentType::Linear)
{
    return key(time, value, both, both);
}

/// A key with given vectors.
CurveKey fixed(double time, double value, TangentVector in, TangentVector out)
{
    CurveKey made = key(time, value, TangentType::Fixed);
    made.in = in;
    made.out = out;
    return made;
}

CurveKeys keysOf(std::vector<CurveKey> keys, bool isWeighted = false)
{
    CurveKeys curve;
    curve.keys = std::move(keys);
    curve.isWeighted = isWeighted;
    return curve;
}

TEST(AnimationCurve, IsZeroWithoutKeysAndFlatWithOne)
{
    EXPECT_EQ(AnimationCurve().at(5), 0);
    EXPECT_TRUE(AnimationCurve(keysOf({})).isEmpty());
    CurveKeys one = keysOf({key(2, 7, TangentType::Spline)});
    one.before = InfinityType::Linear;
    one.after = InfinityType::CycleRelative;
    for (const double time : {-100.0, 2.0, 100.0}) {
        EXPECT_EQ(AnimationCurve(one).at(time), 7);
    }
}

TEST(AnimationCurve, RunsStraightBetweenLinearKeys)
{
    const AnimationCurve curve(keysOf({key(0, 0), key(4, 8), key(5, 6)}));
    EXPECT_EQ(curve.at(1), 2);
    EXPECT_EQ(curve.at(4), 8);
    EXPECT_EQ(curve.at(4.5), 7);
    EXPECT_EQ(curve.firstTime(), 0);
    EXPECT_EQ(curve.lastTime(), 5);
}

TEST(AnimationCurve, LeavesAndReachesKeysWithTheirSlopes)
{
    // p(s) = v0 + m0 s + (3 dv - 2 m0 - m1) s^2 + (m0 + m1 - 2 dv) s^3 over 2 units of time, slopes
    // 3 and -1, rise 4: 6 s + (12 - 12 + 2) s^2 + (6 - 2 - 8) s^3. Vectors count by y / x alone.
    const AnimationCurve curve(keysOf({fixed(0, 0, {}, {10, 30}), fixed(2, 4, {0.5, -0.5}, {})}));
    EXPECT_NEAR(curve.at(1), 3 + 0.5 - 0.5, 1e-14);
    EXPECT_NEAR(curve.at(0.5), 1.5 + 2.0 / 16 - 4.0 / 64, 1e-14);
    EXPECT_EQ(curve.at(2), 4);
}

TEST(AnimationCurve, TakesUprightVectorsAsLevel)
{
    const AnimationCurve curve(keysOf({fixed(0, 0, {}, {0, 1}), fixed(1, 1, {0, 1}, {})}));
    EXPECT_EQ(curve.at(0.25), 3.0 / 16 - 2.0 / 64);
}

TEST(AnimationCurve, HoldsOrTakesTheNextValueAtSteps)
{
    const AnimationCurve curve(
        keysOf({key(0, 1, TangentType::Step), key(2, 5, TangentType::StepNext), key(4, 9)}));
    EXPECT_EQ(curve.at(0), 1);
    EXPECT_EQ(curve.at(std::nextafter(2, 0)), 1);
    EXPECT_EQ(curve.at(2), 5);
    EXPECT_EQ(curve.at(std::nextafter(2, 3)), 9);
}

TEST(AnimationCurve, OfWeightedKeysIsABezierCurve)
{
    // Times 0 0 1 1 at the four points: at the middle of the parameter the time is one half. The
    // heights are 0, 0.4, 1 - 0.2 and 1: (0 + 3 * 0.4 + 3 * 0.8 + 1) / 8.
    const AnimationCurve curve(
        keysOf({fixed(0, 0, {}, {0, 1.2}), fixed(1, 1, {0, 0.6}, {})}, true));
    EXPECT_NEAR(curve.at(0.5), 0.575, 1e-14);
    // Parameter 1/4: time 3/16 - 2/64, height 3 * 9/64 * 0.4 + 3 * 3/64 * 0.8 + 1/64.
    EXPECT_NEAR(curve.at(3.0 / 16 - 2.0 / 64), (10.8 + 7.2 + 1) / 64, 1e-14);
}

TEST(AnimationCurve, OfWeightedKeysWithWholeHandlesIsCubic)
{
    // Handles of a third of the span: time is the parameter; slopes 3 and -1 as above.
    const AnimationCurve curve(keysOf({fixed(0, 0, {}, {2, 6}), fixed(2, 4, {2, -2}, {})}, true));
    EXPECT_NEAR(curve.at(1), 3, 1e-14);
}

TEST(AnimationCurve, GoesOnAsItsInfinitiesSay)
{
    struct Row {
        InfinityType type;
        double before; ///< at 1/2 before the first key and at 2 1/2
        double earlier;
        double after; ///< at 1/2 after the last key and at 2 1/2
        double later;
    };
    // Straight from 10 at time 0 to 14 at time 2.
    const Row rows[] = {
        {InfinityType::Constant, 10, 10, 14, 14},  {InfinityType::Linear, 9, 5, 15, 19},
        {InfinityType::Cycle, 13, 13, 11, 11},     {InfinityType::CycleRelative, 9, 5, 15, 19},
        {InfinityType::Oscillate, 11, 13, 13, 11},
    };
    for (const Row& row : rows) {
        CurveKeys keys = keysOf({key(0, 10), key(2, 14)});
        // The straight run needs slopes at the ends too.
        keys.keys[0].inType = TangentType::Spline;
        keys.keys[1].outType = TangentType::Spline;
        keys.before = row.type;
        keys.after = row.type;
        const AnimationCurve curve(keys);
        const int number = static_cast<int>(row.type);
        EXPECT_NEAR(curve.at(-0.5), row.before, 1e-12) << number;
        EXPECT_NEAR(curve.at(-2.5), row.earlier, 1e-12) << number;
        EXPECT_NEAR(curve.at(2.5), row.after, 1e-12) << number;
        EXPECT_NEAR(curve.at(4.5), row.later, 1e-12) << number;
    }
}

TEST(AnimationCurve, MeetsItsSeamsOnTheGrid)
{
    // 3 * 2.209 is no whole multiple in binary: the grid of 1/1000 says that it is a seam.
    CurveKeys keys = keysOf({key(0, 5), key(2.209, 6)});
    keys.after = InfinityType::Cycle;
    keys.gridPerUnit = 1000;
    const AnimationCurve curve(keys);
    for (int pass = 2; pass < 200; ++pass) {
        EXPECT_EQ(curve.at(2.209 * pass), 5) << pass;
    }
}

TEST(AnimationCurve, NeedsNoOrder)
{
    const AnimationCurve curve(keysOf({key(4, 8), key(0, 0), key(2, 0)}));
    EXPECT_EQ(curve.at(1), 0);
    EXPECT_EQ(curve.at(3), 4);
}

TEST(AnimationCurve, JumpsBetweenKeysAtOneTime)
{
    const AnimationCurve curve(keysOf({key(0, 0), key(2, 4), key(2, 10), key(4, 10)}));
    EXPECT_NEAR(curve.at(std::nextafter(2, 0)), 4, 1e-12);
    EXPECT_EQ(curve.at(2), 10);
    EXPECT_EQ(curve.at(3), 10);
    CurveKeys all = keysOf({key(1, 3), key(1, 4)});
    all.after = InfinityType::Oscillate;
    EXPECT_EQ(AnimationCurve(all).at(9), 4);
}

TEST(AnimationCurve, SurvivesWhatIsNoNumber)
{
    const AnimationCurve curve(
        keysOf({key(0, 1), key(kNoNumber, 5), key(1, kInfinite), key(2, 3)}));
    EXPECT_EQ(curve.at(1), 2);
    EXPECT_EQ(curve.at(kInfinite), 3);
    EXPECT_EQ(curve.at(-kInfinite), 1);
    EXPECT_EQ(curve.at(kNoNumber), 1);
    const AnimationCurve vectors(
        keysOf({fixed(0, 0, {}, {kNoNumber, 1}), fixed(1, 1, {1, kInfinite}, {})}));
    EXPECT_EQ(vectors.at(0.5), 0.5); // both level
    for (const bool isWeighted : {false, true}) {
        CurveKeys wild = keysOf({fixed(-1e308, -1e308, {1e308, -1e308}, {-1e308, 1e308}),
                                 fixed(1e308, 1e308, {-1, 1}, {1e-308, 1e308})},
                                isWeighted);
        wild.before = InfinityType::CycleRelative;
        wild.after = InfinityType::Oscillate;
        const AnimationCurve far(wild);
        for (const double time : {-1.7e308, -1.0, 0.0, 1e307, 1.7e308}) {
            EXPECT_FALSE(std::isnan(far.at(time))) << time;
        }
    }
}

TEST(AnimationCurve, FindsItsSpansWithAnyHint)
{
    std::vector<CurveKey> keys;
    for (int i = 200000; i > 0; --i) {
        keys.push_back(key(i, 2 * i));
    }
    const AnimationCurve curve(keysOf(keys));
    std::size_t hint = 0;
    for (const double time : {1.5, 2.25, 199999.5, 3.0, -5.0, 1e9, 17.75}) {
        const double held = std::min(std::max(time, 1.0), 200000.0);
        EXPECT_EQ(curve.at(time, hint), 2 * held);
        EXPECT_EQ(curve.at(time), 2 * held);
    }
    hint = 1000000000;
    EXPECT_EQ(curve.at(4.5, hint), 9);
}

TEST(CurveTypes, AreNumbersOfTheFile)
{
    EXPECT_EQ(tangentTypeFromNumber(10), TangentType::Clamped);
    EXPECT_EQ(tangentTypeFromNumber(28), TangentType::AutoEase);
    for (const int unknown : {-1, 0, 4, 8, 11, 26, 29, 1000}) {
        EXPECT_EQ(tangentTypeFromNumber(unknown), TangentType::Spline) << unknown;
    }
    EXPECT_EQ(infinityTypeFromNumber(5), InfinityType::Oscillate);
    EXPECT_EQ(infinityTypeFromNumber(2), InfinityType::Constant);
    EXPECT_EQ(infinityTypeFromNumber(-3), InfinityType::Constant);
}

} // namespace
