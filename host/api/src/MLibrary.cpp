#include <maya/MLibrary.h>

#include "host/api/src/toStatus.h"
#include "host/session/Session.h"

#include <maya/detail/ArrayOf.h>

#include <cstdio>
#include <cstdlib>

using host::session::currentSession;

MStatus MLibrary::initialize(const char*, bool)
{
    try {
        if (currentSession() == nullptr) {
            host::session::startSession();
        }
        return MStatus();
    } catch (const std::exception&) {
        return host::api::outOfMemory();
    }
}

MStatus MLibrary::initialize(bool, const char* applicationName, bool useBatchLicense)
{
    return initialize(applicationName, useBatchLicense);
}

void MLibrary::cleanup(int exitStatus, bool exitWhenDone)
{
    if (currentSession() != nullptr) {
        host::session::endSession();
    }
    if (exitWhenDone) {
        std::fflush(nullptr);
        std::exit(exitStatus);
    }
}
