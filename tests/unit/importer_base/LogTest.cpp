#include "importers/maya/src/Log.h"

#include "platform/temporaryFolder.h"
#include "platform/wideText.h"
#include "tests/support/DivertedOutput.h"
#include "tests/unit/importer_base/LogFixture.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <type_traits>

namespace {

using Clock = std::chrono::steady_clock;

// the first time stamp of the process
const std::string kFirstStamp = NowTime();
const Clock::time_point kFirstMoment = Clock::now();

constexpr char kMaskedStamp[] = "##:##:##.###";

/// `text` with "#" for each digit of the time stamp that begins at `begin`.
std::string masked(std::string text, std::size_t begin = 0)
{
    const std::size_t end = std::min(text.size(), begin + std::size(kMaskedStamp) - 1);
    for (std::size_t i = begin; i < end; ++i) {
        text[i] = text[i] >= '0' && text[i] <= '9' ? '#' : text[i];
    }
    return text;
}

/// The same for a record.
std::string maskedRecord(const std::string& text)
{
    const std::size_t dash = text.find(" - ");
    return dash == std::string::npos ? text : masked(text, dash + 3);
}

int millisecondsOf(const std::string& stamp)
{
    return std::atoi(stamp.substr(stamp.size() - 3).c_str());
}

class LogFile : public LogFixture {};

TEST(LogLevels, HaveFixedNumbersAndNames)
{
    static_assert(std::is_same_v<std::underlying_type_t<LogLevel>, std::int32_t>);
    const char* const names[] = {"ERROR",  "WARNING", "INFO",   "DEBUG", "DEBUG1",
                                 "DEBUG2", "DEBUG3",  "DEBUG4", "NONE"};
    const LogLevel levels[] = {ERROR, WARNING, INFO, DEBUG, DEBUG1, DEBUG2, DEBUG3, DEBUG4, NONE};
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(levels[i], i);
        EXPECT_EQ(FILELog::ToString(levels[i]), names[i]);
        EXPECT_EQ(FILELog::FromString(names[i]), i);
    }
}

TEST(LogLevels, HaveNoNameBeyondTheTable)
{
    EXPECT_EQ(FILELog::ToString(static_cast<LogLevel>(9)), "?");
    EXPECT_EQ(FILELog::ToString(static_cast<LogLevel>(-1)), "?");
}

TEST(LogRecord, HasTheDestructorAsItsOnlyVirtualOperationAndIsNotCopied)
{
    static_assert(std::has_virtual_destructor_v<FILELog>);
    static_assert(!std::is_copy_constructible_v<FILELog>);
    static_assert(!std::is_copy_assignable_v<FILELog>);
    static_assert(std::is_same_v<FILELog, Log<Output2FILE>>);
}

TEST_F(LogFile, ShowsFileLineTimeLevelAndTwoBlanks)
{
    FILE_LOG(INFO) << "message " << 7;
    const std::string line = std::to_string(__LINE__ - 1);
    EXPECT_EQ(maskedRecord(log()),
              "LogTest.cpp:" + line + " - " + kMaskedStamp + " INFO:  message 7\n");
}

TEST_F(LogFile, GetsARecordAtOnce)
{
    FILE_LOG(DEBUG2) << "one";
    EXPECT_NE(log().find(" DEBUG2:  one\n"), std::string::npos);
    FILE_LOG(WARNING) << "two\n";
    EXPECT_NE(log().find(" WARNING:  two\n\n"), std::string::npos);
}

TEST_F(LogFile, HasTheLineEndsOfTheSystem)
{
    FILE_LOG(INFO) << "one\ntwo";
#ifdef _WIN32
    EXPECT_NE(rawLog().find("one\r\ntwo\r\n"), std::string::npos);
#else
    EXPECT_NE(rawLog().find("one\ntwo\n"), std::string::npos);
#endif
}

TEST(LogBaseName, SplitsAtEitherSeparatorAndKeepsTheExtension)
{
    EXPECT_EQ(baseName("C:\\src\\main.cpp"), "main.cpp");
    EXPECT_EQ(baseName("/src/main.cpp"), "main.cpp");
    EXPECT_EQ(baseName("C:\\src/a\\b.h"), "b.h");
    EXPECT_EQ(baseName("main.cpp"), "main.cpp");
    EXPECT_EQ(baseName("folder/"), "");
    EXPECT_EQ(baseName(""), "");
}

TEST_F(LogFile, GetsRecordsOfEveryLevelAtFirst)
{
    EXPECT_EQ(FILELog::ReportingLevel(), DEBUG4);
    FILE_LOG(DEBUG4) << "lowest";
    EXPECT_NE(log().find("DEBUG4:  lowest"), std::string::npos);
}

TEST_F(LogFile, GetsOnlyLevelZeroUnderError)
{
    FILELog::ReportingLevel() = ERROR;
    FILE_LOG(WARNING) << "warning";
    FILE_LOG(ERROR) << "error";
    EXPECT_EQ(log().find("warning"), std::string::npos);
    EXPECT_NE(log().find("ERROR:  error"), std::string::npos);
}

TEST_F(LogFile, GetsEveryLevelUnderNone)
{
    FILELog::ReportingLevel() = FILELog::FromString("NONE");
    for (int level = ERROR; level <= NONE; ++level) {
        FILE_LOG(static_cast<LogLevel>(level)) << "at " << level << ';';
        EXPECT_NE(log().find("at " + std::to_string(level) + ';'), std::string::npos);
    }
}

TEST_F(LogFile, IsNeitherOpenedNorTheMessageEvaluatedForASuppressedRecord)
{
    FILELog::ReportingLevel() = WARNING;
    int evaluations = 0;
    FILE_LOG(INFO) << ++evaluations;
    EXPECT_EQ(evaluations, 0);
    EXPECT_FALSE(std::filesystem::exists(m_folder.path() / "sceneapi.log"));
}

TEST_F(LogFile, StandsAsAStatementInABranchWithoutBraces)
{
    const bool isFalse = m_folder.path().empty();
    // clang-format off
    if (isFalse)
        FILE_LOG(INFO) << "first";
    else
        FILE_LOG(INFO) << "second";
    // clang-format on
    EXPECT_EQ(log().find("first"), std::string::npos);
    EXPECT_NE(log().find("second"), std::string::npos);
}

TEST_F(LogFile, GetsAWarningForAnUnknownLevelWhateverTheReportingLevel)
{
    FILELog::ReportingLevel() = ERROR;
    EXPECT_EQ(FILELog::FromString("info"), INFO);
    EXPECT_EQ(maskedRecord(log()),
              std::string(":0 - ") + kMaskedStamp +
                  " WARNING:  Unknown logging level 'info'. Using INFO level as default.\n");
}

TEST_F(LogFile, GetsTheSameWarningForAnEmptyLevelAndForOneWithABlank)
{
    EXPECT_EQ(FILELog::FromString(""), INFO);
    EXPECT_NE(log().find("level ''."), std::string::npos);
    EXPECT_EQ(FILELog::FromString("DEBUG "), INFO);
    EXPECT_NE(log().find("level 'DEBUG '."), std::string::npos);
}

TEST_F(LogFile, IsTriedAgainAndReportedAgainWhileItCannotBeOpened)
{
    setTemporaryFolder(m_folder.path() / "later");
    const char* const report = "could not open log file:\nopening log: ";
    for (int i = 0; i < 2; ++i) {
        DivertedOutput errors(stderr);
        FILE_LOG(INFO) << "lost";
        EXPECT_EQ(errors.text().find(report), 0U);
    }
    std::filesystem::create_directory(m_folder.path() / "later");
    DivertedOutput errors(stderr);
    FILE_LOG(INFO) << "kept";
    EXPECT_EQ(errors.text(), "");
    EXPECT_NE(m_folder.read("later/sceneapi.log").find("kept"), std::string::npos);
}

void makeLog(const std::filesystem::path& path, std::uintmax_t size)
{
    std::ofstream(path, std::ios::binary) << "old";
    std::filesystem::resize_file(path, size);
}

TEST_F(LogFile, IsStartedAfreshFromTwentyMebibytesOn)
{
    const std::filesystem::path path = m_folder.path() / "sceneapi.log";
    makeLog(path, 20971520);
    FILE_LOG(INFO) << "new";
    EXPECT_LT(std::filesystem::file_size(path), 200U);
    EXPECT_NE(log().find("new"), std::string::npos);
}

TEST_F(LogFile, IsAppendedToOneByteBelowTwentyMebibytes)
{
    const std::filesystem::path path = m_folder.path() / "sceneapi.log";
    makeLog(path, 20971519);
    FILE_LOG(INFO) << "new";
    EXPECT_GT(std::filesystem::file_size(path), 20971519U);
    EXPECT_EQ(log().substr(0, 3), "old");
}

TEST_F(LogFile, StaysAppendedToWithinARunThatPassesTheLimit)
{
    const std::filesystem::path path = m_folder.path() / "sceneapi.log";
    makeLog(path, 20971519);
    FILE_LOG(INFO) << "first";
    FILE_LOG(INFO) << "second";
    EXPECT_GT(std::filesystem::file_size(path), 20971519U);
    closeLog();
    FILE_LOG(INFO) << "third";
    EXPECT_LT(std::filesystem::file_size(path), 200U);
}

TEST_F(LogFile, LiesInTheTemporaryFolderBehindADoubledSeparator)
{
    const std::string folder = m_folder.utf8(""); // ends in the first separator
    const std::string separator = platform::toUtf8(std::wstring(1, platform::kPathSeparator));
    EXPECT_EQ(platform::toUtf8(logFilePath()), folder + separator + "sceneapi.log");
    EXPECT_EQ(folder.substr(folder.size() - 1), separator);
}

#ifdef _WIN32

void store(HKEY root, const wchar_t* key, const wchar_t* name, const std::wstring& text)
{
    ASSERT_EQ(RegSetKeyValueW(root, key, name, REG_SZ, text.c_str(),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

void install(HKEY root, const std::wstring& version, const std::wstring& folder)
{
    store(root, L"SOFTWARE\\Orvane", L"VistrelVersion", version);
    store(root, (L"SOFTWARE\\Orvane\\" + version).c_str(), L"ResourceFolder", folder);
}

TEST_F(LogFile, LiesInTheResourceFolderOfTheMachine)
{
    install(HKEY_LOCAL_MACHINE, L"7.3", L"C:\\res");
    EXPECT_EQ(logFilePath(), L"C:\\res\\sceneapi.log");
}

TEST_F(LogFile, LiesInTheResourceFolderOfTheUserRatherThanTheMachines)
{
    install(HKEY_LOCAL_MACHINE, L"7.3", L"C:\\machine");
    install(HKEY_CURRENT_USER, L"7.2", L"C:\\user \u6f22");
    EXPECT_EQ(logFilePath(), L"C:\\user \u6f22\\sceneapi.log");
}

TEST_F(LogFile, KeepsTheTemporaryFolderForAVersionWithoutResourceFolder)
{
    store(HKEY_CURRENT_USER, L"SOFTWARE\\Orvane", L"VistrelVersion", L"7.3");
    EXPECT_EQ(logFilePath(), m_folder.path().wstring() + L"\\\\sceneapi.log");
}

TEST_F(LogFile, KeepsTheMachinesFolderForAUsersVersionWithoutResourceFolder)
{
    install(HKEY_LOCAL_MACHINE, L"7.3", L"C:\\machine");
    store(HKEY_CURRENT_USER, L"SOFTWARE\\Orvane", L"VistrelVersion", L"7.3");
    EXPECT_EQ(logFilePath(), L"C:\\machine\\sceneapi.log");
}

TEST_F(LogFile, GetsASeparatorEvenBehindAFolderThatEndsInOne)
{
    install(HKEY_LOCAL_MACHINE, L"7.3", L"C:\\res\\");
    EXPECT_EQ(logFilePath(), L"C:\\res\\\\sceneapi.log");
}

TEST_F(LogFile, TakesVersionsOfThirtyOneCharactersAndNoMore)
{
    install(HKEY_LOCAL_MACHINE, std::wstring(31, L'7'), L"C:\\fits");
    install(HKEY_CURRENT_USER, std::wstring(32, L'7'), L"C:\\does not"); // 66 bytes with its zero
    EXPECT_EQ(logFilePath(), L"C:\\fits\\sceneapi.log");
}

TEST_F(LogFile, TakesFoldersOfTwoHundredFiftyNineCharactersAndNoMore)
{
    install(HKEY_LOCAL_MACHINE, L"7.3", L"C:\\" + std::wstring(256, L'x'));
    install(HKEY_CURRENT_USER, L"7.3", L"C:\\" + std::wstring(257, L'x')); // 522 bytes
    EXPECT_EQ(logFilePath().size(), 259U + 13U);
}

TEST_F(LogFile, IsWrittenInANonAsciiResourceFolder)
{
    install(HKEY_CURRENT_USER, L"7.3", (m_folder.path() / L"\u00fc").wstring());
    std::filesystem::create_directory(m_folder.path() / L"\u00fc");
    FILE_LOG(INFO) << "there";
    EXPECT_TRUE(std::filesystem::exists(m_folder.path() / L"\u00fc" / L"sceneapi.log"));
}

#endif

TEST(LogTime, ShowsTheMillisecondsSinceTheFirstStamp)
{
    EXPECT_EQ(masked(kFirstStamp), kMaskedStamp);
    EXPECT_LT(millisecondsOf(kFirstStamp), 20);
    std::this_thread::sleep_for(std::chrono::milliseconds(70));
    const std::string stamp = NowTime();
    const auto elapsed =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - kFirstMoment);
    const int difference =
        (static_cast<int>(elapsed.count() % 1000) - millisecondsOf(stamp) + 1500) % 1000 - 500;
    EXPECT_LT(std::abs(difference), 60) << stamp;
}

TEST(LogTime, IsFormattedWithThreeDigits)
{
    EXPECT_EQ(timeStampText("14:03:27", 0), "14:03:27.000");
    EXPECT_EQ(timeStampText("14:03:27", 7), "14:03:27.007");
    EXPECT_EQ(timeStampText("14:03:27", 12999), "14:03:27.999");
    EXPECT_EQ(timeStampText("14:03:27", 4294967295U), "14:03:27.295");
}

TEST(LogTime, IsASentenceWhenTheSystemCannotTell)
{
    EXPECT_EQ(timeStampText(std::nullopt, 12), "Error in NowTime()");
}

} // namespace
