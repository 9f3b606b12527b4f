#include "host/geometry/deform/shapeTargets.h"
#include "host/geometry/deform/componentOrder.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace host;
using namespace host::geometry;
using Numbers = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

/// What a weight takes of offsets of 1, 2, 3, ... at the items.
double taken(const std::vector<double>& weights, double weight)
{
    double sum = 0;
    for (const ItemShare& share : itemShares(weights, weight)) {
        sum += share.share * static_cast<double>(share.item + 1);
    }
    return sum;
}

TEST(ItemShares, GrowInProportionWithOneItem)
{
    EXPECT_DOUBLE_EQ(taken({1}, 1), 1);
    EXPECT_DOUBLE_EQ(taken({1}, 0.25), 0.25);
    EXPECT_DOUBLE_EQ(taken({1}, 0), 0);
    EXPECT_DOUBLE_EQ(taken({1}, 3), 3);
    EXPECT_DOUBLE_EQ(taken({1}, -2), -2);
    EXPECT_DOUBLE_EQ(taken({}, 1), 0);
}

// Items at 0.5 (offset 1) and 1 (offset 2): at 0.25 half of the first, at 0.75 the middle of both.
TEST(ItemShares, RunStraightBetweenNeighbours)
{
    const std::vector<double> weights{0.5, 1};
    EXPECT_DOUBLE_EQ(taken(weights, 0.5), 1);
    EXPECT_DOUBLE_EQ(taken(weights, 0.25), 0.5);
    EXPECT_DOUBLE_EQ(taken(weights, 0.75), 1.5);
    EXPECT_DOUBLE_EQ(taken(weights, 1), 2);
    EXPECT_DOUBLE_EQ(taken(weights, 2), 4);
    EXPECT_DOUBLE_EQ(taken(weights, -0.5), -1);
}

TEST(ItemShares, TakeNothingAtZeroBetweenNegativeAndPositiveItems)
{
    const std::vector<double> weights{-1, 1};
    EXPECT_DOUBLE_EQ(taken(weights, -0.5), 0.5);
    EXPECT_DOUBLE_EQ(taken(weights, 0.5), 1); // half of 2
    EXPECT_DOUBLE_EQ(taken(weights, -2), 2);
    EXPECT_DOUBLE_EQ(taken({-1}, 0.5), -0.5);
    EXPECT_DOUBLE_EQ(taken(weights, std::numeric_limits<double>::quiet_NaN()), 0)
        << "a weight that is no number takes nothing";
}

TEST(AddDeltas, AddsSharesTimesTheWeightsOfPoints)
{
    const PointDeltas deltas{{2, 0, 9, 2}, {{1, 0, 0}, {0, 1, 0}, {5, 5, 5}, {0, 0, 2}}};
    std::vector<Vec3d> points(3);
    const std::vector<float> weights{0.5F};
    addDeltas(deltas, 2, weights, points);
    EXPECT_EQ(points[0], (Vec3d{0, 1, 0}));
    EXPECT_EQ(points[1], (Vec3d{0, 0, 0}));
    EXPECT_EQ(points[2], (Vec3d{2, 0, 4}));
}

TEST(NamedPoints, KeepTheOrderOfTheTexts)
{
    const Texts texts{"vtx[7]", "vtx[2:4]", "vtx[1]"};
    EXPECT_EQ(namedPoints(texts, Numbers{8}, 100), (Numbers{7, 2, 3, 4, 1}));
    EXPECT_EQ(namedPoints(Texts{"vtx[*]"}, Numbers{3}, 100), (Numbers{0, 1, 2}));
    EXPECT_EQ(namedPoints(Texts{"vtx[3:1]"}, Numbers{8}, 100), (Numbers{3, 2, 1}));
}

TEST(NamedPoints, RunFastestInTheLastBracket)
{
    EXPECT_EQ(namedPoints(Texts{"cv[1:2][0:1]"}, Numbers{3, 4}, 100), (Numbers{4, 5, 8, 9}));
    EXPECT_EQ(namedPoints(Texts{"cv[2][*]"}, Numbers{3, 4}, 100), (Numbers{8, 9, 10, 11}));
    EXPECT_EQ(namedPoints(Texts{"cv[5:6]"}, Numbers{3, 4}, 100), (Numbers{5, 6}));
}

TEST(NamedPoints, StayInStepWhereThereAreNone)
{
    EXPECT_EQ(namedPoints(Texts{"vtx[1:3]", "vtx[0]"}, Numbers{2}, 100),
              (Numbers{1, kNoPoint, kNoPoint, 0}));
    EXPECT_EQ(namedPoints(Texts{"vtx[0:4294967295]"}, Numbers{2}, 3), (Numbers{0, 1, kNoPoint}));
    EXPECT_EQ(namedPoints(Texts{"vtx", "vtx[", "vtx[a]", "vtx[1][2]", "vtx[1][2][3][4]", ""},
                          Numbers{9}, 100),
              Numbers());
}

} // namespace
