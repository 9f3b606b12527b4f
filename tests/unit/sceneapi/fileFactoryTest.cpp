// Opening and closing the output: files, standard output, failures.
#include "platform/descriptors.h"
#include "sceneapi/LightFileFactory.h"
#include "sceneapi/orvSceneapi_oo.h"
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

constexpr const char* kHeader =
    "//---orvane:dal:7---\n//---import:dal:1---\n//---id:1---\n// This is a Vistrel scene file\n\n";
constexpr const char* kPrologue =
    "//---orvane:dal:7---\n//---import:dal:1---\n//---id:1---\n// This is a Vistrel scene file\n\n"
    "#print \"Vistrel SceneApi oo 7.3.37  (built Fri Feb  2 07:20:39 2018)\"\nversion 9\n\n";

TEST(LightFileFactory, WritesTheFourLinesOfTheHeader)
{
    const TestFile file;
    {
        orv::LightFileFactory factory(file.utf8());
        factory.writeHeader();
        factory.close();
    }
    EXPECT_EQ(file.bytes(), kHeader);
}

TEST(LightFileFactory, OpensPathsOutsideAsciiAndTurnsBinaryArraysOn)
{
    const TestFile file;
    orv::LightFileFactory factory(file.utf8());
    orv::orvSceneapi_oo oo(factory);
    oo.intListParameter("n", {10}); // a line feed in binary: no line end may be translated
    factory.close();
    EXPECT_EQ(file.bytes(),
              kPrologue + std::string("\"n\" [ \x01\x02\x03i\x01\0\0\0\n\0\0\0] ,\n", 22));
}

TEST(LightFileFactory, ClosesWhenDestroyed)
{
    const TestFile file;
    {
        orv::LightFileFactory factory(file.utf8());
        factory.sceneApi()->id(5);
    }
    EXPECT_EQ(file.bytes(), "id 5\n");
}

TEST(LightFileFactory, HasNoSceneApiAfterClose)
{
    const TestFile file;
    orv::LightFileFactory factory(file.utf8());
    EXPECT_NE(factory.sceneApi(), nullptr);
    factory.close();
    EXPECT_EQ(factory.sceneApi(), nullptr);
    EXPECT_NO_THROW(factory.close());
    factory.writeHeader();
    EXPECT_EQ(file.bytes(), "");
}

TEST(LightFileFactory, ReportsAndThrowsWhenTheFileCannotBeOpened)
{
    testing::internal::CaptureStderr();
    std::string message;
    try {
        orv::LightFileFactory factory("no/such/folder/sc\xc3\xa8ne.obx");
    } catch (const std::runtime_error& error) {
        message = error.what();
    }
    EXPECT_EQ(message, "could not open file: \"no/such/folder/sc\xc3\xa8ne.obx\"");
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("opening file: "));
}

#ifndef _WIN32
TEST(LightFileFactory, ReportsAndThrowsWhenTheOutputIsFull)
{
    testing::internal::CaptureStderr();
    std::string message;
    try {
        orv::LightFileFactory factory("/dev/full");
        factory.sceneApi()->id(1);
        factory.close();
    } catch (const std::runtime_error& error) {
        message = error.what();
    }
    EXPECT_EQ(message, "could not close file");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "closing file: No space left on device\n");
}

TEST(LightFileFactory, NoticesAWriteThatFellShortLongBeforeItsClose)
{
    testing::internal::CaptureStderr();
    orv::LightFileFactory factory("/dev/full");
    const std::vector<float> values(1 << 20, 1.0f);
    orv::orvSceneapi_oo oo(factory);
    oo.floatListParameter("big", values);
    oo.progress("after", 1.0f);
    EXPECT_THROW(factory.close(), std::runtime_error);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "closing file: No space left on device\n");
}

TEST(LightFileFactory, OnlyReportsWhenDestroyedOnAFullOutput)
{
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW({
        orv::LightFileFactory factory("/dev/full");
        factory.sceneApi()->id(1);
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "closing file: No space left on device\n");
}
#endif

/// Points a standard descriptor at a file, opened as text, and back at the end.
class Diverted {
public:
    Diverted(int descriptor, const TestFile& file)
        : m_descriptor(descriptor), m_saved(platform::duplicateDescriptor(descriptor))
    {
        std::FILE* stream = platform::openUtf8(file.utf8(), "w");
        platform::replaceDescriptor(platform::descriptorOf(stream), descriptor);
        std::fclose(stream);
    }
    Diverted(const Diverted&) = delete;
    Diverted& operator=(const Diverted&) = delete;
    ~Diverted()
    {
        platform::replaceDescriptor(m_saved, m_descriptor);
        platform::closeDescriptor(m_saved);
    }

private:
    int m_descriptor;
    int m_saved;
};

TEST(LightFileFactory, TakesStandardOutputForItselfInBinaryMode)
{
    const TestFile output;
    const TestFile errors;
    std::fflush(stdout);
    std::fflush(stderr);
    {
        const Diverted outputDiverted(platform::kStandardOutput, output);
        const Diverted errorsDiverted(platform::kStandardError, errors);
        orv::LightFileFactory factory("-");
        std::printf("said by somebody else");
        std::fflush(stdout);
        factory.writeHeader();
        factory.close();
        std::fflush(stderr);
    }
    EXPECT_EQ(output.bytes(), kHeader);
    EXPECT_EQ(errors.bytes(), "said by somebody else");
}

TEST(Descriptors, FailingCallsSaySo)
{
    EXPECT_EQ(platform::duplicateDescriptor(-1), -1);
    EXPECT_FALSE(platform::closeDescriptor(-1));
    EXPECT_FALSE(platform::replaceDescriptor(-1, 99));
    EXPECT_EQ(platform::openUtf8("no/such/folder/file", "rb"), nullptr);
}

} // namespace
