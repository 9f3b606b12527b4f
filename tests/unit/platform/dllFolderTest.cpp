#include "platform/dllFolder.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <string>
#include <vector>

namespace {

constexpr wchar_t kUntouched = L'#';

#ifdef _WIN32

TEST(DllFolder, PairsTheBytesOfTheLocation)
{
    wchar_t buffer[512];
    platform::formatDllFolder(buffer, 512, "abcd"); // 0x6261, 0x6463: little-endian pairs
    EXPECT_EQ(std::wstring(buffer), (std::wstring{0x6261, 0x6463} + L"\\bin"));
}

TEST(DllFolder, EndsAnOddNumberOfBytesWithAZero)
{
    wchar_t buffer[512];
    platform::formatDllFolder(buffer, 512, "abc");
    EXPECT_EQ(std::wstring(buffer), (std::wstring{0x6261, 0x0063} + L"\\bin"));
}

TEST(DllFolder, AddsTheTailToAnEmptyLocation)
{
    wchar_t buffer[512];
    platform::formatDllFolder(buffer, 512, "");
    EXPECT_EQ(std::wstring(buffer), L"\\bin");
}

TEST(DllFolder, PassesANullPointerOn)
{
    wchar_t buffer[512];
    platform::formatDllFolder(buffer, 512, nullptr);
    EXPECT_EQ(std::wstring(buffer), L"(null)\\bin");
}

TEST(DllFolder, NeverWritesPastItsRoom)
{
    for (const std::size_t length : {1013U, 1014U, 1015U, 5000U}) {
        std::vector<wchar_t> buffer(520, kUntouched);
        platform::formatDllFolder(buffer.data(), 512, std::string(length, 'a').c_str());
        // 507 characters are left beside "\bin" and the zero
        EXPECT_EQ(std::wcslen(buffer.data()), 511U);
        EXPECT_EQ(std::wstring(buffer.data() + 507), L"\\bin");
        EXPECT_EQ(std::wstring(buffer.begin() + 512, buffer.end()), std::wstring(8, kUntouched));
    }
}

TEST(DllFolder, IsSet)
{
    EXPECT_TRUE(platform::setDllFolder(L"C:\\windows"));
    EXPECT_TRUE(platform::setDllFolder(nullptr));
}

#else

TEST(DllFolder, DoesNothingAndSucceedsWhereThereIsNone)
{
    for (const char* location : {"/usr/autodesk/maya", "", static_cast<const char*>(nullptr)}) {
        wchar_t buffer[16] = {kUntouched, kUntouched};
        platform::formatDllFolder(buffer, 16, location);
        EXPECT_EQ(std::wstring(buffer), L"");
        EXPECT_EQ(buffer[1], kUntouched);
        EXPECT_TRUE(platform::setDllFolder(buffer));
    }
}

#endif

} // namespace
