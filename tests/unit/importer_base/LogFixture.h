// A log file of its own for a test: the temporary folder is another one, and the registry empty.
#pragma once

#include "importers/maya/src/Log.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#undef ERROR

/// Two empty trees in the place of the machine's and the user's, as far as this process sees it.
class EmptyRegistry {
public:
    EmptyRegistry()
    {
        RegCreateKeyW(HKEY_CURRENT_USER, kRoot, &m_root);
        RegCreateKeyW(m_root, L"machine", &m_machine);
        RegCreateKeyW(m_root, L"user", &m_user);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_machine);
        RegOverridePredefKey(HKEY_CURRENT_USER, m_user);
    }
    EmptyRegistry(const EmptyRegistry&) = delete;
    EmptyRegistry& operator=(const EmptyRegistry&) = delete;
    ~EmptyRegistry()
    {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(m_machine);
        RegCloseKey(m_user);
        RegCloseKey(m_root);
        RegDeleteTreeW(HKEY_CURRENT_USER, kRoot);
    }

private:
    static constexpr wchar_t kRoot[] = L"SOFTWARE\\Vistrel unit test of the log";
    HKEY m_root = nullptr;
    HKEY m_machine = nullptr;
    HKEY m_user = nullptr;
};
#endif

class LogFixture : public testing::Test {
protected:
    LogFixture()
    {
        setTemporaryFolder(m_folder.path());
        FILELog::ReportingLevel() = DEBUG4;
    }
    ~LogFixture() override
    {
        // closing a log that is not open opens it, so it had better find a place
#ifdef _WIN32
        m_registry.reset();
#endif
        setTemporaryFolder(m_folder.path());
        closeLog();
        setTemporaryFolder(TestFolder::systemFolder());
        FILELog::ReportingLevel() = DEBUG4;
    }

    static void setTemporaryFolder(const std::filesystem::path& folder)
    {
#ifdef _WIN32
        SetEnvironmentVariableW(L"TMP", folder.c_str());
#else
        setenv("TMPDIR", folder.c_str(), 1);
#endif
    }

    /// The next record opens the log again.
    static void closeLog()
    {
        std::FILE*& stream = Output2FILE::Stream();
        if (stream != nullptr) {
            std::fclose(stream);
        }
        stream = nullptr;
    }

    /// The log so far, as it lies on disk.
    [[nodiscard]] std::string rawLog() const
    {
        return m_folder.read("sceneapi.log");
    }
    /// The same with "\n" at the end of lines.
    [[nodiscard]] std::string log() const
    {
        std::string text = rawLog();
        std::erase(text, '\r');
        return text;
    }

#ifdef _WIN32
    std::optional<EmptyRegistry> m_registry{std::in_place};
#endif
    TestFolder m_folder;
};
