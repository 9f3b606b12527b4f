#include "platform/registry.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

TEST(Registry, HasNoValueForAMissingKey)
{
    using platform::RegistryRoot;
    for (const RegistryRoot root : {RegistryRoot::LocalMachine, RegistryRoot::CurrentUser}) {
        EXPECT_FALSE(platform::registryText(root, L"SOFTWARE\\Vistrel test, absent", L"x", 64));
    }
}

#ifdef _WIN32

/// A key below the current user's, gone afterwards.
class RegistryText : public testing::Test {
protected:
    static constexpr wchar_t kKey[] = L"SOFTWARE\\Vistrel unit test";

    ~RegistryText() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }

    static void store(DWORD type, const void* bytes, std::size_t size)
    {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"value", type, bytes,
                                  static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }

    static std::optional<std::wstring> load(std::size_t roomBytes)
    {
        return platform::registryText(platform::RegistryRoot::CurrentUser, kKey, L"value",
                                      roomBytes);
    }
};

TEST_F(RegistryText, ReadsAText)
{
    store(REG_SZ, L"7.3", 8);
    EXPECT_EQ(load(64), std::wstring(L"7.3"));
}

TEST_F(RegistryText, FailsWhenTheTextDoesNotFitItsRoom)
{
    const std::wstring text(31, L'x'); // 64 bytes with its zero
    store(REG_SZ, text.c_str(), 64);
    EXPECT_EQ(load(64), text);
    EXPECT_FALSE(load(62));
}

TEST_F(RegistryText, EndsATextThatIsStoredWithoutItsZero)
{
    const std::wstring text(40, L'x'); // of which 64 bytes are stored
    store(REG_SZ, text.data(), 64);
    EXPECT_EQ(load(64), text.substr(0, 32));
}

TEST_F(RegistryText, TakesNumbersForMissing)
{
    const DWORD number = 7;
    store(REG_DWORD, &number, sizeof number);
    EXPECT_FALSE(load(64));
}

TEST_F(RegistryText, LeavesPlaceholdersAsTheyStand)
{
    store(REG_EXPAND_SZ, L"%TMP%", 12);
    EXPECT_EQ(load(64), std::wstring(L"%TMP%"));
}

#endif

} // namespace
