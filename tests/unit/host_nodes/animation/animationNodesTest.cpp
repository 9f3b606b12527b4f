// Nodes between curves and what they animate, fed by hand.
#include "host/nodes/animation/animationNodes.h"
#include "host/math/units.h"
#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

namespace {

using host::NumericArray;
using host::Value;
using namespace host::nodes;
using test::ToyContext;

constexpr double kFrame = 5880000; // of film, in ticks
constexpr double kDegree = std::numbers::pi / 180;

/// Two keys that rise from `first` to `second` in a straight line over ten frames or numbers.
NumericArray twoKeys(double length, double first, double second)
{
    NumericArray keys(host::NumberStorage::Double, 2);
    const std::array<double, 4> numbers{0, first, length, second};
    keys.store(0, std::span<const double>(numbers));
    return keys;
}

ToyContext straightCurve(const host::NodeCompute& row, const NumericArray& keys)
{
    ToyContext context(row);
    context.arrays["keyTimeValue"] = &keys;
    context.set("tangentType", 2);
    context.set("weightedTangents", 0);
    return context;
}

TEST(AnimCurveNode, RunsInTheTimeOfTheSceneOrInTheOneConnected)
{
    const NumericArray keys = twoKeys(10 * kFrame, 5, 25);
    ToyContext context = straightCurve(kAnimCurveTL, keys);
    context.ticks = static_cast<std::int64_t>(5 * kFrame);
    EXPECT_EQ(context.compute("output").number(), 15);
    context.set("input", 1 * kFrame); // stored, not connected: no effect
    EXPECT_EQ(context.compute("output").number(), 15);
    context.connected.insert("input");
    EXPECT_EQ(context.compute("output").number(), 7);
}

TEST(AnimCurveNode, KeepsItsKeysReady)
{
    const NumericArray keys = twoKeys(10 * kFrame, 0, 10);
    ToyContext context = straightCurve(kAnimCurveTU, keys);
    EXPECT_EQ(context.kept(), nullptr);
    context.compute("output");
    const void* kept = context.kept().get();
    EXPECT_NE(kept, nullptr);
    context.ticks = static_cast<std::int64_t>(3 * kFrame);
    EXPECT_NEAR(context.compute("output").number(), 3, 1e-15);
    EXPECT_EQ(context.kept().get(), kept);
}

TEST(AnimCurveNode, IsDrivenByNumbers)
{
    const NumericArray keys = twoKeys(8, 0, 2);
    ToyContext context = straightCurve(kAnimCurveUA, keys);
    context.ticks = 1000;
    EXPECT_EQ(context.compute("output").number(), 0); // at 0, not at any time
    context.set("input", 6);
    EXPECT_EQ(context.compute("output").number(), 1.5);
}

TEST(AnimCurveNode, ReadsTypesAndVectorsByTheIndicesOfTheKeys)
{
    // Level at the first key; three units a second at the second: 10 (3 s^2 - 2 s^3) + 30 (s^3 -
    // s^2).
    NumericArray keys(host::NumberStorage::Double, 2);
    const std::array<double, 4> numbers{0, 0, 24 * kFrame, 10};
    keys.store(4, std::span<const double>(numbers)); // elements 4 and 5
    NumericArray types(host::NumberStorage::Int32, 1);
    const std::array<std::int32_t, 2> fixed{3, 1};
    types.store(4, std::span<const std::int32_t>(fixed));
    NumericArray x(host::NumberStorage::Double, 1);
    x.storeComponent(5, 0, 0.1);
    NumericArray y(host::NumberStorage::Double, 1);
    y.storeComponent(5, 0, 3);
    ToyContext context(kAnimCurveTU);
    context.arrays = {{"keyTimeValue", &keys},
                      {"keyTanInType", &types},
                      {"keyTanOutType", &types},
                      {"keyTanInX", &x},
                      {"keyTanInY", &y}};
    context.set("weightedTangents", 0);
    context.ticks = static_cast<std::int64_t>(12 * kFrame);
    EXPECT_NEAR(context.compute("output").number(), 5 - 3.75, 1e-12);
}

TEST(AnimCurveNode, OfTimesHasTangentsInSeconds)
{
    // Leaves with one second a second, so that it runs straight: 12 frames after 12 frames.
    const NumericArray keys = twoKeys(24 * kFrame, 0, 24 * kFrame);
    NumericArray one(host::NumberStorage::Double, 1);
    const std::array<double, 2> ones{1, 1};
    one.store(0, std::span<const double>(ones));
    ToyContext context(kAnimCurveTT);
    context.arrays = {{"keyTimeValue", &keys},
                      {"keyTanInX", &one},
                      {"keyTanInY", &one},
                      {"keyTanOutX", &one},
                      {"keyTanOutY", &one}};
    context.set("tangentType", 1);
    context.set("weightedTangents", 0);
    context.ticks = static_cast<std::int64_t>(6 * kFrame);
    EXPECT_NEAR(context.compute("output").number(), 6 * kFrame, 1e-6);
}

TEST(TimeConversions, CountIn6000thsOfASecond)
{
    ToyContext unit(kTimeToUnitConversion);
    EXPECT_TRUE(unit.compute("output").isEmpty());
    unit.set("input", 12 * kFrame);
    unit.set("conversionFactor", 0.004); // 1 / 250
    EXPECT_NEAR(unit.compute("output").number(), 12, 1e-12);
    ToyContext time(kUnitToTimeConversion);
    time.set("input", 12);
    time.set("conversionFactor", 250);
    EXPECT_EQ(time.compute("output").number(), 12 * kFrame);
}

TEST(PairBlend, MixesByWeightAndTakesInputsAloneByMode)
{
    ToyContext context(kPairBlend);
    context.set("inTranslateX1", 10);
    context.set("inTranslateX2", 20);
    context.set("inRotateY1", 1);
    context.set("inRotateY2", 2);
    EXPECT_EQ(context.compute("outTranslateX").number(), 20); // weight 1 by default
    context.set("weight", 0.25);
    EXPECT_EQ(context.compute("outTranslateX").number(), 12.5);
    EXPECT_EQ(context.compute("outRotateY").number(), 1.25);
    context.set("translateXMode", 1);
    context.set("rotateMode", 2);
    EXPECT_EQ(context.compute("outTranslateX").number(), 10);
    EXPECT_EQ(context.compute("outRotateY").number(), 2);
}

TEST(PairBlend, TurnsOnTheShortArcWhenAsked)
{
    ToyContext context(kPairBlend);
    context.set("rotInterpolation", 1);
    context.set("weight", 0.5);
    context.set("inRotateX1", 350 * kDegree);
    context.set("inRotateX2", 20 * kDegree);
    // Half of the way is at 5 degrees, the straight mean at 185.
    EXPECT_NEAR(std::remainder(context.compute("outRotateX").number() / kDegree, 360), 5, 1e-9);
    context.set("weight", 1);
    EXPECT_EQ(context.compute("outRotateX").number(), 20 * kDegree);
}

TEST(BlendWeighted, SumsWhatItHas)
{
    ToyContext context(kBlendWeighted);
    EXPECT_EQ(context.compute("output").number(), 0);
    context.setElement("input", {0}, 3);
    context.setElement("input", {5}, 4);
    context.setElement("weight", {5}, 0.5);
    EXPECT_EQ(context.compute("output").number(), 3 + 2); // a weight is 1 where none is set
}

TEST(Choice, GivesTheInputOfItsSelector)
{
    ToyContext context(kChoice);
    context.setElement("input", {0}, 3);
    context.setElement("input", {2}, 4);
    EXPECT_EQ(context.compute("output").number(), 3);
    context.set("selector", 2);
    EXPECT_EQ(context.compute("output").number(), 4);
    for (const double odd : {1.0, -1.0, 1e12, std::nan("")}) {
        context.set("selector", odd);
        EXPECT_TRUE(context.compute("output").isEmpty()) << odd;
    }
}

TEST(Mute, HoldsAValueWhileMuted)
{
    ToyContext context(kMute);
    context.set("input", 3);
    context.set("hold", 8);
    EXPECT_EQ(context.compute("output").number(), 3);
    context.set("mute", 1);
    EXPECT_EQ(context.compute("output").number(), 8);
}

TEST(AnimLayer, WeighsItselfAndWhatLiesBelow)
{
    ToyContext context(kAnimLayer);
    const auto weights = [&] {
        return std::pair(context.compute("foregroundWeight").number(),
                         context.compute("backgroundWeight").number());
    };
    EXPECT_EQ(weights(), std::pair(1.0, 1.0)); // additive
    context.set("weight", 0.25);
    context.set("parentWeight", 0.5);
    EXPECT_EQ(weights(), std::pair(0.125, 1.0));
    context.set("override", 1);
    EXPECT_EQ(weights(), std::pair(0.125, 0.875));
    context.set("passthrough", 0);
    EXPECT_EQ(weights(), std::pair(0.125, 0.0));
    context.set("mute", 1);
    EXPECT_EQ(weights(), std::pair(0.0, 1.0));
    EXPECT_EQ(context.compute("outMute").number(), 1);
}

TEST(AnimLayer, IsSilentBesideOneThatPlaysAlone)
{
    ToyContext context(kAnimLayer);
    context.set("siblingSolo", 1);
    EXPECT_EQ(context.compute("foregroundWeight").number(), 0);
    context.set("solo", 1);
    EXPECT_EQ(context.compute("foregroundWeight").number(), 1);
    context.set("solo", 0);
    context.setElement("childrenSolo", {3}, 1);
    EXPECT_EQ(context.compute("childsoloed").number(), 1);
    EXPECT_EQ(context.compute("foregroundWeight").number(), 1);
}

TEST(AnimBlendNodes, AddWithWeights)
{
    ToyContext context(kAnimBlendNode);
    context.set("inputA", 10);
    context.set("inputB", 4);
    EXPECT_EQ(context.compute("output").number(), 14);
    context.set("weightA", 0.5);
    context.set("weightB", 0.25);
    EXPECT_EQ(context.compute("output").number(), 6);
}

TEST(AnimBlendNodes, SwitchWhatHasNothingInBetween)
{
    for (const host::NodeCompute* row : {&kAnimBlendNodeBoolean, &kAnimBlendNodeEnum}) {
        ToyContext context(*row);
        context.set("inputA", 1);
        context.set("inputB", 0);
        context.set("weightB", 0.01);
        EXPECT_EQ(context.compute("output").number(), 0);
        context.set("weightB", 0);
        EXPECT_EQ(context.compute("output").number(), 1);
    }
}

TEST(AnimBlendNodes, OfScalesMultiplyOrAdd)
{
    ToyContext context(kAnimBlendNodeScale);
    context.set("inputA", 4);
    context.set("inputB", 9);
    context.set("weightB", 0.5);
    EXPECT_NEAR(context.compute("output").number(), 4 * 3, 1e-12); // the square root of 9
    context.set("accumulationMode", 1);
    EXPECT_EQ(context.compute("output").number(), 8.5);
}

TEST(AnimBlendNodes, OfRotationsAddAnglesOrTurns)
{
    ToyContext context(kAnimBlendNodeRotation);
    context.set("inputAZ", 90 * kDegree);
    context.set("inputBX", 90 * kDegree);
    EXPECT_NEAR(context.compute("outputX").number(), 90 * kDegree, 1e-12);
    EXPECT_NEAR(context.compute("outputZ").number(), 90 * kDegree, 1e-12);
    // First about x, then about z: in the order xyz these are the very same angles.
    context.set("accumulationMode", 1);
    EXPECT_NEAR(context.compute("outputX").number(), 90 * kDegree, 1e-9);
    EXPECT_NEAR(context.compute("outputY").number(), 0, 1e-9);
    // Half of the second turn.
    context.set("weightB", 0.5);
    EXPECT_NEAR(context.compute("outputX").number(), 45 * kDegree, 1e-9);
    EXPECT_NEAR(context.compute("outputZ").number(), 90 * kDegree, 1e-9);
}

} // namespace
