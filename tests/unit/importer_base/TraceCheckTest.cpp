#include "importers/maya/src/TraceCheck.h"

#include "tests/support/DivertedOutput.h"
#include "tests/unit/importer_base/LogFixture.h"

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>

namespace {

class TraceCheck : public LogFixture {};

MStatus checked(const MStatus& status, bool& wentOn)
{
    TRACE_CHECK(status, "step");
    wentOn = true;
    return MStatus::kSuccess;
}

int checkedNumber(const MStatus& status)
{
    TRACE_CHECK_RETURN(status, "step", -7);
    return 7;
}

void checkedNothing(const MStatus& status, bool& wentOn)
{
    TRACE_CHECK_RETURN(status, "step", );
    wentOn = true;
}

/// The records without what stands before the level.
std::string levelAndMessage(const std::string& log)
{
    constexpr std::size_t kStampLength = 12; // "14:03:27.415"
    const std::size_t dash = log.find(" - ");
    return dash == std::string::npos ? log : log.substr(dash + 3 + kStampLength);
}

TEST_F(TraceCheck, LogsASuccessAtTheLowestLevelAndGoesOn)
{
    DivertedOutput errors(stderr);
    bool wentOn = false;
    EXPECT_EQ(checked(MStatus::kSuccess, wentOn), MStatus::kSuccess);
    EXPECT_TRUE(wentOn);
    EXPECT_EQ(levelAndMessage(log()), " DEBUG4:  TRACE CHECK: step\n");
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TraceCheck, LogsAFailureWithItsTextAndATabAndReturnsIt)
{
    DivertedOutput errors(stderr);
    bool wentOn = false;
    EXPECT_EQ(checked(MStatus::kInvalidParameter, wentOn), MStatus::kInvalidParameter);
    EXPECT_FALSE(wentOn);
    const std::string text = MStatus(MStatus::kInvalidParameter).errorString().asChar();
    EXPECT_EQ(text.find("(kInvalidParameter): "), 0U);
    EXPECT_EQ(levelAndMessage(log()), " WARNING:  step: " + text + "\t\n");
}

TEST_F(TraceCheck, ReportsAFailureOnStandardErrorWhateverTheLevel)
{
    FILELog::ReportingLevel() = ERROR;
    DivertedOutput errors(stderr);
    bool wentOn = false;
    EXPECT_EQ(checked(MStatus::kFailure, wentOn), MStatus::kFailure);
    const std::string text = errors.text();
    EXPECT_EQ(text.find("step"), 0U) << text;
    EXPECT_NE(text.find("(kFailure)"), std::string::npos) << text;
    EXPECT_FALSE(std::filesystem::exists(m_folder.path() / "sceneapi.log"));
}

TEST_F(TraceCheck, KeepsSuccessesOutOfTheLogAboveTheLowestLevel)
{
    FILELog::ReportingLevel() = DEBUG3;
    bool wentOn = false;
    EXPECT_EQ(checked(MStatus::kSuccess, wentOn), MStatus::kSuccess);
    EXPECT_TRUE(wentOn);
    EXPECT_FALSE(std::filesystem::exists(m_folder.path() / "sceneapi.log"));
}

TEST_F(TraceCheck, LogsBeforeItReports)
{
    DivertedOutput errors(stderr);
    std::FILE*& stream = Output2FILE::Stream();
    std::fclose(stream);
    stream = stderr;
    bool wentOn = false;
    EXPECT_EQ(checked(MStatus::kNotFound, wentOn), MStatus::kNotFound);
    stream = nullptr;
    const std::string text = errors.text();
    const std::size_t record = text.find("WARNING:  step: ");
    const std::size_t report = text.find("\nstep");
    ASSERT_NE(record, std::string::npos) << text;
    ASSERT_NE(report, std::string::npos) << text;
    EXPECT_LT(record, report) << text;
}

TEST_F(TraceCheck, ReturnsTheGivenValue)
{
    DivertedOutput errors(stderr);
    EXPECT_EQ(checkedNumber(MStatus::kFailure), -7);
    EXPECT_EQ(checkedNumber(MStatus::kSuccess), 7);
}

TEST_F(TraceCheck, LeavesAFunctionWithoutResult)
{
    DivertedOutput errors(stderr);
    bool wentOn = false;
    checkedNothing(MStatus::kFailure, wentOn);
    EXPECT_FALSE(wentOn);
    checkedNothing(MStatus::kSuccess, wentOn);
    EXPECT_TRUE(wentOn);
}

TEST_F(TraceCheck, OnlyReportsWhereTheCallerGoesOn)
{
    DivertedOutput errors(stderr);
    int evaluations = 0;
    const auto step = [&] {
        ++evaluations;
        return MStatus(MStatus::kFailure);
    };
    EXPECT_FALSE(TRACE_REPORT(step(), "step"));
    EXPECT_EQ(evaluations, 1);
    EXPECT_TRUE(TRACE_REPORT(MStatus(), "step"));
}

TEST_F(TraceCheck, NamesThePlaceOfTheCheck)
{
    DivertedOutput errors(stderr);
    TRACE_REPORT(MStatus(), "step");
    EXPECT_EQ(log().find("TraceCheckTest.cpp:" + std::to_string(__LINE__ - 1) + " - "), 0U)
        << log();
}

} // namespace
