#include <maya/MFnBase.h>

#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::toStatus;

MFnBase::~MFnBase() = default;

bool MFnBase::hasObj(MFn::Type type) const
{
    return m_object.hasFn(type);
}

bool MFnBase::hasObj(const MObject& object) const
{
    return object.hasFn(type());
}

MObject MFnBase::object(MStatus* ReturnStatus) const
{
    if (m_object.isNull()) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MObject());
    }
    return answer(ReturnStatus, MStatus(), m_object);
}

MStatus MFnBase::setObject(const MObject& object)
{
    const MStatus status = check(object);
    if (status) {
        m_object = object;
    }
    return status;
}

MStatus MFnBase::check(const MObject& object) const
{
    if (object.isNull()) {
        return toStatus(ErrorCode::NotFound);
    }
    return hasObj(object) ? MStatus() : toStatus(ErrorCode::InvalidParameter);
}
