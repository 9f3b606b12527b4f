#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MLibrary.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

namespace {

TEST(MLibrary, TakesTheProgramNameAndTheLicenceFlag)
{
    char name[] = "program";
    char* const arguments[] = {name};
    EXPECT_TRUE(MLibrary::initialize(arguments[0], false));
    EXPECT_FALSE(MItDag().isDone());
    MLibrary::cleanup(0, false);
    EXPECT_TRUE(MLibrary::initialize(true, arguments[0]));
    EXPECT_TRUE(MLibrary::initialize(arguments[0], false)) << "a second time changes nothing";
    MLibrary::cleanup(0, false);
}

TEST(MLibrary, PrintsNothingAndLeavesTheDirectoryAlone)
{
    const auto folder = std::filesystem::current_path();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    MLibrary::initialize("program", false);
    MLibrary::cleanup(0, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(std::filesystem::current_path(), folder);
}

TEST(MLibrary, BeginsWithANewSceneOfFourCamerasInLibraryMode)
{
    MLibrary::initialize("program", false);
    unsigned int cameras = 0;
    for (MItDag walk(MItDag::kDepthFirst, MFn::kCamera); !walk.isDone(); walk.next()) {
        ++cameras;
    }
    EXPECT_EQ(cameras, 4u);
    const MString file = MFileIO::currentFile();
    EXPECT_EQ(file.substring(file.rindex('/') + 1, static_cast<int>(file.length()) - 1),
              "untitled");
    MLibrary::cleanup(0, false);
}

TEST(MLibrary, ReturnsWhenTheProcessIsNotToEnd)
{
    MLibrary::cleanup(5, false);
    MLibrary::initialize("program", false);
    MLibrary::cleanup(5, false);
    EXPECT_TRUE(MItDag().isDone());
}

struct Loud {
    ~Loud() { std::fputs("destroyed", stderr); }
};

TEST(MLibraryDeathTest, EndsTheProcessWithTheStatusGiven)
{
    EXPECT_EXIT(
        {
            MLibrary::initialize("program", false);
            MLibrary::cleanup(3, true);
        },
        testing::ExitedWithCode(3), "^$");
}

TEST(MLibraryDeathTest, EndsTheProcessWithoutASessionToo)
{
    EXPECT_EXIT(MLibrary::cleanup(1, true), testing::ExitedWithCode(1), "^$");
}

TEST(MLibraryDeathTest, DestroysNothingOfTheFunctionsThatStillRun)
{
    EXPECT_EXIT(
        {
            const Loud loud;
            MLibrary::initialize("program", false);
            MLibrary::cleanup(0, true);
        },
        testing::ExitedWithCode(0), "^$");
}

} // namespace
