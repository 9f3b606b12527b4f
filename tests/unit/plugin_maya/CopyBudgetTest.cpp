#include "plugins/maya/src/CopyBudget.h"

#include "scene/OrvGroup.h"
#include "scene/TriangleObject.h"

#include <gtest/gtest.h>

TEST(CopyBudget, CountsGroupsAndGeometriesOfACopy)
{
    orv::OrvGroup root("root");
    const auto a = root.createGroup("a");
    const auto b = a->createGroup("b");
    a->createTriangleObject("m");
    b->createTriangleObject("m");
    b->createTriangleObject("n");
    // b is 3, a is 5, the root 6
    EXPECT_TRUE(CopyBudget(root, 5).take(*a->clone()));
    EXPECT_FALSE(CopyBudget(root, 4).take(*a->clone()));
    EXPECT_TRUE(CopyBudget(root, 6).take(*root.clone()));
    EXPECT_FALSE(CopyBudget(root, 5).take(*root.clone()));
}

TEST(CopyBudget, ARefusalTakesNothing)
{
    orv::OrvGroup root("root");
    const auto large = root.createGroup("large");
    large->createGroup("inside");
    const auto small = root.createGroup("small");
    CopyBudget budget(root, 3);
    EXPECT_TRUE(budget.take(*large));
    EXPECT_FALSE(budget.take(*large));
    EXPECT_TRUE(budget.take(*small));
    EXPECT_FALSE(budget.take(*small));
}

TEST(CopyBudget, GoesAsDeepAsTheTree)
{
    orv::OrvGroup root("root");
    auto last = root.createGroup("0");
    for (int i = 0; i < 100000; ++i) {
        last = last->createGroup("n");
    }
    EXPECT_TRUE(CopyBudget(root, 100002).take(root));
    EXPECT_FALSE(CopyBudget(root, 100001).take(root));
}
