// The process's one session.
#include "host/session/SessionState.h"

#include "platform/files.h"

#include <cstdlib>

namespace host::session {
namespace {

std::unique_ptr<Session>& session()
{
    static std::unique_ptr<Session> theSession;
    return theSession;
}

/// Whoever started the process may want to know how the scene was read; it names the file.
constexpr const char* kReportVariable = "ORV_HOST_REPORT";

void writeReport(const std::string& report)
{
    const char* const path = std::getenv(kReportVariable);
    if (path == nullptr || *path == '\0') {
        return;
    }
    std::FILE* const file = platform::openUtf8(path, "wb");
    if (file == nullptr) {
        return;
    }
    std::fwrite(report.data(), 1, report.size(), file);
    std::fclose(file);
}

} // namespace

Session* currentSession()
{
    return session().get();
}

void startSession()
{
    session() = std::make_unique<Session>();
}

void endSession()
{
    if (session() == nullptr) {
        return;
    }
    writeReport(session()->lastReport());
    session().reset();
}

} // namespace host::session
