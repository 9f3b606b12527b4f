#include "scene/FBXAnimation.h"

#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::bytes;
using test::Layout;
using test::SceneText;
using test::written;

constexpr Matrix4 kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr Matrix4 kMoved{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2.5, -3, 0.125, 1};

TEST(FBXAnimation, WritesTimesStampsMatricesInterpolationAndFolder)
{
    FBXAnimation track("t", 0.5F, 1.25F, true);
    track.addKey(0, kIdentity);
    track.addKey(41, kMoved);
    // every value of a matrix is followed by a blank; then the separator of the list
    EXPECT_EQ(written(track), "animation \"t\" \"fbx_animation\" {\n"
                              "\"start_time\" 0.5,\n"
                              "\"duration\" 1.25,\n"
                              "\"timestamps\" [ 0,41 ] ,\n"
                              "\"matrices\" [ 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 ,"
                              "1 0 0 0 0 1 0 0 0 0 1 0 2.5 -3 0.125 1  ] ,\n"
                              "\"interpolate\" on,\n"
                              "\"folder\" \"\",\n"
                              "}\n");
}

TEST(FBXAnimation, WritesAnEmptyTrack)
{
    FBXAnimation track("t", 0, 0, false);
    EXPECT_EQ(written(track), "animation \"t\" \"fbx_animation\" {\n"
                              "\"start_time\" 0,\n"
                              "\"duration\" 0,\n"
                              "\"timestamps\" [ ] ,\n"
                              "\"matrices\" [ ] ,\n"
                              "\"interpolate\" off,\n"
                              "\"folder\" \"\",\n"
                              "}\n");
}

TEST(FBXAnimation, WritesStampsButNeverMatricesInBinary)
{
    FBXAnimation track("t", 0, 0, true);
    track.addKey(258, kIdentity);
    EXPECT_EQ(written(track, Layout::Binary), "animation \"t\" \"fbx_animation\" {\n"
                                              "\"start_time\" 0,\n"
                                              "\"duration\" 0,\n"
                                              "\"timestamps\" [ " +
                                                  bytes("\x01\x02\x03"
                                                        "i"
                                                        "\x01\x00\x00\x00"
                                                        "\x02\x01\x00\x00",
                                                        12) +
                                                  "] ,\n"
                                                  "\"matrices\" [ 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1  "
                                                  "] ,\n"
                                                  "\"interpolate\" on,\n"
                                                  "\"folder\" \"\",\n"
                                                  "}\n");
}

TEST(FBXAnimation, WrapsNegativeStampsAndWritesThemNegative)
{
    FBXAnimation track("t", 0, 0, true);
    track.addKey(-41, kIdentity);
    ASSERT_EQ(track.timeStamps().size(), 1U);
    EXPECT_EQ(track.timeStamps()[0], 4294967255U);
    EXPECT_NE(written(track).find("\"timestamps\" [ -41 ] ,\n"), std::string::npos);
}

TEST(FBXAnimation, ReportsUnequalCountsBeforeTheArraysAndWritesBoth)
{
    FBXAnimation track("t", 0, 1, true);
    track.addKey(1, kIdentity);
    track.addKey(2, kIdentity);
    track.addTimeStamp(3);
    EXPECT_EQ(
        written(track),
        "animation \"t\" \"fbx_animation\" {\n"
        "\"start_time\" 0,\n"
        "\"duration\" 1,\n"
        "#error \"Number of timestamps(3) does not match number of matrices(2)\"\n"
        "\"timestamps\" [ 1,2,3 ] ,\n"
        "\"matrices\" [ 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 ,1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1  ] ,\n"
        "\"interpolate\" on,\n"
        "\"folder\" \"\",\n"
        "}\n");
}

TEST(FBXAnimation, HasNoDefinitionForm)
{
    SceneText scene;
    FBXAnimation track("t", 0, 0, true);
    track.define(scene.oo());
    EXPECT_FALSE(track.isDefined());
    EXPECT_EQ(scene.text(), "");
}

} // namespace
} // namespace orv
