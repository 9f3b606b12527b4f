#include "host/api/src/toStatus.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string textOf(const MStatus& status)
{
    return status.errorString().asUTF8();
}

TEST(MStatus, NumbersItsCodesInTheirOrder)
{
    EXPECT_EQ(MStatus::kSuccess, 0);
    EXPECT_EQ(MStatus::kFailure, 1);
    EXPECT_EQ(MStatus::kInsufficientMemory, 2);
    EXPECT_EQ(MStatus::kInvalidParameter, 3);
    EXPECT_EQ(MStatus::kLicenseFailure, 4);
    EXPECT_EQ(MStatus::kUnknownParameter, 5);
    EXPECT_EQ(MStatus::kNotImplemented, 6);
    EXPECT_EQ(MStatus::kNotFound, 7);
    EXPECT_EQ(MStatus::kEndOfFile, 8);
}

TEST(MStatus, IsTrueForSuccessOnly)
{
    EXPECT_TRUE(MStatus());
    EXPECT_FALSE(MStatus().error());
    for (int code = MStatus::kFailure; code <= MStatus::kEndOfFile; ++code) {
        const MStatus status(static_cast<MStatus::MStatusCode>(code));
        EXPECT_FALSE(status) << code;
        EXPECT_TRUE(status.error()) << code;
    }
}

TEST(MStatus, ComparesByCodeFromBothSides)
{
    const MStatus failure(MStatus::kFailure);
    EXPECT_TRUE(failure == MStatus::kFailure);
    EXPECT_TRUE(MS::kFailure == failure);
    EXPECT_TRUE(failure != MS::kSuccess);
    EXPECT_TRUE(MS::kSuccess != failure);
    EXPECT_TRUE(failure == MStatus(MStatus::kFailure));
    EXPECT_TRUE(failure != MStatus());
    EXPECT_EQ(failure.statusCode(), MStatus::kFailure);
}

TEST(MStatus, TellsTheCodeInParenthesesAndASentence)
{
    EXPECT_EQ(textOf(MStatus::kInvalidParameter),
              "(kInvalidParameter): Object is incompatible with this method");
    EXPECT_EQ(textOf(MStatus::kFailure), "(kFailure): Unexpected Internal Failure");
    EXPECT_EQ(textOf(MStatus()), "(kSuccess): Success");
}

TEST(MStatus, TellsErrorsOfTheHostByTheTable)
{
    using host::ErrorCode;
    using host::api::toStatus;
    EXPECT_EQ(textOf(toStatus(ErrorCode::InvalidParameter)),
              "(kInvalidParameter): Object is incompatible with this method");
    EXPECT_EQ(textOf(toStatus(ErrorCode::NotFound)), "(kFailure): Object does not exist");
    for (const ErrorCode code :
         {ErrorCode::Failure, ErrorCode::BadInput, ErrorCode::Limit, ErrorCode::Io}) {
        EXPECT_EQ(textOf(toStatus(code)), "(kFailure): Unexpected Internal Failure");
    }
}

TEST(MStatus, PrintsToStandardErrorAndNeverToStandardOutput)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    MStatus(MStatus::kFailure).perror("reading");
    MStatus(MStatus::kFailure).perror(MString("again"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "reading: (kFailure): Unexpected Internal Failure\n"
              "again: (kFailure): Unexpected Internal Failure\n");
}

TEST(MStatus, GoesBackToSuccess)
{
    MStatus status(MStatus::kNotFound);
    status.clear();
    EXPECT_TRUE(status);
}

TEST(MStatus, StreamsItsErrorString)
{
    std::ostringstream stream;
    stream << MStatus(MStatus::kFailure);
    EXPECT_EQ(stream.str(), "(kFailure): Unexpected Internal Failure");
}

} // namespace
