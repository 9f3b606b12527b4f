// From errors of the host to statuses of the API. Nothing else makes failing statuses.
#pragma once

#include "host/support/Expected.h"

#include <maya/MStatus.h>

namespace host::api {

/// | error            | status            | sentence                                |
/// |------------------|-------------------|-----------------------------------------|
/// | InvalidParameter | kInvalidParameter | Object is incompatible with this method |
/// | NotFound         | kFailure          | Object does not exist                   |
/// | anything else    | kFailure          | Unexpected Internal Failure             |
MStatus toStatus(ErrorCode code);
MStatus toStatus(const Error& error);

/// The status of a result.
template<class T>
MStatus toStatus(const Expected<T>& result)
{
    return result ? MStatus() : toStatus(result.error());
}

/// Hands a status to a caller that asked for it, success too, and gives it back.
inline MStatus answer(MStatus* receiver, MStatus status)
{
    if (receiver != nullptr) {
        *receiver = status;
    }
    return status;
}
inline MStatus answer(MStatus* receiver, ErrorCode code)
{
    return answer(receiver, toStatus(code));
}
/// The same for functions that return a value: the value, with its status on the way.
template<class T>
T answer(MStatus* receiver, MStatus status, T value)
{
    answer(receiver, status);
    return value;
}

} // namespace host::api
