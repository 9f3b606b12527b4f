// Cameras.
#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>

class MFnCamera : public MFnDagNode {
public:
    MFnCamera() = default;
    explicit MFnCamera(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnCamera(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// Centimetres.
    double nearClippingPlane(MStatus* ReturnStatus = nullptr) const;
    double farClippingPlane(MStatus* ReturnStatus = nullptr) const;
    /// Radians, from aperture and focal length alone: scale, squeeze, overscan and film fit are
    /// left out.
    double horizontalFieldOfView(MStatus* ReturnStatus = nullptr) const;

    /// World space needs a function set attached to a path. The directions have unit length
    /// whatever the camera's scale.
    MPoint eyePoint(MSpace::Space space = MSpace::kObject, MStatus* ReturnStatus = nullptr) const;
    MVector viewDirection(MSpace::Space space = MSpace::kObject,
                          MStatus* ReturnStatus = nullptr) const;
    MVector upDirection(MSpace::Space space = MSpace::kObject,
                        MStatus* ReturnStatus = nullptr) const;

private:
    MMatrix toSpace(MSpace::Space space, MStatus* ReturnStatus) const;
};
