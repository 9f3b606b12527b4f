// How many faces the solids may have.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "tests/support/ToyContext.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

namespace host::nodes {
namespace {

using test::ToyContext;

constexpr double kHuge = 1e9;
constexpr std::int64_t kMost = SolidReader::kMostCells;

/// True when a solid with these inputs is beyond the limit. Nothing is made.
bool isLimited(const NodeCompute& row, const std::map<std::string, double>& inputs)
{
    ToyContext context(row);
    context.isWaiting = true;
    for (const auto& [name, number] : inputs) {
        context.set(name, number);
    }
    context.compute("output");
    return context.timesUncomputed > 0;
}

/// A pipe has 2 (height + cap) bands of as many faces as it has sides: 4 at least.
TEST(CreatorLimits, pipes)
{
    EXPECT_FALSE(isLimited(kPolyPipe, {{"subdivisionsAxis", kMost / 4}}));
    EXPECT_TRUE(isLimited(kPolyPipe, {{"subdivisionsAxis", kMost / 4 + 1}}));
    // 4 sides: 2^18 bands in all, half of them go to the sides and the ends each
    const double half = static_cast<double>(kMost / 4) / 2;
    EXPECT_FALSE(isLimited(kPolyPipe, {{"subdivisionsAxis", 4}, {"subdivisionsCaps", half - 1}}));
    EXPECT_TRUE(isLimited(kPolyPipe, {{"subdivisionsAxis", 4}, {"subdivisionsCaps", half}}));
    EXPECT_TRUE(isLimited(kPolyPipe, {{"subdivisionsAxis", 4},
                                      {"subdivisionsHeight", half / 2 + 1},
                                      {"subdivisionsCaps", half / 2}}));
}

/// A cylinder has height + 2 caps bands, and one ring of points more.
TEST(CreatorLimits, cylindersAndPrisms)
{
    EXPECT_FALSE(isLimited(kPolyCylinder, {{"subdivisionsAxis", kMost / 2}}));
    EXPECT_TRUE(isLimited(kPolyCylinder, {{"subdivisionsAxis", kMost / 2 + 1}}));
    const double bands = static_cast<double>(kMost / 4) - 2;
    const std::map<std::string, double> prism{{"numderOfSides", 4}};
    const auto with = [&](const std::string& name, double number) {
        std::map<std::string, double> inputs = prism;
        inputs[name] = number;
        return inputs;
    };
    EXPECT_FALSE(isLimited(kPolyPrism, with("subdivisionsCaps", bands / 2)));
    EXPECT_TRUE(isLimited(kPolyPrism, with("subdivisionsCaps", bands / 2 + 1)));
    EXPECT_FALSE(isLimited(kPolyPrism, with("subdivisionsHeight", bands + 1)));
    EXPECT_TRUE(isLimited(kPolyPrism, with("subdivisionsHeight", bands + 2)));
}

TEST(CreatorLimits, conesHaveABandInEachDirection)
{
    EXPECT_FALSE(isLimited(kPolyCone, {{"subdivisionsAxis", kMost}}));
    EXPECT_TRUE(isLimited(kPolyCone, {{"subdivisionsAxis", kMost}, {"subdivisionsCap", 1}}));
}

TEST(CreatorLimits, whatIsReadFitsTheLimit)
{
    for (const double sides : {3.0, 1000.0, 2e6, kHuge}) {
        for (const double height : {1.0, 100.0, kHuge}) {
            for (const double caps : {0.0, 7.0, kHuge}) {
                ToyContext context(kPolyHelix);
                context.set("subdivisionsAxis", sides);
                context.set("subdivisionsCaps", caps);
                SolidReader reader(context);
                constexpr std::size_t kSides = kFirstSolidInput + 5;
                const std::int64_t count = reader.sides(kSides, 8, 3, 2);
                const std::int64_t along = reader.derivedBands(height);
                const std::int64_t across = reader.bands(kSides + 2, 0, 0, 2);
                EXPECT_LE(count * (along + 1 + 2 * across), kMost);
                EXPECT_GE(count, 3);
                EXPECT_GE(along, 1);
            }
        }
    }
}

TEST(CreatorLimits, numbersThatAreNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(isLimited(kPolyPipe, {{"subdivisionsAxis", nan}, {"subdivisionsCaps", -5}}));
}

} // namespace
} // namespace host::nodes
