// The outcome of a call: success or a failure code with its sentence.
#pragma once

#include <maya/MTypes.h>

#include <iosfwd>

class MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    constexpr MStatus() = default;
    constexpr MStatus(MStatusCode code) : m_code(code) {}

    /// True for success only.
    constexpr operator bool() const { return m_code == kSuccess; }
    /// True for every failure.
    constexpr bool error() const { return m_code != kSuccess; }
    constexpr MStatusCode statusCode() const { return m_code; }
    constexpr void clear() { *this = MStatus(); }

    /// "(code name): sentence".
    MString errorString() const;
    /// Writes "message: " and the error string as a line to standard error.
    void perror(const char* message) const;
    void perror(const MString& message) const;

    /// Statuses are equal when their codes are.
    friend constexpr bool operator==(const MStatus& a, const MStatus& b)
    {
        return a.m_code == b.m_code;
    }
    friend constexpr bool operator==(const MStatus& a, MStatusCode b) { return a.m_code == b; }
    friend std::ostream& operator<<(std::ostream& stream, const MStatus& status);

private:
    friend struct host::api::Inside;
    MStatusCode m_code = kSuccess;
    bool m_isWithoutObject = false; // a kFailure because there is no object
};

using MS = MStatus;
