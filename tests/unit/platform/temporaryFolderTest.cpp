#include "platform/temporaryFolder.h"

#include "platform/wideText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

#ifdef _WIN32

class Variable {
public:
    Variable(const wchar_t* name, const wchar_t* value) : m_name(name)
    {
        wchar_t old[1024] = L"";
        GetEnvironmentVariableW(name, old, 1024);
        m_old = old;
        SetEnvironmentVariableW(name, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { SetEnvironmentVariableW(m_name, m_old.empty() ? nullptr : m_old.c_str()); }

private:
    const wchar_t* m_name;
    std::wstring m_old;
};

TEST(TemporaryFolder, IsTheSystemsAndEndsInOneSeparator)
{
    const Variable variable(L"TMP", L"C:\\some\\folder");
    EXPECT_EQ(platform::temporaryFolder(), L"C:\\some\\folder\\");
}

#else

class Variable {
public:
    explicit Variable(const char* value)
    {
        const char* old = std::getenv("TMPDIR");
        m_wasSet = old != nullptr;
        m_old = m_wasSet ? old : "";
        value != nullptr ? setenv("TMPDIR", value, 1) : unsetenv("TMPDIR");
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { m_wasSet ? setenv("TMPDIR", m_old.c_str(), 1) : unsetenv("TMPDIR"); }

private:
    bool m_wasSet = false;
    std::string m_old;
};

TEST(TemporaryFolder, ComesFromTheVariableWithOneSeparatorAdded)
{
    const Variable variable("/some/folder");
    EXPECT_EQ(platform::temporaryFolder(), L"/some/folder/");
}

TEST(TemporaryFolder, KeepsTheSeparatorOfTheVariable)
{
    const Variable variable("/some/folder/");
    EXPECT_EQ(platform::temporaryFolder(), L"/some/folder/");
}

TEST(TemporaryFolder, FallsBackWhenTheVariableIsUnsetOrEmpty)
{
    {
        const Variable variable(nullptr);
        EXPECT_EQ(platform::temporaryFolder(), L"/tmp/");
    }
    const Variable variable("");
    EXPECT_EQ(platform::temporaryFolder(), L"/tmp/");
}

TEST(TemporaryFolder, KeepsBytesThatAreNotUtf8)
{
    const Variable variable("/caf\xe9");
    EXPECT_EQ(platform::toUtf8(platform::temporaryFolder()), "/caf\xe9/");
}

#endif

} // namespace
