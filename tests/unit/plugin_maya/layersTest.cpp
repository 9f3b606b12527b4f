// Records and directives of the layer split; the regrouped trees are tested on whole files.
#include "tests/unit/plugin_maya/DriverFixture.h"

namespace {

const std::string kMember = "createNode transform -n \"a\";\n" + quadMesh("quad", "a") +
                            "createNode displayLayer -n \"L\";\n";

class Layers : public Driver {
protected:
    Layers() { args.setBool(SPLIT_LAYERS, true); }
};

} // namespace

TEST_F(Layers, LogsLayersAndMembers)
{
    const std::string text = exported(kMember + "connectAttr \"L.di\" \"a.do\";\n");
    EXPECT_TRUE(logs("DEBUG4:  TRACE CHECK: this node\n")) << log();
    EXPECT_TRUE(logs("DEBUG2:  Layer Name: defaultLayer\n"));
    EXPECT_TRUE(logs("DEBUG2:  Layer Name: L\n"));
    EXPECT_FALSE(logs("DEBUG2:  Adding the layer: defaultLayer\n"));
    EXPECT_TRUE(logs("DEBUG2:  Adding the layer: L\n"));
    EXPECT_TRUE(logs("DEBUG3:  Adding objs to layer: |a\n"));
    EXPECT_FALSE(has(text, "There were no layers to split"));
    EXPECT_TRUE(has(text, "\ngroup \"L\" {\n\ngroup \"a\" {\nflags 32768\n"
                          "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n}\n}\n"))
        << text;
}

TEST_F(Layers, WarnsOfAShapeAndSplitsNothingWithoutAnotherMember)
{
    testing::internal::CaptureStderr();
    const std::string text = exported(kMember + "connectAttr \"L.di\" \"quad.do\";\n");
    EXPECT_TRUE(has(testing::internal::GetCapturedStderr(), "no layers to day\n"));
    EXPECT_TRUE(logs("WARNING:  could not locate the group: |a|quad\n")) << log();
    EXPECT_FALSE(logs("Adding objs to layer"));
    EXPECT_TRUE(has(text, "#print \"There were no layers to split\"\n"));
    EXPECT_FALSE(has(text, "group \"L\""));
}

TEST_F(Layers, AreLeftAloneUnlessAskedFor)
{
    args.setBool(SPLIT_LAYERS, false);
    const std::string text = exported(kMember + "connectAttr \"L.di\" \"a.do\";\n");
    EXPECT_FALSE(logs("Layer Name"));
    EXPECT_FALSE(has(text, "There were no layers to split"));
    EXPECT_FALSE(has(text, "group \"L\""));
}
