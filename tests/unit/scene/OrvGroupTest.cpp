#include "scene/OrvGroup.h"

#include "scene/FBXAnimation.h"
#include "scene/TriangleObject.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orv {
namespace {

using test::Layout;
using test::SceneText;
using test::written;

constexpr Matrix4 kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr Matrix4 kMoved{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2.5, -3, 0.125, 1};

std::shared_ptr<FBXAnimation> emptyTrack(const std::string& name)
{
    return std::make_shared<FBXAnimation>(name, 0.0F, 1.0F, true);
}

TEST(OrvGroup, WritesAnEmptyBlockWhenItHoldsNothing)
{
    OrvGroup group("g");
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n}\n");
}

TEST(OrvGroup, IsWrittenInPlaceInsideAnother)
{
    OrvGroup outer("outer");
    outer.createGroup("inner");
    EXPECT_EQ(written(outer, Layout::Indented), "\ngroup \"outer\" {\n"
                                                "\n group \"inner\" {\n"
                                                " }\n"
                                                "}\n");
}

TEST(OrvGroup, WritesNoFlagsLineForFlagsZero)
{
    OrvGroup group("g");
    group.setFlags(7);
    group.setFlags(0);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n}\n");
}

TEST(OrvGroup, MadeByCreateWritesFlags65536)
{
    const auto group = OrvGroup::create("g");
    EXPECT_EQ(group->getFlags(), 0x10000U);
    EXPECT_EQ(written(*group), "\ngroup \"g\" {\nflags 65536\n}\n");
}

TEST(OrvGroup, MadeByCreateGroupHasFlagsZero)
{
    OrvGroup group("g");
    EXPECT_EQ(group.getFlags(), 0U);
    EXPECT_EQ(group.createGroup("below")->getFlags(), 0U);
}

TEST(OrvGroup, MadeByCreateModelSetCarriesItsNameAsAttribute)
{
    const auto set = OrvGroup::createModelSet("cars");
    EXPECT_EQ(set->getFlags(), 0x20000U);
    EXPECT_EQ(written(*set), "\ngroup \"cars\" {\n"
                             "flags 131072\n"
                             "attribute \"model set\" \"cars\"\n"
                             "}\n");
}

TEST(OrvGroup, SetFlagsReplacesAndAddFlagsAdds)
{
    const auto group = OrvGroup::create("g");
    group->addFlags(0x8001);
    EXPECT_EQ(group->getFlags(), 0x18001U);
    group->setFlags(0x8001);
    EXPECT_EQ(group->getFlags(), 0x8001U);
}

TEST(OrvGroup, WritesTheDriversFlagsInDecimal)
{
    OrvGroup group("g");
    group.setFlags(0x8000);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\nflags 32768\n}\n");
    group.setFlags(0x8001);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\nflags 32769\n}\n");
}

TEST(OrvGroup, WritesFlagsAsAnUnsignedNumber)
{
    OrvGroup group("g");
    group.setFlags(0xFFFFFFFF);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\nflags 4294967295\n}\n");
}

TEST(OrvGroup, SortsAttributesByTheirBytes)
{
    OrvGroup group("g");
    group.setAttribute("source file", "/a/b.ma");
    group.setAttribute("model set", "cars");
    group.setAttribute("model", "short first");
    group.setAttribute("Zoo", "capitals first");
    group.setAttribute("\xC3\xA4", "not ASCII last");
    // a name with bytes of 0x80 and above is written in hexadecimal
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "attribute \"Zoo\" \"capitals first\"\n"
                              "attribute \"model\" \"short first\"\n"
                              "attribute \"model set\" \"cars\"\n"
                              "attribute \"source file\" \"/a/b.ma\"\n"
                              "attribute xXc3a4 \"not ASCII last\"\n"
                              "}\n");
}

TEST(OrvGroup, KeepsTheLastValueOfAnAttribute)
{
    OrvGroup group("g");
    group.setAttribute("a", "1");
    group.setAttribute("a", "2");
    EXPECT_EQ(written(group), "\ngroup \"g\" {\nattribute \"a\" \"2\"\n}\n");
}

TEST(OrvGroup, WritesItsTransformInRowOrder)
{
    OrvGroup group("g");
    group.setTransform(kMoved);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "transform 1 0 0 0 0 1 0 0 0 0 1 0 2.5 -3 0.125 1\n"
                              "}\n");
}

TEST(OrvGroup, WritesAnIdentityThatWasSet)
{
    OrvGroup group("g");
    EXPECT_FALSE(group.hasTransform());
    EXPECT_EQ(group.getTransform(), kIdentity);
    group.setTransform(kIdentity);
    EXPECT_TRUE(group.hasTransform());
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n"
                              "}\n");
}

TEST(OrvGroup, WritesOnlyTheAnimationWhenItHasBoth)
{
    OrvGroup group("g");
    group.setTransform(kMoved);
    group.setAnimation(emptyTrack("t"));
    const std::string text = written(group);
    EXPECT_NE(text.find("animation \"t\""), std::string::npos);
    EXPECT_EQ(text.find("transform"), std::string::npos);
}

TEST(OrvGroup, WritesTheTransformAgainWhenTheAnimationIsTakenAway)
{
    OrvGroup group("g");
    group.setTransform(kIdentity);
    group.setAnimation(emptyTrack("t"));
    group.setAnimation(nullptr);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n"
                              "}\n");
}

TEST(OrvGroup, WritesFlagsAttributesTransformChildrenAndGroupsInThisOrder)
{
    OrvGroup group("g");
    group.createGroup("below");
    // without triangles a mesh writes an error directive only
    group.createTriangleObject("mesh");
    group.setTransform(kIdentity);
    group.setAttribute("a", "b");
    group.setFlags(1);
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "flags 1\n"
                              "attribute \"a\" \"b\"\n"
                              "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n"
                              "#error \"No triangles defined\"\n"
                              "\ngroup \"below\" {\n"
                              "}\n"
                              "}\n");
}

TEST(OrvGroup, WritesTheAnimationAfterTheAttributes)
{
    OrvGroup group("g");
    group.setAnimation(emptyTrack("t"));
    group.setAttribute("a", "b");
    const std::string text = written(group);
    EXPECT_EQ(text.find("\ngroup \"g\" {\nattribute \"a\" \"b\"\nanimation \"t\""), 0U);
}

TEST(OrvGroup, KeepsTheOrderOfInsertionInEachList)
{
    OrvGroup group("g");
    group.createGroup("z")->createGroup("y");
    group.createGroup("a");
    group.createGroup("z");
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n"
                              "\ngroup \"z\" {\n"
                              "\ngroup \"y\" {\n"
                              "}\n"
                              "}\n"
                              "\ngroup \"a\" {\n"
                              "}\n"
                              "\ngroup \"z\" {\n"
                              "}\n"
                              "}\n");
}

TEST(OrvGroup, WritesASharedGroupOncePerHolder)
{
    OrvGroup group("g");
    const auto shared = OrvGroup::create("s");
    group.addGroup(shared);
    group.createGroup("h")->addGroup(shared);
    const std::string block = "\ngroup \"s\" {\nflags 65536\n}\n";
    EXPECT_EQ(written(group), "\ngroup \"g\" {\n" + block + "\ngroup \"h\" {\n" + block + "}\n}\n");
}

TEST(OrvGroup, IgnoresEmptyPointers)
{
    OrvGroup group("g");
    group.addChild(nullptr);
    group.addGroup(nullptr);
    EXPECT_EQ(group.childCount(), 0U);
    EXPECT_EQ(group.groupCount(), 0U);
    EXPECT_TRUE(group.isEmpty());
}

TEST(OrvGroup, CountsItsChildrenAndGroups)
{
    OrvGroup group("g");
    const auto mesh = group.createTriangleObject("m");
    const auto below = group.createGroup("b");
    group.addChild(mesh);
    ASSERT_EQ(group.childCount(), 2U);
    EXPECT_EQ(group.children()[0], mesh);
    EXPECT_EQ(group.children()[1], mesh);
    ASSERT_EQ(group.groupCount(), 1U);
    EXPECT_EQ(group.groups()[0], below);
    EXPECT_EQ(mesh->getName(), "m");
}

TEST(OrvGroup, IsEmptyWithTransformAttributesAndAnimation)
{
    OrvGroup group("g");
    group.setTransform(kMoved);
    group.setAttribute("a", "b");
    group.setAnimation(emptyTrack("t"));
    group.setFlags(1);
    EXPECT_TRUE(group.isEmpty());
}

TEST(OrvGroup, IsNotEmptyWithAChildOrAGroup)
{
    OrvGroup parent("p");
    parent.createGroup("b");
    EXPECT_FALSE(parent.isEmpty());
    OrvGroup holder("h");
    holder.createTriangleObject("m");
    EXPECT_FALSE(holder.isEmpty());
}

TEST(OrvGroup, FindsTheFirstDirectGroupOfExactlyThatName)
{
    OrvGroup group("g");
    const auto first = group.createGroup("a");
    group.createGroup("a");
    first->createGroup("deep");
    EXPECT_EQ(group.findGroup("a"), first);
    EXPECT_EQ(group.findGroup("deep"), nullptr);
    EXPECT_EQ(group.findGroup("A"), nullptr);
    EXPECT_EQ(group.findGroup("g"), nullptr);
    EXPECT_EQ(group.findGroup(""), nullptr);
}

TEST(OrvGroup, CloneOfAGroupWithoutTransformHasNone)
{
    const OrvGroup group("g");
    const auto copy = group.clone();
    EXPECT_FALSE(copy->hasTransform());
    EXPECT_EQ(written(*copy), "\ngroup \"g\" {\n}\n");
}

TEST(OrvGroup, CloneCopiesItsOwnDataAndSharesTheNodes)
{
    OrvGroup group("g");
    const auto mesh = group.createTriangleObject("m");
    const auto below = group.createGroup("b");
    group.setTransform(kMoved);
    group.setFlags(0x8001);
    group.setAttribute("a", "b");

    const auto copy = group.clone();
    EXPECT_EQ(copy->getName(), "g");
    EXPECT_TRUE(copy->hasTransform());
    EXPECT_EQ(copy->getTransform(), kMoved);
    EXPECT_EQ(copy->getFlags(), 0x8001U);
    ASSERT_EQ(copy->childCount(), 1U);
    EXPECT_EQ(copy->children()[0], mesh);
    ASSERT_EQ(copy->groupCount(), 1U);
    EXPECT_EQ(copy->groups()[0], below);
    EXPECT_EQ(written(*copy), written(group));

    copy->setName("other");
    copy->setAttribute("c", "d");
    copy->createGroup("only in the copy");
    EXPECT_EQ(group.getName(), "g");
    EXPECT_EQ(group.groupCount(), 1U);
    EXPECT_EQ(written(group).find("\"c\""), std::string::npos);
}

TEST(OrvGroup, CloneSharesTheAnimation)
{
    OrvGroup group("g");
    const auto track = emptyTrack("t");
    group.setAnimation(track);
    const auto copy = group.clone();
    EXPECT_EQ(track.use_count(), 3);
    EXPECT_EQ(written(*copy), written(group));
}

TEST(OrvGroup, PrintsGroupsOnlyWithATabPerLevel)
{
    OrvGroup group("g");
    group.createTriangleObject("mesh");
    const auto first = group.createGroup("a");
    first->createGroup("a1");
    first->createGroup("a2");
    group.createGroup("b");
    std::ostringstream stream;
    group.printTree(stream, 1);
    EXPECT_EQ(stream.str(), "\tg\n\t\ta\n\t\t\ta1\n\t\t\ta2\n\t\tb\n");
}

TEST(OrvGroup, HasNoDefinitionForm)
{
    SceneText scene;
    OrvGroup group("g");
    group.define(scene.oo());
    EXPECT_FALSE(group.isDefined());
    EXPECT_EQ(scene.text(), "");
}

TEST(OrvGroup, TakesItsOwnNameAgain)
{
    OrvGroup group("g");
    group.setName(group.getName());
    EXPECT_EQ(group.getName(), "g");
    group.setName("h");
    EXPECT_EQ(group.getName(), "h");
}

TEST(OrvGroup, WritesANameWithAQuoteInHexadecimal)
{
    OrvGroup group("a\"b");
    EXPECT_EQ(written(group), "\ngroup xX612262 {\n}\n");
}

/// `depth` groups, each the only one in the group above.
std::shared_ptr<OrvGroup> chain(std::size_t depth)
{
    auto root = std::make_shared<OrvGroup>("g");
    OrvGroup* deepest = root.get();
    for (std::size_t i = 1; i < depth; ++i) {
        deepest = deepest->createGroup("g").get();
    }
    return root;
}

TEST(OrvGroup, WritesAChainOf400000Groups)
{
    constexpr std::size_t kDepth = 400'000; // exhausts 8 MiB of stack at 32 bytes a level
    std::string expected;
    for (std::size_t i = 0; i < kDepth; ++i) {
        expected += "\ngroup \"g\" {\n";
    }
    for (std::size_t i = 0; i < kDepth; ++i) {
        expected += "}\n";
    }
    EXPECT_TRUE(written(*chain(kDepth)) == expected);
}

TEST(OrvGroup, DestroysAChainOf400000Groups)
{
    auto root = chain(400'000);
    const std::weak_ptr<OrvGroup> below = root->groups()[0];
    root.reset();
    EXPECT_TRUE(below.expired());
}

TEST(OrvGroup, PrintsAChainOf2000Groups)
{
    const auto root = chain(2000);
    std::ostringstream stream;
    root->printTree(stream, 0);
    EXPECT_EQ(stream.str().substr(0, 9), "g\n\tg\n\t\tg\n");
    EXPECT_EQ(stream.str().substr(stream.str().size() - 2001), std::string(1999, '\t') + "g\n");
}

TEST(OrvGroup, LeavesAGroupThatIsHeldElsewhereWhole)
{
    auto shared = OrvGroup::create("s");
    const std::weak_ptr<OrvGroup> below = shared->createGroup("below");
    {
        OrvGroup first("f");
        first.addGroup(shared);
        OrvGroup second("g");
        second.addGroup(shared);
        second.addGroup(shared);
    }
    EXPECT_EQ(shared.use_count(), 1);
    EXPECT_EQ(shared->groupCount(), 1U);
    shared.reset();
    EXPECT_TRUE(below.expired());
}

TEST(OrvGroup, ReleasesAGroupThatItHoldsTwice)
{
    auto root = std::make_shared<OrvGroup>("r");
    auto twice = std::make_shared<OrvGroup>("t");
    const std::weak_ptr<OrvGroup> below = twice->createGroup("below");
    root->addGroup(twice);
    root->createGroup("other")->addGroup(twice);
    twice.reset();
    root.reset();
    EXPECT_TRUE(below.expired());
}

} // namespace
} // namespace orv
