#include "host/types/PlugPath.h"

#include <gtest/gtest.h>

#include <string>

namespace host {
namespace {

TEST(PlugPath, ReadsEveryStepWithItsIndices)
{
    const auto path = parsePlugPath("node.attr[3].child[0:17]");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->node, "node");
    ASSERT_EQ(path->stepCount, 2u);
    EXPECT_EQ(path->steps[0].name, "attr");
    EXPECT_EQ(path->steps[0].first, 3);
    EXPECT_EQ(path->steps[0].last, 3);
    EXPECT_TRUE(path->steps[0].hasIndex());
    EXPECT_FALSE(path->steps[0].isRange());
    EXPECT_EQ(path->last().name, "child");
    EXPECT_EQ(path->last().first, 0);
    EXPECT_EQ(path->last().last, 17);
    EXPECT_TRUE(path->last().isRange());
}

TEST(PlugPath, HasNoNodeForThePlugOfTheCurrentNode)
{
    const auto path = parsePlugPath(".t");
    ASSERT_TRUE(path);
    EXPECT_TRUE(path->node.empty());
    ASSERT_EQ(path->stepCount, 1u);
    EXPECT_EQ(path->last().name, "t");
    EXPECT_FALSE(path->last().hasIndex());
    EXPECT_FALSE(path->last().isRange());
}

TEST(PlugPath, KeepsPathsAndNamespacesInTheNodePart)
{
    EXPECT_EQ(parsePlugPath(":perspShape.ncp")->node, ":perspShape");
    EXPECT_EQ(parsePlugPath("|a:x|b->|c.iog[0].og[2]")->node, "|a:x|b->|c");
}

TEST(PlugPath, PointsIntoTheParsedText)
{
    const std::string text = "n.abc";
    EXPECT_EQ(parsePlugPath(text)->last().name.data(), text.data() + 2);
}

TEST(PlugPath, TakesMinusOneForAnyElement)
{
    const auto path = parsePlugPath("n.a[-1].b");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->steps[0].first, -1);
    EXPECT_EQ(path->steps[0].last, -1);
    EXPECT_FALSE(path->steps[0].hasIndex());
}

TEST(PlugPath, AcceptsTheHighestIndexAndNoHigherOne)
{
    EXPECT_EQ(parsePlugPath(".a[2147483646]")->last().first, 2147483646);
    EXPECT_FALSE(parsePlugPath(".a[2147483647]"));
    EXPECT_FALSE(parsePlugPath(".a[99999999999999999999999999]"));
}

TEST(PlugPath, AcceptsAsManyStepsAsItHolds)
{
    std::string text = "n";
    for (std::size_t i = 0; i < PlugPath::kMaxSteps; ++i) {
        text += ".a";
    }
    EXPECT_EQ(parsePlugPath(text)->stepCount, PlugPath::kMaxSteps);
    EXPECT_FALSE(parsePlugPath(text + ".a"));
}

TEST(PlugPath, AcceptsARangeOfOneElement)
{
    EXPECT_EQ(parsePlugPath(".a[5:5]")->last().first, 5);
    EXPECT_FALSE(parsePlugPath(".a[5:5]")->last().isRange());
}

TEST(PlugPath, FailsOnEverythingElse)
{
    for (const char* text : {"",           "node",
                             ".",          "n.",
                             "n..a",       "n.a.",
                             "n.[0]",      "n.a[",
                             "n.a]",       "n.a[]",
                             "n.a[1",      "n.a1]",
                             "n.a[1]b",    "n.a[1][2]",
                             "n.a[[1]]",   "n.a[2:1]",
                             "n.a[:1]",    "n.a[1:]",
                             "n.a[x]",     "n.a[-2]",
                             "n.a[1:-1]",  "n.a[0:2147483647]",
                             "n.a[1:2:3]", "n.a[+1]",
                             "n.a[ 1]"}) {
        const auto path = parsePlugPath(text);
        EXPECT_FALSE(path) << text;
        if (!path) {
            EXPECT_EQ(path.error().code, ErrorCode::BadInput) << text;
        }
    }
}

TEST(PlugPath, QuotesOnlyTheBeginningOfALongBadPlug)
{
    const auto path = parsePlugPath(std::string(100000, 'x'));
    ASSERT_FALSE(path);
    EXPECT_LT(path.error().message.size(), 200u);
}

} // namespace
} // namespace host
