#include <maya/MAnimControl.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::Session;

namespace {

MTime timeOf(std::int64_t (Session::*question)() const)
{
    const Session* session = currentSession();
    return session != nullptr ? Inside::time((session->*question)(), MTime::uiUnit()) : MTime();
}

} // namespace

MTime MAnimControl::minTime()
{
    return timeOf(&Session::playbackStart);
}

MTime MAnimControl::maxTime()
{
    return timeOf(&Session::playbackEnd);
}

MTime MAnimControl::currentTime()
{
    return timeOf(&Session::currentTime);
}

MStatus MAnimControl::setCurrentTime(const MTime& time)
{
    if (currentSession() == nullptr) {
        return toStatus(host::ErrorCode::NotFound);
    }
    currentSession()->setCurrentTime(Inside::ticksOf(time));
    return MStatus();
}
