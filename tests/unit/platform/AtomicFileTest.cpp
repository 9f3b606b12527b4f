#include "platform/AtomicFile.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace {

using platform::AtomicFile;

TEST(AtomicFile, AppearsWithItsBytesOnCommit)
{
    const TestFolder folder;
    std::string error;
    auto file = AtomicFile::create(folder.utf8("out"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->write("one\n"));
    EXPECT_TRUE(file->write("two"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "out"));
    EXPECT_TRUE(file->commit(AtomicFile::Flush::ToDisk)) << file->error();
    EXPECT_EQ(folder.read("out"), "one\ntwo");
    EXPECT_EQ(folder.countEntries(), 1U);
}

TEST(AtomicFile, ReplacesAnOlderFile)
{
    const TestFolder folder;
    folder.write("out", "old and longer");
    std::string error;
    auto file = AtomicFile::create(folder.utf8("out"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->write("new"));
    EXPECT_EQ(folder.read("out"), "old and longer");
    EXPECT_TRUE(file->commit()) << file->error();
    EXPECT_EQ(folder.read("out"), "new");
    EXPECT_EQ(folder.countEntries(), 1U);
}

TEST(AtomicFile, LeavesTheOlderFileWhenItIsDropped)
{
    const TestFolder folder;
    folder.write("out", "old");
    {
        std::string error;
        auto file = AtomicFile::create(folder.utf8("out"), error);
        ASSERT_TRUE(file) << error;
        EXPECT_TRUE(file->write("new"));
        EXPECT_EQ(folder.countEntries(), 2U);
    }
    EXPECT_EQ(folder.read("out"), "old");
    EXPECT_EQ(folder.countEntries(), 1U);
}

TEST(AtomicFile, WritesNothingAfterCommit)
{
    const TestFolder folder;
    std::string error;
    auto file = AtomicFile::create(folder.utf8("out"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->commit());
    EXPECT_FALSE(file->write("late"));
    EXPECT_FALSE(file->commit());
    EXPECT_EQ(folder.read("out"), "");
}

TEST(AtomicFile, RefusesAFolderAndAMissingFolder)
{
    const TestFolder folder;
    std::string error;
    EXPECT_FALSE(AtomicFile::create(folder.utf8("."), error));
    EXPECT_EQ(error.find("cannot write \""), 0U) << error;
    error.clear();
    EXPECT_FALSE(AtomicFile::create(folder.utf8("none/out"), error));
    EXPECT_EQ(error.find("cannot write \""), 0U) << error;
    EXPECT_EQ(folder.countEntries(), 0U);
}

TEST(AtomicFile, TakesLongNames)
{
    const TestFolder folder;
    const std::string name(250, 'x');
    std::string error;
    auto file = AtomicFile::create(folder.utf8(name.c_str()), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->write("text"));
    EXPECT_TRUE(file->commit()) << file->error();
    EXPECT_EQ(folder.read(name.c_str()), "text");
}

TEST(AtomicFile, FailsAtCommitWhenTheTargetBecameAFolder)
{
    const TestFolder folder;
    std::string error;
    auto file = AtomicFile::create(folder.utf8("out"), error);
    ASSERT_TRUE(file) << error;
    std::filesystem::create_directories(folder.path() / "out" / "inner");
    EXPECT_FALSE(file->commit());
    EXPECT_EQ(file->error().find("cannot replace \""), 0U) << file->error();
    EXPECT_EQ(folder.countEntries(), 1U);
}

#ifndef _WIN32

TEST(AtomicFile, WritesIntoADeviceInsteadOfReplacingIt)
{
    std::string error;
    auto file = AtomicFile::create("/dev/null", error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->write("text"));
    EXPECT_TRUE(file->commit(AtomicFile::Flush::ToDisk)) << file->error();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(AtomicFile, ReportsAFullDevice)
{
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "there is no /dev/full here";
    }
    std::string error;
    auto file = AtomicFile::create("/dev/full", error);
    ASSERT_TRUE(file) << error;
    EXPECT_FALSE(file->write("text"));
    EXPECT_EQ(file->error(), "cannot write \"/dev/full\": No space left on device");
    EXPECT_FALSE(file->commit());
}

TEST(AtomicFile, ReplacesTheFileBehindALink)
{
    namespace fs = std::filesystem;
    const TestFolder folder;
    folder.write("real", "old");
    fs::create_symlink("real", folder.path() / "inner");
    fs::create_symlink(folder.path() / "inner", folder.path() / "outer");
    std::string error;
    auto file = AtomicFile::create(folder.utf8("outer"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->write("new"));
    EXPECT_TRUE(file->commit()) << file->error();
    EXPECT_EQ(folder.read("real"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "outer"));
}

TEST(AtomicFile, KeepsTheAccessRightsOfTheOlderFile)
{
    namespace fs = std::filesystem;
    const TestFolder folder;
    folder.write("out", "old");
    fs::permissions(folder.path() / "out", static_cast<fs::perms>(0640));
    std::string error;
    auto file = AtomicFile::create(folder.utf8("out"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_TRUE(file->commit()) << file->error();
    EXPECT_EQ(fs::status(folder.path() / "out").permissions(), static_cast<fs::perms>(0640));
}

#else

TEST(AtomicFile, RefusesAReadOnlyFile)
{
    namespace fs = std::filesystem;
    const TestFolder folder;
    folder.write("out", "old");
    fs::permissions(folder.path() / "out",
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    std::string error;
    EXPECT_FALSE(AtomicFile::create(folder.utf8("out"), error));
    fs::permissions(folder.path() / "out", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_EQ(folder.read("out"), "old");
}

#endif

} // namespace
