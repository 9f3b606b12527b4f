// The check after every call of Maya that yields a status: it logs, reports on standard error and
// returns from the function.
#pragma once

#include <maya/MStatus.h>

/// Logs the step named `message`: at DEBUG4 when `status` is success, else at WARNING with the
/// status's own text, which is then reported on standard error too. True for success.
bool traceCheck(const MStatus& status, const char* message, const char* sourceFile, int line);

/// For the few places that report a failure and go on, and where something else than a return
/// follows; the value is true for success. `status` is evaluated once.
#define TRACE_REPORT(status, message) traceCheck((status), (message), __FILE__, __LINE__)

/// In a function that returns MStatus: a failing status is returned at once.
#define TRACE_CHECK(status, message)                                                               \
    do {                                                                                           \
        const MStatus checkedStatus = (status);                                                    \
        if (!TRACE_REPORT(checkedStatus, message)) {                                               \
            return checkedStatus;                                                                  \
        }                                                                                          \
    } while (false)

/// In a function with another result: `value` is returned at once when the status fails. Leave
/// `value` empty in a function without result.
#define TRACE_CHECK_RETURN(status, message, value)                                                 \
    do {                                                                                           \
        if (!TRACE_REPORT(status, message)) {                                                      \
            return value;                                                                          \
        }                                                                                          \
    } while (false)
