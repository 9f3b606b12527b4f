#include "platform/MappedFile.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

using platform::MappedFile;

TEST(MappedFile, ShowsTheBytesOfANonAsciiPath)
{
    const TestFolder folder;
    folder.write("a.bin", std::string("one\r\n\0two", 9));
    std::string error;
    const auto file = MappedFile::open(folder.utf8("a.bin"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_EQ(file->bytes(), std::string_view("one\r\n\0two", 9));
    EXPECT_EQ(file->size(), 9U);
}

TEST(MappedFile, TakesAnEmptyFileForNoBytes)
{
    const TestFolder folder;
    folder.write("empty", "");
    std::string error;
    const auto file = MappedFile::open(folder.utf8("empty"), error);
    ASSERT_TRUE(file) << error;
    EXPECT_EQ(file->size(), 0U);
}

TEST(MappedFile, NamesAMissingFileInTheError)
{
    const TestFolder folder;
    std::string error;
    EXPECT_FALSE(MappedFile::open(folder.utf8("none"), error));
    EXPECT_EQ(error.find("cannot open \"" + folder.utf8("none") + "\": "), 0U) << error;
}

TEST(MappedFile, RefusesAFolder)
{
    const TestFolder folder;
    std::string error;
    EXPECT_FALSE(MappedFile::open(folder.utf8("."), error));
    EXPECT_NE(error.find("it is a folder"), std::string::npos) << error;
}

#ifndef _WIN32
TEST(MappedFile, RefusesAPipeWithoutWaitingForItsWriter)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo(folder.utf8("pipe").c_str(), 0600), 0);
    std::string error;
    EXPECT_FALSE(MappedFile::open(folder.utf8("pipe"), error));
    EXPECT_NE(error.find("it is a pipe"), std::string::npos) << error;
}
#endif

TEST(MappedFile, KeepsReleasedBytesReadable)
{
    const TestFolder folder;
    std::string bytes(std::size_t{9} << 20, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i % 251);
    }
    folder.write("large", bytes);
    std::string error;
    auto file = MappedFile::open(folder.utf8("large"), error);
    ASSERT_TRUE(file) << error;
    for (const std::size_t offset : {std::size_t{1}, bytes.size() / 2, bytes.size() + 1}) {
        file->releaseBefore(offset);
        EXPECT_TRUE(file->bytes() == bytes);
    }
}

TEST(MappedFile, MovesItsView)
{
    const TestFolder folder;
    folder.write("a", "text");
    std::string error;
    auto first = MappedFile::open(folder.utf8("a"), error);
    ASSERT_TRUE(first) << error;
    MappedFile second;
    second = std::move(*first);
    EXPECT_EQ(second.bytes(), "text");
    EXPECT_EQ(first->size(), 0U);
}

} // namespace
