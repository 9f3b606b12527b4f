#include <maya/MFnCamera.h>

#include "host/api/src/matrices.h"
#include "host/api/src/toStatus.h"
#include "host/math/camera.h"

using host::ErrorCode;
using host::api::answer;
using host::api::toStatus;

namespace {

/// A number of the camera, in the host's units.
double numberOf(const MFnCamera& camera, const char* attribute, MStatus* status)
{
    MStatus own;
    const MPlug plug = camera.findPlug(attribute, true, &own);
    const double number = own ? plug.asDouble(&own) : 0;
    return answer(status, own, number);
}

} // namespace

MFnCamera::MFnCamera(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnCamera::setObject(object));
}

MFnCamera::MFnCamera(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnCamera::type() const
{
    return MFn::kCamera;
}

double MFnCamera::nearClippingPlane(MStatus* ReturnStatus) const
{
    return numberOf(*this, "nearClipPlane", ReturnStatus);
}

double MFnCamera::farClippingPlane(MStatus* ReturnStatus) const
{
    return numberOf(*this, "farClipPlane", ReturnStatus);
}

double MFnCamera::horizontalFieldOfView(MStatus* ReturnStatus) const
{
    const double aperture = numberOf(*this, "horizontalFilmAperture", ReturnStatus);
    const double focalLength = numberOf(*this, "focalLength", ReturnStatus);
    return host::horizontalFieldOfView(aperture, focalLength);
}

MMatrix MFnCamera::toSpace(MSpace::Space space, MStatus* ReturnStatus) const
{
    if (space == MSpace::kWorld) {
        return m_path.inclusiveMatrix(ReturnStatus);
    }
    const MStatus status = check(m_object);
    const bool isObject = space == MSpace::kObject;
    answer(ReturnStatus, status && !isObject ? toStatus(ErrorCode::InvalidParameter) : status);
    return MMatrix();
}

MPoint MFnCamera::eyePoint(MSpace::Space space, MStatus* ReturnStatus) const
{
    return MPoint() * toSpace(space, ReturnStatus);
}

MVector MFnCamera::viewDirection(MSpace::Space space, MStatus* ReturnStatus) const
{
    return (MVector::zNegAxis * toSpace(space, ReturnStatus)).normal();
}

MVector MFnCamera::upDirection(MSpace::Space space, MStatus* ReturnStatus) const
{
    return (MVector::yAxis * toSpace(space, ReturnStatus)).normal();
}
