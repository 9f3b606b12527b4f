#include "plugins/maya/src/GroupIndex.h"

#include "scene/OrvGroup.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// A group with `count` sub-groups g0, g1, ... and a second one of the name g1 at the end.
std::shared_ptr<orv::OrvGroup> parentOf(int count)
{
    auto parent = std::make_shared<orv::OrvGroup>("parent");
    for (int i = 0; i < count; ++i) {
        parent->createGroup("g" + std::to_string(i));
    }
    parent->createGroup("g1");
    return parent;
}

} // namespace

TEST(GroupIndex, FindsWhatTheGroupItselfFinds)
{
    for (const int count : {2, 15, 16, 17, 100}) { // searched and indexed parents
        const auto parent = parentOf(count);
        GroupIndex index; // no longer used when the parent goes
        for (const std::string name : {"g0", "g1", "g15", "g16", "g99", "", "parent", "G0"}) {
            EXPECT_EQ(index.find(*parent, name), parent->findGroup(name)) << count << name;
        }
        // the first of a name, not the last
        EXPECT_EQ(index.find(*parent, "g1"), parent->groups()[1]) << count;
    }
}

TEST(GroupIndex, TellsParentsApart)
{
    GroupIndex index;
    const auto one = parentOf(50);
    const auto two = parentOf(50);
    EXPECT_EQ(index.find(*one, "g7"), one->groups()[7]);
    EXPECT_EQ(index.find(*two, "g7"), two->groups()[7]);
    EXPECT_EQ(index.find(*one, "g7"), one->groups()[7]);
}
