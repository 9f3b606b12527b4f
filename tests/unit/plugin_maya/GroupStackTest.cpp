#include "plugins/maya/src/GroupStack.h"

#include "importers/maya/src/Log.h"
#include "scene/OrvGroup.h"
#include "scene/TriangleObject.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::shared_ptr<orv::OrvGroup> group(const char* name)
{
    return std::make_shared<orv::OrvGroup>(name);
}

std::string textOf(const GroupStack& stack)
{
    std::ostringstream text;
    text << stack;
    return text.str();
}

class GroupStackTest : public testing::Test {
protected:
    GroupStackTest() { FILELog::ReportingLevel() = ERROR; }
};

} // namespace

TEST_F(GroupStackTest, APushedGroupBecomesASubGroupOfTheTop)
{
    GroupStack stack;
    const auto root = group("top");
    const auto child = group("child");
    stack.push(root);
    stack.push(child);
    ASSERT_EQ(root->groupCount(), 1u);
    EXPECT_EQ(root->groups()[0], child);
    EXPECT_EQ(textOf(stack), "/top/child");
}

TEST_F(GroupStackTest, PopsToADepthAndTellsWhatIsLeft)
{
    GroupStack stack;
    for (const char* name : {"a", "b", "c", "d"}) {
        stack.push(group(name));
    }
    EXPECT_EQ(stack.popTo(1), 1u);
    EXPECT_EQ(textOf(stack), "/a");
    EXPECT_EQ(stack.popTo(5), 1u);
    EXPECT_EQ(stack.popTo(0), 0u);
    EXPECT_EQ(stack.popTo(0), 0u);
}

TEST_F(GroupStackTest, PopOfAnEmptyStackDoesNothing)
{
    GroupStack stack;
    stack.pop();
    EXPECT_EQ(textOf(stack), "");
}

TEST_F(GroupStackTest, AddsGeometryToTheTopAndIgnoresNone)
{
    GroupStack stack;
    stack.addToTop(std::make_shared<orv::TriangleObject>("lost")); // no group is open
    const auto root = group("top");
    const auto child = group("child");
    stack.push(root);
    stack.push(child);
    stack.addToTop(std::make_shared<orv::TriangleObject>("mesh"));
    stack.addToTop(nullptr);
    EXPECT_EQ(root->childCount(), 0u);
    EXPECT_EQ(child->childCount(), 1u);
}
