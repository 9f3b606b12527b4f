// Transforms, joints and everything else that moves what is below it.
#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MTransformationMatrix.h>

class MFnTransform : public MFnDagNode {
public:
    MFnTransform() = default;
    explicit MFnTransform(const MObject& object, MStatus* ReturnStatus = nullptr);
    explicit MFnTransform(const MDagPath& path, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// The local transformation at the current time.
    MTransformationMatrix transformation(MStatus* ReturnStatus = nullptr) const;
};
