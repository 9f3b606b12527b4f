#include "apps/maya2vistrel/outputPath.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

void setVariable(const char* name, const char* value)
{
#ifdef _WIN32
    _putenv_s(name, value);
#else
    setenv(name, value, 1);
#endif
}

} // namespace

TEST(OutputPath, KeepsMaAndTakesMbOff)
{
    EXPECT_EQ(outputPathOf("car.ma"), "car.ma.obx");
    EXPECT_EQ(outputPathOf("car.mb"), "car.obx");
    EXPECT_EQ(outputPathOf("car"), "car.obx");
}

TEST(OutputPath, PutsTheEndingOnOnce)
{
    EXPECT_EQ(outputPathOf("car.obx"), "car.obx");
    EXPECT_EQ(outputPathOf("car.obx.mb"), "car.obx");
}

TEST(OutputPath, IsCaseSensitive)
{
    EXPECT_EQ(outputPathOf("car.MB"), "car.MB.obx");
}

TEST(OutputPath, ExpandsVariablesInBothForms)
{
    setVariable("ORV_TEST_FOLDER", "shots");
    EXPECT_EQ(outputPathOf("$ORV_TEST_FOLDER/car.mb"), "shots/car.obx");
    EXPECT_EQ(outputPathOf("${ORV_TEST_FOLDER}7/car.mb"), "shots7/car.obx");
}

TEST(OutputPath, KeepsUnknownVariablesAndLoneDollars)
{
    EXPECT_EQ(outputPathOf("$ORV_NO_SUCH_VARIABLE/a$b.mb"), "$ORV_NO_SUCH_VARIABLE/a$b.obx");
    EXPECT_EQ(outputPathOf("${ORV/a$.mb"), "${ORV/a$.obx");
}

TEST(OutputPath, ExpandsALeadingTildeOnly)
{
    setVariable("HOME", "/home/artist");
    setVariable("USERPROFILE", "/home/artist");
    EXPECT_EQ(outputPathOf("~/car.mb"), "/home/artist/car.obx");
    EXPECT_EQ(outputPathOf("~other/car.mb"), "~other/car.obx");
    EXPECT_EQ(outputPathOf("a~/car.mb"), "a~/car.obx");
}
