#include "importers/maya/src/TraceCheck.h"

#include "importers/maya/src/Log.h"

#include <maya/MStatus.h>
#include <maya/MString.h>

bool traceCheck(const MStatus& status, const char* message, const char* sourceFile, int line)
{
    if (status) {
        FILE_LOG_AT(DEBUG4, sourceFile, line) << "TRACE CHECK: " << message;
        return true;
    }
    // the tab at the end is kept: readers of the log look for it
    FILE_LOG_AT(WARNING, sourceFile, line) << message << ": " << status.errorString() << "\t";
    status.perror(message);
    return false;
}
