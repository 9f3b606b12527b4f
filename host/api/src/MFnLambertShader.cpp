#include <maya/MFnLambertShader.h>

#include "host/api/src/toStatus.h"

MFnLambertShader::MFnLambertShader(const MObject& object, MStatus* ReturnStatus)
{
    host::api::answer(ReturnStatus, MFnLambertShader::setObject(object));
}

MFn::Type MFnLambertShader::type() const
{
    return MFn::kLambert;
}
