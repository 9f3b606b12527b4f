#include "host/api/src/toStatus.h"

#include "host/api/src/Inside.h"

#include <maya/detail/ArrayOf.h>

namespace host::api {

MStatus toStatus(ErrorCode code)
{
    switch (code) {
    case ErrorCode::InvalidParameter:
        return MStatus::kInvalidParameter;
    case ErrorCode::NotFound:
        return Inside::withoutObject();
    default:
        return MStatus::kFailure;
    }
}

MStatus toStatus(const Error& error)
{
    return toStatus(error.code);
}

MStatus indexOutside()
{
    return toStatus(ErrorCode::InvalidParameter);
}

MStatus outOfMemory()
{
    return MStatus::kInsufficientMemory;
}

} // namespace host::api
