// Records and texts of sampled tracks; times and poses are tested on whole files.
#include "tests/unit/plugin_maya/DriverFixture.h"

namespace {

/// A curve of straight lines that drives `plug`: at every frame the frame's number.
std::string slide(const std::string& plug)
{
    return "createNode animCurveTL -n \"slide\";\nsetAttr \".tan\" 2;\n"
           "setAttr -s 2 \".ktv[0:1]\"  0 0 100 100;\nconnectAttr \"slide.o\" \"" +
           plug + "\";\n";
}

std::string playback(const std::string& first, const std::string& last)
{
    return "createNode script -n \"sceneConfigurationScriptNode\";\n"
           "setAttr \".b\" -type \"string\" \"playbackOptions -min " +
           first + " -max " + last + " -ast " + first + " -aet " + last +
           " \";\nsetAttr \".st\" 6;\n";
}

const std::string kMover = "createNode transform -n \"mover\";\n";
const std::string kCamera =
    "createNode transform -n \"c\";\ncreateNode camera -n \"camShape\" -p \"c\";\n";

} // namespace

TEST_F(Driver, WritesATrackByTheLetter)
{
    const std::string text = exported(kMover + slide("mover.tx") + playback("1", "3"));
    // 2 frames before the last one: 3 / 24 s; 1000 / 24 and 2000 / 24 ms, cut off
    EXPECT_TRUE(has(text, "\ngroup \"mover\" {\n"
                          "flags 32768\n"
                          "animation \"mover\" \"fbx_animation\" {\n"
                          "\"start_time\" 0,\n"
                          "\"duration\" 0.125,\n"
                          "\"timestamps\" [ 0,41,83 ] ,\n"
                          "\"matrices\" [ 1 0 0 0 0 1 0 0 0 0 1 0 1 0 0 1 ,"
                          "1 0 0 0 0 1 0 0 0 0 1 0 2 0 0 1 ,"
                          "1 0 0 0 0 1 0 0 0 0 1 0 3 0 0 1  ] ,\n"
                          "\"interpolate\" on,\n"
                          "\"folder\" \"\",\n"
                          "}\n"
                          "}\n"))
        << text;
}

TEST_F(Driver, LogsATrackAndItsKeys)
{
    exported(kMover + slide("mover.tx") + playback("1", "3"));
    EXPECT_TRUE(logs("DEBUG3:  animation: start=0, duration=0.125, frames=3\n")) << log();
    EXPECT_TRUE(logs("DEBUG3:  Adding KeyFrame: 0 @ 0 Matrix: "));
    EXPECT_TRUE(logs("DEBUG3:  Adding KeyFrame: 1 @ 41.6667 Matrix: "));
    EXPECT_TRUE(logs("DEBUG3:  Adding KeyFrame: 2 @ 83.3333 Matrix: "));
    EXPECT_FALSE(logs("Adding KeyFrame: 3"));
    EXPECT_TRUE(logs("TRACE CHECK: getting transform from frame\n"));
}

TEST_F(Driver, LogsAnAnimatedCamera)
{
    const std::string text = exported(kCamera + slide("c.tx") + playback("1", "2"));
    EXPECT_TRUE(logs("DEBUG:  |c|camShape is animated camera\n")) << log();
    EXPECT_TRUE(logs("TRACE CHECK: inclusiveMatrix\n"));
    const std::size_t begin = text.find("\ncamera \"cam\" {\n");
    const std::string block = text.substr(begin, text.find("\n\n", begin + 1) - begin);
    EXPECT_TRUE(has(block, "animation \"camShape\" \"fbx_animation\" {\n")) << block;
    EXPECT_FALSE(has(block, "transform ")) << block;
    EXPECT_TRUE(has(block, "position "));
}

TEST_F(Driver, AFrameExportsNoTracks)
{
    args.setInt(FRAME, 2);
    const std::string text =
        exported(kMover + slide("mover.tx") + kCamera + "connectAttr \"slide.o\" \"c.ty\";\n");
    EXPECT_FALSE(has(text, "animation "));
    EXPECT_FALSE(logs(" is animated camera"));
    EXPECT_TRUE(has(text, "group \"mover\" {\nflags 32768\n"
                          "transform 1 0 0 0 0 1 0 0 0 0 1 0 2 0 0 1\n"))
        << text;
}

TEST_F(Driver, AFrameOfMinusOneIsNoFrame)
{
    args.setInt(FRAME, -1);
    EXPECT_TRUE(has(exported(kMover + slide("mover.tx") + playback("1", "2")), "animation "));
    EXPECT_FALSE(logs("importing frame"));
}
