#include "scene/extendKnots.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using Knots = std::vector<double>;

/// The vector with what stands from `position` on completed.
Knots extended(Knots knots, std::size_t position = 0)
{
    extendKnots(knots, position);
    return knots;
}

TEST(ExtendKnots, MirrorsTheStepsAtBothEnds)
{
    EXPECT_EQ(extended({99, 1, 2, 3}), (Knots{0, 1, 2, 3, 4}));
    EXPECT_EQ(extended({99, 0, 0, 1, 2, 2}), (Knots{0, 0, 0, 1, 2, 2, 2}));
    EXPECT_EQ(extended({99, 1, 3, 4}), (Knots{-1, 1, 3, 4, 5}));
}

TEST(ExtendKnots, ReadsTheEndBeforeTheFrontIsReplaced)
{
    // of three entries the last two are 5 and 7; the front becomes 2 * 5 - 7
    EXPECT_EQ(extended({99, 5, 7}), (Knots{3, 5, 7, 9}));
}

TEST(ExtendKnots, LeavesWhatStandsBeforeThePosition)
{
    EXPECT_EQ(extended({10, 20, 0, 1, 2, 4}, 2), (Knots{10, 20, 0, 1, 2, 4, 6}));
    EXPECT_EQ(extended({10, 20, 0, 1, 3, 4}, 2), (Knots{10, 20, -1, 1, 3, 4, 5}));
}

TEST(ExtendKnots, GrowsByOneWhereTooFewKnotsStand)
{
    // two: nothing to take the front from; the end is 2 * 2 - 1
    EXPECT_EQ(extended({1, 2}), (Knots{1, 2, 3}));
    // one: repeated, and what stands before it is another vector's
    EXPECT_EQ(extended({7}), (Knots{7, 7}));
    EXPECT_EQ(extended({10, 20, 7}, 2), (Knots{10, 20, 7, 7}));
}

TEST(ExtendKnots, DoesNothingWhereNothingBegins)
{
    EXPECT_EQ(extended({}), Knots());
    EXPECT_EQ(extended({1, 2, 3}, 3), (Knots{1, 2, 3}));
    EXPECT_EQ(extended({1, 2, 3}, 7), (Knots{1, 2, 3}));
}

} // namespace
} // namespace orv
